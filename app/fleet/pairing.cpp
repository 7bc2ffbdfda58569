#include "fleet/pairing.h"

#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <system_error>
#include <unordered_set>

#include "errors/input_error.h"
#include "files/named_file.h"
#include "files/source_text.h"

namespace fs = std::filesystem;

namespace {

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
    fs::path file = wanted;
    if (!is_file(file) && is_configuration_name(file)) {
        file.replace_extension(file.extension() == ".json" ? ".xml" : ".json");
    }
    return is_file(file) ? file.string() : std::string();
}

/// What is below a folder, by name, each with why it cannot be checked or nothing.
using Found = std::map<fs::path, std::string>;

/// Adds the configurations in `folder` / `below`, and what cannot be searched there; returns how
/// many hidden ones it left out.
std::size_t collect(const fs::path& folder, const fs::path& below, Found& found) {
    std::size_t hidden = 0;
    std::error_code error;
    fs::directory_iterator entry(folder / below, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path path = below / entry->path().filename();
        std::error_code unknown;  // as of a link to nothing
        const bool is_folder = entry->is_directory(unknown);
        const bool is_configuration = !is_folder && is_configuration_name(path);
        if (path.filename().string().front() == '.') {
            hidden += is_folder || is_configuration ? 1 : 0;
        } else if (is_configuration) {
            found[path];
        } else if (is_folder && entry->is_symlink(unknown)) {
            found[path] = "is a link to a folder, which is not followed; name it, too";
        } else if (is_folder) {
            hidden += collect(folder, path, found);
        } else if (unknown) {
            found[path] = "cannot be reached: " + unknown.message();
        }
    }
    if (error) {
        found[below] = "the folder cannot be read: " + error.message();
    }
    return hidden;
}

class Pairer {
  public:
    explicit Pairer(const PairingOptions& options)
        : options_(options), is_running_folder_(is_folder(options.running)) {}

    /// Adds `name`, or what it holds.
    void add(const std::string& name) {
        if (is_folder(name)) {
            add_folder(name);
        } else if (is_running_folder_) {
            add_file(name);
        } else {
            add_pair({name, options_.running, {}});
        }
    }

    /// Adds the candidates in the list `name`.
    void add_list(const std::string& name) try {
        const std::string list = read_named_file(name);
        std::istringstream lines(list.substr(byte_order_mark_size(list)));
        bool is_empty = true;
        std::string line;
        for (std::size_t number = 1; std::getline(lines, line); ++number) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            if (line.find_first_not_of(' ') == std::string::npos) {
                continue;
            }
            const std::size_t tab = line.find('\t');
            const std::string running = tab < line.size() ? plain_name(line.substr(tab + 1)) : "";
            if (line.find('\0') < line.size() || tab == 0 || tab + 1 == line.size() ||
                running.find('\t') < running.size()) {
                throw InputError(
                    shown_name(name) + ":" + std::to_string(number) +
                    ": give a candidate a line and, after a tab, its running configuration");
            }
            is_empty = false;
            if (running.empty()) {
                add(plain_name(line));
            } else {
                add_pair(plain_name(line.substr(0, tab)), running, is_file(running) ? running : "");
            }
        }
        if (is_empty) {
            throw InputError(shown_name(name) + ": names no candidate");
        }
    } catch (const InputError& error) {
        add_pair({name, {}, error.what()});
    }

    /// All that was added.
    Pairing finish() {
        Found running;
        if (is_running_folder_) {
            collect(options_.running, {}, running);
        }
        std::unordered_set<std::string> partners;
        for (const Pair& pair : result_.pairs) {
            partners.insert(normal(pair.running));
        }
        for (const auto& [below, problem] : running) {
            result_.running_alone += partners.count(normal(options_.running / below)) == 0 ? 1 : 0;
        }
        for (Pair& pair : result_.pairs) {
            const bool has_partner = pair.problem.empty() && !pair.running.empty();
            if (has_partner && heads_[pair.running].size() > 1) {
                pair.problem = unclear(pair.candidate, pair.running, "another candidate");
            }
        }
        return std::move(result_);
    }

  private:
    const std::string& shown(const std::string& name) const {
        return name == "-" ? options_.stdin_name : name;
    }

    static std::string normal(const fs::path& name) { return name.lexically_normal().string(); }

    /// Adds the configurations in the folder `name`, by name.
    void add_folder(const std::string& name) {
        Found found;
        result_.hidden += collect(name, {}, found);
        if (found.empty()) {
            found[{}] = "has no .json or .xml file";
        }
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
        const fs::path given = fs::path(shown(name)).lexically_normal();
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
        heads_[partner].insert(head);
        add_pair(name, (options_.running / tail).string(), partner);
    }

    /// The file with the same end of its path as `head` / `tail`, but in a folder above `head`,
    /// which `partner` may belong to instead; empty without one.
    static std::string rival(const fs::path& head, const fs::path& tail,
                             const std::string& partner) {
        fs::path above = head.root_path();
        for (const fs::path& step : head.relative_path()) {
            std::error_code error;
            std::string file = existing_file(above / tail);
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
        if (known_.insert(normal(pair.candidate) + '\0' + normal(pair.running)).second) {
            result_.pairs.push_back(pair);
            result_.pairs.back().shown = shown(pair.candidate);
        }
    }

    const PairingOptions& options_;
    bool is_running_folder_;
    std::unordered_set<std::string> known_;
    /// Of the partners of files that were named by themselves: what is before the same end.
    std::map<std::string, std::set<fs::path>> heads_;
    Pairing result_;
};

}  // namespace

bool is_configuration_name(const fs::path& name) {
    return name.extension() == ".json" || name.extension() == ".xml";
}

Pairing pair_files(const PairingOptions& options) {
    Pairer pairer(options);
    for (const std::string& candidate : options.candidates) {
        pairer.add(candidate);
    }
    if (!options.files_from.empty()) {
        pairer.add_list(options.files_from);
    }
    return pairer.finish();
}
