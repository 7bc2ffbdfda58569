/// Files as the operator names them: "-" is standard input.
#pragma once

#include <string>

#include "files/file_descriptor.h"

/// What messages call the file `name`.
std::string shown_name(const std::string& name);

/// All of the file `name`, at most `max_size` bytes. Throws InputError, also when the run is
/// interrupted before the file comes.
std::string read_named_file(const std::string& name, std::size_t max_size = kLargestFile);
