/// What the plug-in uses of libqelconfd. Built when the tree is configured for a router SDK, and
/// never run.
#include "platform.h"

class Session : public QelConfdCdbSessionBase {
  public:
    Session(QelConfdInterface* iface, cdb_db_type db, bool flag)
        : QelConfdCdbSessionBase(iface, db, flag) {}
    ~Session() override = default;
};

int main() {
    qelconfd_t* const handle = nullptr;
    Session session(qelconfd_instance_get(handle), CDB_RUNNING, true);
    return qelconfd_maapi_socket_get(handle) + session.Socket();
}
