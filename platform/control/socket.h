/// Sockets: what a plug-in reads a tree through.
#pragma once

#include <optional>

#include "crypto_key.h"
#include "data_tree.h"

namespace local_platform {

/// An open socket; closed when it goes.
class Socket {
  public:
    /// A MAAPI socket with a transaction over `transaction`, and the key of its encrypted leaves.
    static Socket maapi(const DataTree& transaction, const std::optional<CryptoKey>& key = {});
    /// A CDB socket on the committed datastore `running`.
    static Socket cdb(const DataTree& running);

    Socket(Socket&& other) noexcept;
    Socket& operator=(Socket&&) = delete;
    ~Socket();

    int number() const { return number_; }
    int thandle() const;
    /// Gives up ownership: the caller closes the number with close_socket().
    int release();

  private:
    explicit Socket(int number) : number_(number) {}

    int number_;
};

/// Closes a released socket. A number that is not open is ignored.
void close_socket(int number);

/// How many sockets are open in this process.
int open_sockets();

}  // namespace local_platform
