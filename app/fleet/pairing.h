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
    std::string stdin_name = "standard input";  ///< what reports call it
};

struct Pair {
    std::string candidate;
    std::string running;     ///< empty for an empty one
    std::string problem;     ///< why the two cannot be checked; empty when they can
    std::string shown = {};  ///< what reports call the candidate
};

struct Pairing {
    std::vector<Pair> pairs;
    std::size_t hidden = 0;         ///< files and folders that were left out of named folders
    std::size_t running_alone = 0;  ///< files of the running folder that no candidate is for
};

/// The candidates in the order in which they are named, each once, those in the list last and those
/// of a folder by name: every .json and .xml file below it that is not hidden. The list has one a
/// line, and behind a tab its running configuration where it is not to be found as the others' are;
/// one that cannot be read is a pair with that problem. In a running folder a candidate's partner
/// has the same path below it, or the same but for the ending; that of a file named by itself has
/// the longest end of its path that is there. Without a partner, or where it may be another file's,
/// there is a problem, or an empty running configuration when a missing one is allowed.
Pairing pair_files(const PairingOptions& options);
