#include "configuration/libyang_complaint.h"

#include <libyang/libyang.h>

#include <string_view>

namespace {

/// ":12" for libyang's "... line number 12."; empty without a line.
std::string line_suffix(std::string_view location) {
    constexpr std::string_view kLineNumber = "ine number ";
    const std::size_t found = location.find(kLineNumber);
    if (found == std::string_view::npos) {
        return {};
    }
    const std::string_view rest = location.substr(found + kLineNumber.size());
    return ":" + std::string(rest.substr(0, rest.find_first_not_of("0123456789")));
}

/// The quoted path in libyang's "Data location "/...", line number 12."; empty without one.
std::string quoted_path(std::string_view location) {
    const std::size_t open = location.find('"');
    const std::size_t close = location.rfind('"');
    return open >= close ? std::string() : std::string(location.substr(open + 1, close - open - 1));
}

}  // namespace

std::string first_complaint(const ly_ctx* context, const std::string& file) {
    const ly_err_item* item = ly_err_first(context);
    while (item != nullptr && item->level != LY_LLERR) {  // a warning is not why it refuses
        item = item->next;
    }
    if (item == nullptr) {
        return file + ": libyang refused it and gave no reason";
    }
    const std::string_view location = item->path == nullptr ? "" : item->path;
    const std::string path = quoted_path(location);
    std::string complaint = file + line_suffix(location) + ": " + item->msg;
    if (!path.empty()) {
        complaint.append(" At ").append(path).append(".");
    }
    return complaint;
}
