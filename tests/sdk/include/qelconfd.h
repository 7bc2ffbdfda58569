#pragma once

#include <confd_cdb.h>

typedef struct qelconfd qelconfd_t;
class QelConfdInterface;

extern "C" {
int qelconfd_maapi_socket_get(qelconfd_t* handle);
QelConfdInterface* qelconfd_instance_get(qelconfd_t* handle);
}

class QelConfdCdbSessionBase {
  public:
    QelConfdCdbSessionBase(QelConfdInterface* iface, cdb_db_type db, bool flag);
    virtual ~QelConfdCdbSessionBase();
    int Socket();

  private:
    char own_[40];
    int socket_;
};
