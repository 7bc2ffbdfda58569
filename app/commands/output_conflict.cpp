#include "commands/output_conflict.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "errors/input_error.h"
#include "fleet/pairing.h"

namespace fs = std::filesystem;

namespace {

/// Whether `output` is `input`, or would be a configuration in that folder.
bool is_part_of(const std::string& input, const std::string& output) {
    std::error_code error;
    const fs::path below = fs::weakly_canonical(fs::absolute(output), error)
                               .lexically_relative(fs::weakly_canonical(input, error));
    return below == "." || (fs::is_directory(input, error) && is_configuration_name(below) &&
                            *below.begin() != "..");
}

/// The files that the list in the file `name` names.
std::vector<std::string> names_in(const std::string& name) {
    std::vector<std::string> names;
    std::ifstream list(name);
    for (std::string line; std::getline(list, line);) {
        std::istringstream fields(line);
        for (std::string file; std::getline(fields, file, '\t');) {
            names.push_back(file);
        }
    }
    return names;
}

}  // namespace

void require_no_input(CLI::App& subcommand, const std::string& output) {
    for (const CLI::Option* const option : subcommand.get_options()) {
        const bool is_input =
            option->get_type_name().rfind("FILE", 0) == 0 && option->get_name() != "--output";
        std::vector<std::string> inputs = option->results();
        inputs.push_back(option->get_default_str());
        if (option->get_name() == "--files-from") {
            const std::vector<std::string> names = names_in(inputs.front());
            inputs.insert(inputs.end(), names.begin(), names.end());
        }
        for (const std::string& input : inputs) {
            if (is_input && is_part_of(input, output)) {
                throw InputError(output + ": is to be read, too; name another file for --output");
            }
        }
    }
}
