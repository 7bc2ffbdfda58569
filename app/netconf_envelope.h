/// The element that NETCONF wraps configuration data in.
#pragma once

#include <string>

/// `xml` with its outermost element, when it is a <config> or <data> of NETCONF's base namespace,
/// blanked out; every line stays where it was. Anything else is returned as it is, for the parser
/// to judge.
std::string without_netconf_envelope(std::string xml);
