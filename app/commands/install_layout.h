/// Where the plug-in and the models lie, beside the running command; the same in the build tree and
/// when installed.
#pragma once

#include <string>

std::string default_plugin_file();
std::string default_yang_dir();
