/// Files as the operator names them: "-" is standard input.
#pragma once

#include <string>

#include "files/file_descriptor.h"

/// `name` with "./" before it where a terminal, a log or a workflow could read it as anything else:
/// unless it begins with a letter, a digit, a dot, a slash or an underscore.
std::string plain_name(const std::string& name);

bool is_folder(const std::string& name);

/// What messages call the file `name`.
std::string shown_name(const std::string& name);

/// All of the file `name`, at most `max_size` bytes. Throws InputError, also when the run is
/// interrupted before the file comes.
std::string read_named_file(const std::string& name, std::size_t max_size = kLargestFile);
