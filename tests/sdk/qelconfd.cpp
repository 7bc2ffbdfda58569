#include <qelconfd.h>

#include "datastores.h"

int qelconfd_maapi_socket_get(qelconfd_t* handle) {
    return handle == nullptr ? -1 : 17;
}

QelConfdInterface* qelconfd_instance_get(qelconfd_t* handle) {
    return reinterpret_cast<QelConfdInterface*>(handle);
}

QelConfdCdbSessionBase::QelConfdCdbSessionBase(QelConfdInterface* iface, cdb_db_type db, bool flag)
    : own_(), socket_(iface != nullptr && db == CDB_RUNNING && flag ? 23 : -1) {
    ++open_sessions;
}

QelConfdCdbSessionBase::~QelConfdCdbSessionBase() {
    --open_sessions;
}

int QelConfdCdbSessionBase::Socket() {
    return socket_;
}
