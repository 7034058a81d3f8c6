#include "support/LocalListener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace torvex::test {

namespace {

constexpr int tick = 10;  // milliseconds between two looks at whether to end

int listeningSocket() {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto* place = static_cast<const sockaddr*>(static_cast<const void*>(&address));
    if (socket < 0 || bind(socket, place, sizeof address) != 0 || ::listen(socket, 64) != 0) {
        throw std::runtime_error("a server of the tests can't listen");
    }
    return socket;
}

int portOf(int socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(socket, static_cast<sockaddr*>(static_cast<void*>(&address)), &size);
    return ntohs(address.sin_port);
}

}  // namespace

bool isReady(int socket, short event) {
    pollfd wait{socket, event, 0};
    return poll(&wait, 1, tick) > 0;
}

LocalListener::LocalListener(Serve serve)
    : serve_(std::move(serve)), listening_(listeningSocket()), port_(portOf(listening_)) {
    listener_ = std::thread([this] { listen(); });
}

LocalListener::~LocalListener() {
    ending_ = true;
    listener_.join();
    for (std::thread& peer : peers_) peer.join();
    close(listening_);
}

void LocalListener::listen() {
    while (!ending_) {
        if (!isReady(listening_, POLLIN)) continue;
        const int socket = accept(listening_, nullptr, nullptr);
        if (socket < 0) continue;
        peers_.emplace_back([this, socket] {
            serve_(socket);
            close(socket);
        });
    }
}

}  // namespace torvex::test
