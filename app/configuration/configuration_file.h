/// The text of a configuration, before any model has looked at it.
#pragma once

#include <memory>
#include <string>

#include "files/file_descriptor.h"
#include "files/source_text.h"

enum class ConfigurationFormat { json, xml };

/// The syntax of `text`, RFC 7951 JSON or NETCONF XML, by its content. Throws InputError when it is
/// neither.
ConfigurationFormat format_of(const SourceText& text);

/// Reads the file `name`, "-" for standard input. Messages call it `shown` unless that is
/// empty. Throws InputError, also when it has more than `max_size` bytes.
std::shared_ptr<SourceText> read_configuration_file(const std::string& name,
                                                    std::size_t max_size = kLargestFile,
                                                    const std::string& shown = {});
