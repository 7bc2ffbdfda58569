/// The file that holds the key of encrypted leaves.
#pragma once

#include <string>

#include "crypto_key.h"

/// Makes `file`, readable by its owner only, with a fresh key. Throws InputError; a file that
/// exists is left as it is.
void make_key_file(const std::string& file);

/// The key in `file`. Throws InputError, also when others could have read it.
local_platform::CryptoKey read_key_file(const std::string& file);
