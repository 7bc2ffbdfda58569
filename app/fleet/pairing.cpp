#include "fleet/pairing.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "errors/cannot_check.h"
#include "files/file_descriptor.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kEndings[] = {".json", ".xml"};

bool is_folder(const std::string& name) {
    std::error_code error;
    return fs::is_directory(name, error);
}

bool is_file(const fs::path& name) {
    std::error_code error;
    return fs::exists(name, error) && !fs::is_directory(name, error);
}

bool is_configuration(const fs::path& name) {
    return std::find(std::begin(kEndings), std::end(kEndings), name.extension()) !=
           std::end(kEndings);
}

/// The configurations below `folder`, by their paths below it.
std::vector<fs::path> configurations_in(const std::string& folder) {
    std::vector<fs::path> found;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (is_configuration(entry->path()) && is_file(entry->path())) {
            found.push_back(entry->path().lexically_relative(folder));
        }
    }
    if (error) {
        throw CannotCheck(folder + ": the folder cannot be read: " + error.message());
    }
    if (found.empty()) {
        throw CannotCheck(folder + ": has no .json or .xml file");
    }
    std::sort(found.begin(), found.end());
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
        for (const fs::path& below : configurations_in(name)) {
            add_file((fs::path(name) / below).string(), below);
        }
    }

    void add_list(const std::string& name) {
        std::istringstream lines(read_list(name));
        std::string line;
        for (std::size_t number = 1; std::getline(lines, line); ++number) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            const std::size_t tab = line.find('\t');
            if (tab == 0 || line.find('\t', tab + 1) < line.size()) {
                throw CannotCheck(name + ":" + std::to_string(number) +
                                  ": give a candidate and, after a tab, its running configuration");
            }
            if (tab != std::string::npos) {
                add_pair(line.substr(0, tab), line.substr(tab + 1));
            } else if (!line.empty()) {
                add(line);
            }
        }
    }

    std::vector<Pair> pairs;

  private:
    static std::string read_list(const std::string& name) {
        const FileDescriptor file(name == "-" ? dup(STDIN_FILENO)
                                              : open(name.c_str(), O_RDONLY | O_CLOEXEC));
        if (!file.is_open()) {
            throw CannotCheck(name + ": cannot be opened: " + last_system_error());
        }
        try {
            return read_all(file.number(), kLargestFile);
        } catch (const std::runtime_error& error) {
            throw CannotCheck(name + ": cannot be read: " + error.what());
        }
    }

    /// Adds the candidate `name` with its partner, `below` the running folder when there is one.
    void add_file(const std::string& name, const fs::path& below) {
        if (!is_running_folder_) {
            pairs.push_back({name, options_.running, {}});
            return;
        }
        const fs::path wanted = options_.running / below;
        fs::path partner = wanted;
        for (const char* const ending : kEndings) {
            if (!is_file(partner)) {
                partner.replace_extension(ending);
            }
        }
        add_pair(name, (is_file(partner) ? partner : wanted).string());
    }

    void add_pair(const std::string& name, const std::string& running) {
        if (is_file(running)) {
            pairs.push_back({name, running, {}});
        } else if (options_.allow_missing_running) {
            pairs.push_back({name, {}, {}});
        } else {
            pairs.push_back({name, running,
                             running + ": there is no such running configuration; to check against "
                                       "an empty one, give --allow-missing-running"});
        }
    }

    const PairingOptions& options_;
    bool is_running_folder_;
};

}  // namespace

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
