#include "call_hook.h"
#include "handle.h"

using local_platform::ask_hook;

namespace {

int open_session(QelConfdInterface* iface, cdb_db_type db, bool flag) {
    if (const auto answer = ask_hook({"QelConfdCdbSessionBase", -1, {}, flag})) {
        return answer->result;
    }
    if (iface == nullptr || db != CDB_RUNNING) {
        return CONFD_ERR;
    }
    return local_platform::Socket::cdb(iface->running).release();
}

}  // namespace

QelConfdCdbSessionBase::QelConfdCdbSessionBase(QelConfdInterface* iface, cdb_db_type db, bool flag)
    : socket_(open_session(iface, db, flag)) {}

QelConfdCdbSessionBase::~QelConfdCdbSessionBase() {
    static_cast<void>(ask_hook({"~QelConfdCdbSessionBase", socket_, {}}));
    local_platform::close_socket(socket_);
}

int QelConfdCdbSessionBase::Socket() {
    if (const auto answer = ask_hook({"QelConfdCdbSessionBase::Socket", socket_, {}})) {
        return answer->result;
    }
    return socket_;
}
