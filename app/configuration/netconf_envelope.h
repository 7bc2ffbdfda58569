/// The element that NETCONF wraps configuration data in.
#pragma once

#include <string>

/// `xml` with its outermost element, when it is a <config> or <data> of NETCONF's base namespace,
/// blanked out; every line stays where it was. Anything else is returned as it is, for the parser
/// to refuse. Throws CannotCheck, naming the file `name`, for an envelope whose other namespaces
/// would be lost.
std::string without_netconf_envelope(const std::string& name, std::string xml);
