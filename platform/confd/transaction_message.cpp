#include "format_text.h"
#include "hook.h"

void confd_trans_seterr(confd_trans_ctx* tctx, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    std::string message = local_platform::format_text(fmt, arguments);
    va_end(arguments);
    local_platform::serve("confd_trans_seterr", -1, message, [&] {
        if (tctx->messages != nullptr) {
            tctx->messages->push_back(std::move(message));
        }
        return CONFD_OK;
    });
}
