/// What every rule shares: its signature, the names and paths of layer-3 interfaces, reporting, and
/// the session on the running datastore.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform.h"

/// A rule. Reads the transaction `tctx->thandle` through `maapi_socket` and answers CONFD_OK, or
/// CONFD_ERR or CONFD_VALIDATION_WARN with its message set on `tctx`. All four belong to the host.
using ValidationHandler = int32_t(int32_t maapi_socket, confd_trans_ctx* tctx, confd_hkeypath_t* kp,
                                  confd_value_t* newval);

/// The values of the address-family key of a VRRP instance.
constexpr int32_t kAddressFamilyIpv4 = 0;
constexpr int32_t kAddressFamilyIpv6 = 1;

/// The size of the buffer that a keypath is printed into; a longer path is cut.
constexpr int kKeypathBufferSize = 256;

/// The layer-3 interface that a VRRP interface key names: the text after its first '-', or the
/// whole key.
std::string l3_interface_name(const char* key);

/// "/config/interface/l3{" + name + suffix, where the suffix begins with the closing "}". The name
/// is not quoted: one that a path cannot hold makes the read fail.
std::string l3_interface_path(const std::string& name, const char* suffix);

/// The pieces joined, in one allocation.
std::string concat(std::initializer_list<std::string_view> pieces);

/// Sets the message that the operator reads.
void set_error(confd_trans_ctx* tctx, const std::string& message);

/// The host's framework object, to open a session with.
QelConfdInterface* host_interface(const confd_trans_ctx* tctx);

/// A session on the running datastore, for as long as the object lives.
class QelConfdCdbSession : public QelConfdCdbSessionBase {
  public:
    QelConfdCdbSession(QelConfdInterface* iface, cdb_db_type db, bool flag);
    ~QelConfdCdbSession() override;
};
