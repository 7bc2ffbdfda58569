/// The VRRP instances of a candidate as a picture.
#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string>

#include "checking/report.h"

/// Draws, as SVG below `parent`, a row for every VRRP interface with its instances by address
/// family, joins those that use one identifier of a family on several interfaces, and leads from an
/// instance to its first finding, whose anchor `anchor` tells by its number in the report.
void draw_instances(pugi::xml_node parent, const Report& report,
                    const std::function<std::string(std::size_t)>& anchor);
