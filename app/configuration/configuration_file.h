/// The text of a configuration, before any model has looked at it.
#pragma once

#include <string>

#include "files/file_descriptor.h"

enum class ConfigurationFormat { json, xml };

struct ConfigurationFile {
    std::string name;   ///< as the operator gave it
    std::string bytes;  ///< exactly what the file holds
    ConfigurationFormat format;
};

/// Reads the file `name`, "-" for standard input, and tells its format by its content: RFC 7951
/// JSON or NETCONF XML. Throws InputError, also when it has more than `max_size` bytes.
ConfigurationFile read_configuration_file(const std::string& name,
                                          std::size_t max_size = kLargestFile);

/// The same for `bytes` that were read already.
ConfigurationFile configuration_from_bytes(const std::string& name, std::string bytes);
