#include "fleet/pairing.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "errors/input_error.h"
#include "files/named_file.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kEndings[] = {".json", ".xml"};

bool is_folder(const std::string& name) {
    std::error_code error;
    return fs::is_directory(name, error);
}

bool is_file(const fs::path& name) {
    std::error_code error;
    const fs::file_status own = fs::symlink_status(name, error);
    // What cannot be reached may be there: it is not to pass for missing.
    return own.type() != fs::file_type::not_found && !fs::is_directory(own) &&
           !(fs::is_symlink(own) && fs::is_directory(name, error));
}

/// The file at `wanted`, or one of its name with another ending; empty when there is none.
std::string existing_file(const fs::path& wanted) {
    if (is_file(wanted)) {
        return wanted.string();
    }
    for (const char* const ending : kEndings) {
        const fs::path other = fs::path(wanted).replace_extension(ending);
        if (is_file(other)) {
            return other.string();
        }
    }
    return {};
}

struct Found {
    fs::path below;       ///< the folder that was searched
    std::string problem;  ///< why it cannot be checked
};

/// Adds the configurations in `folder` / `below`, and what cannot be searched there.
void collect(const fs::path& folder, const fs::path& below, std::vector<Found>& found) {
    std::error_code error;
    fs::directory_iterator entry(folder / below, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path path = below / entry->path().filename();
        std::error_code unknown;  // as of a link to nothing
        if (!entry->is_directory(unknown)) {
            if (is_configuration_name(path)) {
                found.push_back({path, {}});
            } else if (unknown) {
                found.push_back({path, "cannot be reached: " + unknown.message()});
            }
        } else if (entry->is_symlink(unknown)) {
            found.push_back({path, "is a link to a folder, which is not followed; name it, too"});
        } else {
            collect(folder, path, found);
        }
    }
    if (error) {
        found.push_back({below, "the folder cannot be read: " + error.message()});
    }
}

/// What is below `folder`, by name.
std::vector<Found> configurations_in(const std::string& folder) {
    std::vector<Found> found;
    collect(folder, {}, found);
    if (found.empty()) {
        found.push_back({{}, "has no .json or .xml file"});
    }
    std::sort(found.begin(), found.end(),
              [](const Found& left, const Found& right) { return left.below < right.below; });
    return found;
}

class Pairing {
  public:
    explicit Pairing(const PairingOptions& options)
        : options_(options), is_running_folder_(is_folder(options.running)) {}

    /// Adds `name`, or what it holds.
    void add(const std::string& name) {
        if (!is_folder(name)) {
            return add_file(name, fs::path(name).filename());
        }
        for (const auto& [below, problem] : configurations_in(name)) {
            const std::string file = below.empty() ? name : (fs::path(name) / below).string();
            if (problem.empty()) {
                add_file(file, below);
            } else {
                pairs.push_back({file, {}, std::string(file).append(": ").append(problem)});
            }
        }
    }

    void add_list(const std::string& name) {
        const std::string list = read_named_file(name);
        const std::string_view mark = "\xef\xbb\xbf";
        std::istringstream lines(list.substr(list.rfind(mark, 0) == 0 ? mark.size() : 0));
        std::string line;
        for (std::size_t number = 1; std::getline(lines, line); ++number) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            if (line.find_first_not_of(' ') == std::string::npos) {
                continue;
            }
            const std::size_t tab = line.find('\t');
            const bool is_pair = tab != std::string::npos;
            if (line.find('\0') < line.size() || tab == 0 || tab + 1 == line.size() ||
                (is_pair && line.find('\t', tab + 1) < line.size())) {
                throw InputError(
                    name + ":" + std::to_string(number) +
                    ": give a candidate a line and, after a tab, its running configuration");
            }
            if (is_pair) {
                const std::string running = line.substr(tab + 1);
                add_pair(line.substr(0, tab), running, is_file(running) ? running : "");
            } else {
                add(line);
            }
        }
    }

    std::vector<Pair> pairs;

  private:
    /// Adds the candidate `name` with its partner, `below` the running folder when there is one.
    void add_file(const std::string& name, const fs::path& below) {
        if (!is_running_folder_) {
            pairs.push_back({name, options_.running, {}});
            return;
        }
        const fs::path wanted = options_.running / below;
        add_pair(name, wanted.string(), existing_file(wanted));
    }

    /// Adds the candidate `name` with `running`, where that is found in place of `wanted`.
    void add_pair(const std::string& name, const std::string& wanted, const std::string& running) {
        if (!running.empty()) {
            pairs.push_back({name, running, {}});
        } else if (options_.allow_missing_running) {
            pairs.push_back({name, {}, {}});
        } else {
            pairs.push_back({name, wanted,
                             wanted + ": there is no such running configuration; to check against "
                                      "an empty one, give --allow-missing-running"});
        }
    }

    const PairingOptions& options_;
    bool is_running_folder_;
};

}  // namespace

bool is_configuration_name(const fs::path& name) {
    return std::find(std::begin(kEndings), std::end(kEndings), name.extension()) !=
           std::end(kEndings);
}

std::vector<Pair> pair_files(const PairingOptions& options) {
    Pairing pairing(options);
    for (const std::string& candidate : options.candidates) {
        pairing.add(candidate);
    }
    if (!options.files_from.empty()) {
        pairing.add_list(options.files_from);
    }
    return std::move(pairing.pairs);
}
