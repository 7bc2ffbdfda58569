/// VRRP instances in a table.
#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string>

#include "checking/report.h"

/// Adds a row for every VRRP interface to `parent`, with its `instances` by address family, each
/// with a link to its worst one of `findings`, whose anchor `anchor` tells.
void add_instances(pugi::xml_node parent, const std::vector<VrrpInstance>& instances,
                   const std::vector<Finding>& findings,
                   const std::function<std::string(const Finding&)>& anchor);
