/// libqelconfd: what the host framework offers a validation plug-in.
#pragma once

#include "confd_cdb.h"

/// The host's handle of one instance; a callback's context carries it in `vcb_opaque`.
typedef struct qelconfd qelconfd_t;

/// The host's framework object of an instance; its only use is to construct a CDB session.
class QelConfdInterface;

extern "C" {

/// The MAAPI socket that the host keeps for the instance; negative when there is none.
int qelconfd_maapi_socket_get(qelconfd_t* handle);

/// The framework object of the instance. The host owns it; null for a null handle.
QelConfdInterface* qelconfd_instance_get(qelconfd_t* handle);
}

/// A CDB session on one datastore, open for the lifetime of the object.
class QelConfdCdbSessionBase {
  public:
    /// Opens the session. `flag` is the host's own. Without an instance Socket() is negative.
    QelConfdCdbSessionBase(QelConfdInterface* iface, cdb_db_type db, bool flag);
    virtual ~QelConfdCdbSessionBase();
    QelConfdCdbSessionBase(const QelConfdCdbSessionBase&) = delete;
    QelConfdCdbSessionBase& operator=(const QelConfdCdbSessionBase&) = delete;

    /// The socket for cdb_* reads of the session's datastore; the session owns it.
    int Socket();

  private:
    int socket_;
};
