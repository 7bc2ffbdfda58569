#include "socket.h"

#include <utility>

#include "endpoint.h"

namespace local_platform {
namespace {

std::atomic<int> next_thandle{1};

int take_slot(std::unique_ptr<const Endpoint> endpoint) {
    for (int number = 0; number < kMaxSockets; ++number) {
        const Endpoint* free_slot = nullptr;
        if (sockets.at(static_cast<std::size_t>(number))
                .compare_exchange_strong(free_slot, endpoint.get())) {
            static_cast<void>(endpoint.release());
            return number;
        }
    }
    throw PlatformError("more than " + std::to_string(kMaxSockets) + " sockets are open");
}

}  // namespace

std::array<std::atomic<const Endpoint*>, kMaxSockets> sockets{};

Socket::Socket(std::unique_ptr<const Endpoint> endpoint)
    : number_(take_slot(std::move(endpoint))) {}

Socket Socket::maapi(const DataTree& transaction, const std::optional<CryptoKey>& key) {
    return Socket(std::unique_ptr<const Endpoint>(
        new Endpoint{Endpoint::Kind::maapi, next_thandle++, transaction, key}));
}

Socket Socket::cdb(const DataTree& running) {
    return Socket(
        std::unique_ptr<const Endpoint>(new Endpoint{Endpoint::Kind::cdb, -1, running, {}}));
}

Socket::Socket(Socket&& other) noexcept : number_(other.release()) {}

Socket::~Socket() {
    close_socket(number_);
}

int Socket::thandle() const {
    const Endpoint* const endpoint = find_socket(number_, Endpoint::Kind::maapi);
    return endpoint == nullptr ? -1 : endpoint->thandle;
}

int Socket::release() {
    return std::exchange(number_, -1);
}

void close_socket(int number) {
    if (number >= 0 && number < kMaxSockets) {
        const std::unique_ptr<const Endpoint> closed(
            sockets[static_cast<std::size_t>(number)].exchange(nullptr));
    }
}

int open_sockets() {
    int count = 0;
    for (const auto& slot : sockets) {
        count += slot.load() == nullptr ? 0 : 1;
    }
    return count;
}

}  // namespace local_platform
