/// Files as the operator names them: "-" is standard input.
#pragma once

#include <atomic>
#include <string>

#include "files/file_descriptor.h"

/// Once true, nobody waits any more for a file that does not come. A signal handler may set it.
std::atomic<bool>& is_waiting_over();

/// What messages call the file `name`.
std::string shown_name(const std::string& name);

/// All of the file `name`, at most `max_size` bytes. Throws InputError.
std::string read_named_file(const std::string& name, std::size_t max_size = kLargestFile);
