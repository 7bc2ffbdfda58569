#include "commands/install_layout.h"

#include <filesystem>

namespace {

/// `relative` to the folder that holds this command.
std::string beside_command(const char* relative) {
    std::error_code error;
    const std::filesystem::path command = std::filesystem::read_symlink("/proc/self/exe", error);
    return (command.parent_path() / relative).lexically_normal().string();
}

}  // namespace

std::string default_plugin_file() {
    return beside_command(VRRP_VALID_PLUGIN_FILE);
}

std::string default_yang_dir() {
    return beside_command(VRRP_VALID_YANG_DIR);
}
