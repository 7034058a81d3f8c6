#include "support/ClientLine.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <sys/socket.h>

namespace torvex::test {

Descriptor connectTo(std::uint16_t port, const std::string& from) {
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = ::inet_addr(from.c_str());
    if (::bind(socket.number(), reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0)
        throw std::runtime_error("can't send from " + from);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("can't connect to port " + std::to_string(port));
    const int on = 1;
    ::setsockopt(socket.number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return socket;
}

}  // namespace torvex::test
