#include "fleet/pairing.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <system_error>
#include <unordered_set>

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

/// The file at `wanted`, or a configuration of its name with another ending; empty when there is
/// none.
std::string existing_file(const fs::path& wanted) {
    if (is_file(wanted)) {
        return wanted.string();
    }
    for (const char* const ending : kEndings) {
        const fs::path other = fs::path(wanted).replace_extension(ending);
        if (is_configuration_name(wanted) && is_file(other)) {
            return other.string();
        }
    }
    return {};
}

struct Found {
    fs::path below;       ///< the folder that was searched
    std::string problem;  ///< why it cannot be checked
};

/// Adds the configurations in `folder` / `below`, and what cannot be searched there; returns how
/// many hidden ones it left out.
std::size_t collect(const fs::path& folder, const fs::path& below, std::vector<Found>& found) {
    std::size_t hidden = 0;
    std::error_code error;
    fs::directory_iterator entry(folder / below, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path path = below / entry->path().filename();
        std::error_code unknown;  // as of a link to nothing
        const bool is_configuration = is_configuration_name(path);
        if (path.filename().string().front() == '.') {
            hidden += is_configuration || entry->is_directory(unknown) ? 1 : 0;
        } else if (!entry->is_directory(unknown)) {
            if (is_configuration) {
                found.push_back({path, {}});
            } else if (unknown) {
                found.push_back({path, "cannot be reached: " + unknown.message()});
            }
        } else if (entry->is_symlink(unknown)) {
            found.push_back({path, "is a link to a folder, which is not followed; name it, too"});
        } else {
            hidden += collect(folder, path, found);
        }
    }
    if (error) {
        found.push_back({below, "the folder cannot be read: " + error.message()});
    }
    return hidden;
}

/// Adds the candidates in the list `name`.
void add_list(const std::string& name, std::vector<Pair>& named) {
    const std::string list = read_named_file(name);
    const std::string_view mark = "\xef\xbb\xbf";
    std::istringstream lines(list.substr(list.rfind(mark, 0) == 0 ? mark.size() : 0));
    const std::size_t before = named.size();
    std::string line;
    for (std::size_t number = 1; std::getline(lines, line); ++number) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.find_first_not_of(' ') == std::string::npos) {
            continue;
        }
        const std::size_t tab = line.find('\t');
        const std::string running = tab < line.size() ? line.substr(tab + 1) : "";
        if (line.find('\0') < line.size() || tab == 0 || tab + 1 == line.size() ||
            running.find('\t') < running.size()) {
            throw InputError(
                shown_name(name) + ":" + std::to_string(number) +
                ": give a candidate a line and, after a tab, its running configuration");
        }
        named.push_back({plain_name(line.substr(0, tab)), plain_name(running), {}});
    }
    if (named.size() == before) {
        throw InputError(shown_name(name) + ": names no candidate");
    }
}

class Pairer {
  public:
    explicit Pairer(const PairingOptions& options)
        : options_(options), is_running_folder_(is_folder(options.running)) {}

    /// Adds what `named` is, or what it holds.
    void add(const Pair& named) {
        const std::string& name = named.candidate;
        if (!named.problem.empty()) {
            add_pair(named);
        } else if (!named.running.empty()) {
            add_pair(name, named.running, is_file(named.running) ? named.running : "");
        } else if (is_folder(name)) {
            add_folder(name);
        } else if (is_running_folder_) {
            add_file(name);
        } else {
            add_pair({name, options_.running, {}});
        }
    }

    /// All that was added.
    Pairing finish() {
        std::vector<Found> running;
        if (is_running_folder_) {
            collect(options_.running, {}, running);
        }
        result_.running_alone = static_cast<std::size_t>(
            std::count_if(running.begin(), running.end(), [&](const Found& file) {
                return partners_.count(normal(options_.running / file.below)) == 0;
            }));
        for (Pair& pair : result_.pairs) {
            const auto heads = heads_.find(pair.running);
            if (heads != heads_.end() && heads->second.size() > 1 && pair.problem.empty()) {
                pair.problem = unclear(pair.candidate, pair.running, "another candidate");
            }
        }
        return std::move(result_);
    }

  private:
    static std::string normal(const fs::path& name) { return name.lexically_normal().string(); }

    /// Adds the configurations in the folder `name`, by name.
    void add_folder(const std::string& name) {
        std::vector<Found> found;
        result_.hidden += collect(name, {}, found);
        if (found.empty()) {
            found.push_back({{}, "has no .json or .xml file"});
        }
        std::sort(found.begin(), found.end(),
                  [](const Found& left, const Found& right) { return left.below < right.below; });
        for (const auto& [below, problem] : found) {
            const std::string file = below.empty() ? name : (fs::path(name) / below).string();
            const fs::path wanted = options_.running / below;
            if (!problem.empty()) {
                add_pair({file, {}, std::string(file).append(": ").append(problem)});
            } else if (is_running_folder_) {
                add_pair(file, wanted.string(), existing_file(wanted));
            } else {
                add_pair({file, options_.running, {}});
            }
        }
    }

    /// Adds the file `name`, which no folder was named for, with its partner in the running folder.
    void add_file(const std::string& name) {
        const fs::path given = fs::path(name).lexically_normal();
        const fs::path path = given.has_filename() ? given : given.parent_path();
        fs::path head = path.root_path();
        fs::path tail = path.relative_path();
        const auto partner_of_tail = [&] {
            return *tail.begin() == ".." ? "" : existing_file(options_.running / tail);
        };
        std::string partner = partner_of_tail();
        while (partner.empty() && tail.has_parent_path()) {
            head /= *tail.begin();
            tail = tail.lexically_relative(*tail.begin());
            partner = partner_of_tail();
        }
        const std::string other = partner.empty() ? "" : rival(head, tail, partner);
        if (!other.empty()) {
            return add_pair({name, partner, unclear(name, partner, other)});
        }
        if (!partner.empty()) {
            heads_[partner].insert(head);
        }
        add_pair(name, (options_.running / tail).string(), partner);
    }

    /// The file with the same end of its path as `head` / `tail`, but in a folder above `head`,
    /// which `partner` may belong to instead; empty without one.
    static std::string rival(const fs::path& head, const fs::path& tail,
                             const std::string& partner) {
        fs::path above = head.root_path();
        for (const fs::path& step : head.relative_path()) {
            std::error_code error;
            const std::string file = existing_file(above / tail);
            if (!file.empty() && !fs::equivalent(file, partner, error)) {
                return file;
            }
            above /= step;
        }
        return {};
    }

    static std::string unclear(const std::string& name, const std::string& partner,
                               const std::string& other) {
        return partner + ": may be the running configuration of " + other + " instead of " + name +
               "; name the folder of the candidates, or both files on a line of --files-from";
    }

    /// Adds the candidate `name` with `running`, where that is found in place of `wanted`.
    void add_pair(const std::string& name, const std::string& wanted, const std::string& running) {
        if (!running.empty() || options_.allow_missing_running) {
            add_pair({name, running, {}});
        } else {
            add_pair({name, wanted,
                      wanted + ": there is no such running configuration; to check against an "
                               "empty one, give --allow-missing-running"});
        }
    }

    /// Adds `pair`, unless it is there.
    void add_pair(const Pair& pair) {
        partners_.insert(normal(pair.running));
        if (known_.insert(normal(pair.candidate) + '\0' + normal(pair.running)).second) {
            result_.pairs.push_back(pair);
        }
    }

    const PairingOptions& options_;
    bool is_running_folder_;
    std::unordered_set<std::string> known_;
    std::unordered_set<std::string> partners_;
    /// Of the partners of files that were named by themselves: what is before the same end.
    std::map<std::string, std::set<fs::path>> heads_;
    Pairing result_;
};

}  // namespace

bool is_configuration_name(const fs::path& name) {
    return std::find(std::begin(kEndings), std::end(kEndings), name.extension()) !=
           std::end(kEndings);
}

std::vector<Pair> named_pairs(const PairingOptions& options) {
    std::vector<Pair> named;
    for (const std::string& candidate : options.candidates) {
        named.push_back({candidate, {}, {}});
    }
    try {
        if (!options.files_from.empty()) {
            add_list(options.files_from, named);
        }
    } catch (const InputError& error) {
        named.push_back({options.files_from, {}, error.what()});
    }
    return named;
}

Pairing pair_files(const PairingOptions& options, const std::vector<Pair>& named) {
    Pairer pairer(options);
    for (const Pair& pair : named) {
        pairer.add(pair);
    }
    return pairer.finish();
}
