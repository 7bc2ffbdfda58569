/// The VRRP instances of a candidate in a table.
#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string>

#include "checking/report.h"

/// Adds a row for every VRRP interface to `parent`, with its instances by address family, each with
/// a link to its worst finding, whose anchor `anchor` tells.
void add_instances(pugi::xml_node parent, const Report& report,
                   const std::function<std::string(const Finding&)>& anchor);
