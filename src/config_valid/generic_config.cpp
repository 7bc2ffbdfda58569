#include "generic_config.h"

#include "key_listing.h"

namespace vrrp_app::config_valid {
namespace {

constexpr std::size_t kKeyBufferSize = 64;

}  // namespace

GenericConfig::GenericConfig(int maapi_socket, confd_trans_ctx* tctx)
    : maapi_socket(maapi_socket), tctx(tctx) {}

GenericConfig::~GenericConfig() = default;

std::list<std::string> GenericConfig::get_key_list(const std::string& path) const {
    return list_keys<kKeyBufferSize>(maapi_socket, tctx, path);
}

}  // namespace vrrp_app::config_valid
