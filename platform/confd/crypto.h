/// The key that is installed in this process.
#pragma once

namespace local_platform {

/// Installs the key of the MAAPI socket `sock` for confd_decrypt(). CONFD_ERR when it has none;
/// what was installed before then goes too, so that no request is checked with another host's key.
int install_key_of(int sock);

}  // namespace local_platform
