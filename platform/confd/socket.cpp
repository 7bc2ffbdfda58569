#include "socket.h"

#include <map>
#include <mutex>
#include <utility>

#include "endpoint.h"

namespace local_platform {
namespace {

std::mutex mutex;
std::map<int, std::unique_ptr<const Endpoint>> sockets;
int next_thandle = 1;

/// Opens the socket with the lowest number that is free, as the system does.
int open(Endpoint::Kind kind, const DataTree& tree, const std::optional<CryptoKey>& key) {
    const std::lock_guard<std::mutex> lock(mutex);
    int number = 0;
    while (sockets.count(number) != 0) {
        ++number;
    }
    sockets.emplace(number, new Endpoint{kind, next_thandle++, tree, key});
    return number;
}

}  // namespace

const Endpoint* find_socket(int number, Endpoint::Kind kind) {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = sockets.find(number);
    return found != sockets.end() && found->second->kind == kind ? found->second.get() : nullptr;
}

const Endpoint* find_maapi(int number, int thandle) {
    const Endpoint* const endpoint = find_socket(number, Endpoint::Kind::maapi);
    return endpoint != nullptr && endpoint->thandle == thandle ? endpoint : nullptr;
}

Socket Socket::maapi(const DataTree& transaction, const std::optional<CryptoKey>& key) {
    return Socket(open(Endpoint::Kind::maapi, transaction, key));
}

Socket Socket::cdb(const DataTree& running) {
    return Socket(open(Endpoint::Kind::cdb, running, {}));
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
    const std::lock_guard<std::mutex> lock(mutex);
    sockets.erase(number);
}

int open_sockets() {
    const std::lock_guard<std::mutex> lock(mutex);
    return static_cast<int>(sockets.size());
}

}  // namespace local_platform
