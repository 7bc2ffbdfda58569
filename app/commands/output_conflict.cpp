#include "commands/output_conflict.h"

#include <filesystem>

#include "errors/input_error.h"
#include "fleet/pairing.h"

namespace fs = std::filesystem;

std::string output_of(const CLI::App& command) {
    const CLI::Option* const option = command.get_option_no_throw("--output");
    const auto name = option == nullptr ? std::string() : option->as<std::string>();
    return name == "-" ? std::string() : name;
}

std::vector<std::string> inputs_of(const CLI::App& command) {
    std::vector<std::string> inputs;
    for (const CLI::Option* const option : command.get_options()) {
        if (option->get_type_name().rfind("FILE", 0) == 0 && option->get_name() != "--output") {
            const auto names = option->as<std::vector<std::string>>();  // their defaults, too
            inputs.insert(inputs.end(), names.begin(), names.end());
        }
    }
    return inputs;
}

void require_no_input(const std::string& output, const std::vector<std::string>& inputs) {
    if (output.empty()) {
        return;
    }
    std::error_code error;  // of what is not there, which cannot be replaced
    const fs::path place = fs::weakly_canonical(fs::absolute(output), error);
    for (const std::string& input : inputs) {
        bool is_read = fs::equivalent(input, output, error);
        if (fs::is_directory(input, error) && is_configuration_name(output)) {
            const fs::path below = place.lexically_relative(fs::weakly_canonical(input, error));
            is_read |= !below.empty() && *below.begin() != "..";
        }
        if (is_read) {
            throw InputError(output + ": is to be read, too; name another file for --output");
        }
    }
}
