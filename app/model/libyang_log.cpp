#include "model/libyang_log.h"

#include "model/libyang_version.h"

const ly_err_item* first_error(const ly_ctx& context) {
    const ly_err_item* item = ly_err_first(&context);
    while (item != nullptr && item->level != LY_LLERR) {
        item = item->next;
    }
    return item;
}

std::string schema_error(const ly_ctx& context, const std::string& file) {
    const ly_err_item* const error = first_error(context);
    if (error == nullptr) {
        return file + ": libyang refused it and gave no reason";
    }
    const ErrorPlace place = place_of(*error);
    return file + (place.line == 0 ? "" : ":" + std::to_string(place.line)) + ": " + error->msg +
           (place.path.empty() ? "" : " At " + place.path + ".");
}
