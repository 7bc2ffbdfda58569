/// The JSON report in parts, for whoever has the reports one after the other.
#pragma once

#include <string>

#include "reports/totals.h"

std::string json_begin();
/// Between two of them is ",\n".
std::string json_item(const Report& report);
std::string json_end(const Totals& totals);
