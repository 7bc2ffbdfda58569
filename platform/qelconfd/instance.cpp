#include "instance.h"

#include "call_hook.h"
#include "handle.h"

using local_platform::ask_hook;

namespace local_platform {

Instance::Instance(const DataTree& candidate, const DataTree& running,
                   const std::optional<CryptoKey>& key)
    : handle_(new qelconfd_t{Socket::maapi(candidate, key), {running}}) {}

Instance::~Instance() = default;

int Instance::thandle() const {
    return handle_->maapi.thandle();
}

}  // namespace local_platform

int qelconfd_maapi_socket_get(qelconfd_t* handle) {
    if (const auto answer = ask_hook({"qelconfd_maapi_socket_get", -1, {}})) {
        return answer->result;
    }
    return handle == nullptr ? -1 : handle->maapi.number();
}

QelConfdInterface* qelconfd_instance_get(qelconfd_t* handle) {
    if (const auto answer = ask_hook({"qelconfd_instance_get", -1, {}})) {
        return answer->result == CONFD_OK && handle != nullptr ? &handle->framework : nullptr;
    }
    return handle == nullptr ? nullptr : &handle->framework;
}
