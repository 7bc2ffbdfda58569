#include "configuration/libyang_log.h"

#include <libyang/libyang.h>

namespace {

std::string_view location_of(const ly_err_item& error) {
    return error.path == nullptr ? std::string_view() : error.path;
}

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

}  // namespace

const ly_err_item* first_error(const ly_ctx& context) {
    const ly_err_item* item = ly_err_first(&context);
    while (item != nullptr && item->level != LY_LLERR) {
        item = item->next;
    }
    return item;
}

std::string quoted_path(const ly_err_item& error) {
    const std::string_view location = location_of(error);
    const std::size_t open = location.find('"');
    const std::size_t close = location.rfind('"');
    return open >= close ? std::string() : std::string(location.substr(open + 1, close - open - 1));
}

std::string schema_error(const ly_ctx& context, const std::string& file) {
    const ly_err_item* const error = first_error(context);
    if (error == nullptr) {
        return file + ": libyang refused it and gave no reason";
    }
    const std::string path = quoted_path(*error);
    return file + line_suffix(location_of(*error)) + ": " + error->msg +
           (path.empty() ? "" : " At " + path + ".");
}
