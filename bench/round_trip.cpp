#include "round_trip.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace {

/// About what a request with a short path takes.
using Message = std::array<char, 64>;

bool send_whole(int socket, const Message& message) {
    return send(socket, message.data(), message.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(message.size());
}

bool receive_whole(int socket, Message& message) {
    return recv(socket, message.data(), message.size(), MSG_WAITALL) ==
           static_cast<ssize_t>(message.size());
}

void echo(int socket) {
    Message message;
    while (receive_whole(socket, message) && send_whole(socket, message)) {
    }
}

}  // namespace

RoundTrip::RoundTrip() {
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends_) != 0) {
        throw std::system_error(errno, std::generic_category(), "socketpair");
    }
    echo_ = std::thread(echo, ends_[1]);
}

RoundTrip::~RoundTrip() {
    shutdown(ends_[0], SHUT_RDWR);
    echo_.join();
    close(ends_[0]);
    close(ends_[1]);
}

void RoundTrip::make() {
    Message message{};
    if (!send_whole(ends_[0], message) || !receive_whole(ends_[0], message)) {
        throw std::system_error(errno, std::generic_category(), "round trip");
    }
}
