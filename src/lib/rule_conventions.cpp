#include "rule_conventions.h"

#include <algorithm>
#include <cstring>

std::string l3_interface_name(const char* key) {
    const char* const dash = std::strchr(key, '-');
    return dash == nullptr ? key : dash + 1;
}

std::string l3_interface_path(const std::string& name, const char* suffix) {
    return concat({"/config/interface/l3{", name, suffix});
}

std::string concat(std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (const std::string_view piece : pieces) {
        size += piece.size();
    }
    std::string joined(size, '\0');
    char* end = joined.data();
    for (const std::string_view piece : pieces) {
        end = std::copy(piece.begin(), piece.end(), end);
    }
    return joined;
}

void set_error(confd_trans_ctx* tctx, const std::string& message) {
    confd_trans_seterr(tctx, "%s", message.c_str());
}

QelConfdInterface* host_interface(const confd_trans_ctx* tctx) {
    return qelconfd_instance_get(static_cast<qelconfd_t*>(tctx->vcb_opaque));
}

QelConfdCdbSession::QelConfdCdbSession(QelConfdInterface* iface, cdb_db_type db, bool flag)
    : QelConfdCdbSessionBase(iface, db, flag) {}

QelConfdCdbSession::~QelConfdCdbSession() = default;
