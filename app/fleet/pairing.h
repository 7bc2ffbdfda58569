/// Which running configuration each candidate is checked against.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Whether a file of that name in a folder is a configuration.
bool is_configuration_name(const std::filesystem::path& name);

struct PairingOptions {
    std::vector<std::string> candidates;  ///< files and folders; "-" is standard input
    std::string running;                  ///< a file or a folder; empty for an empty configuration
    std::string files_from;               ///< a file with more candidates; empty for none
    bool allow_missing_running = false;
};

struct Pair {
    std::string candidate;
    std::string running;  ///< empty for an empty one
    std::string problem;  ///< why the two cannot be checked; empty when they can
};

/// The candidates in the order in which they are named, those of a folder by name: every .json and
/// .xml file below it. In a running folder a candidate's partner has the same path below it, or the
/// same but for the ending; without one there is a problem, or an empty running configuration when
/// a missing one is allowed. `files_from` has a candidate a line, and behind a tab its running
/// configuration where it is not to be found as the others' are. Throws InputError.
std::vector<Pair> pair_files(const PairingOptions& options);
