#include "support/PlainLine.h"

#include <array>
#include <poll.h>
#include <sys/socket.h>

namespace torvex::test {

void PlainLine::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return;  // the server has closed: what it answered can still be read
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::optional<std::string> PlainLine::receive(std::chrono::milliseconds time) {
    pollfd wait{socket_.number(), POLLIN, 0};
    if (::poll(&wait, 1, static_cast<int>(time.count())) <= 0) return std::nullopt;
    std::array<char, 65536> space;
    const ssize_t count = ::recv(socket_.number(), space.data(), space.size(), 0);
    return count <= 0 ? std::string() : std::string(space.data(), static_cast<std::size_t>(count));
}

void PlainLine::endSending() {
    ::shutdown(socket_.number(), SHUT_WR);
}

}  // namespace torvex::test
