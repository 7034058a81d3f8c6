#include "support/RawHttpClient.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstdlib>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <thread>

#include "host/http/Ascii.h"

namespace torvex::test {

namespace {

constexpr std::chrono::milliseconds patience{10'000};

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

}  // namespace

std::vector<std::string> RawReply::fields(std::string_view name) const {
    std::vector<std::string> values;
    std::string_view rest = head;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find("\r\n"), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 2, rest.size()));
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos && ascii::equals(line.substr(0, colon), name))
            values.emplace_back(ascii::trimmed(line.substr(colon + 1)));
    }
    return values;
}

std::string RawReply::field(std::string_view name) const {
    const std::vector<std::string> values = fields(name);
    return values.empty() ? std::string() : values.front();
}

std::string RawReply::sessionCookie() const {
    for (const std::string& cookie : fields("Set-Cookie"))
        if (cookie.starts_with("torvex_session=") || cookie.starts_with("__Host-torvex_session="))
            return cookie.substr(0, cookie.find(';'));
    return {};
}

RawHttpClient::RawHttpClient(std::uint16_t port, const std::string& from) : socket_(connectTo(port, from)) {}

void RawHttpClient::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return;  // the server has closed: what it answered can still be read
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::size_t RawHttpClient::drip(std::string_view bytes, std::chrono::milliseconds pause) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (::send(socket_.number(), bytes.data() + i, 1, MSG_NOSIGNAL) != 1) return i;
        pollfd wait{socket_.number(), POLLIN, 0};
        if (::poll(&wait, 1, static_cast<int>(pause.count())) > 0) return i + 1;
    }
    return bytes.size();
}

void RawHttpClient::endSending() {
    ::shutdown(socket_.number(), SHUT_WR);
}

bool RawHttpClient::receive(std::chrono::milliseconds time) {
    pollfd wait{socket_.number(), POLLIN, 0};
    if (isAtEnd_ || ::poll(&wait, 1, static_cast<int>(time.count())) <= 0) return false;
    std::array<char, 65536> space;
    const ssize_t count = ::recv(socket_.number(), space.data(), space.size(), 0);
    if (count <= 0) {
        isAtEnd_ = true;
        return false;
    }
    received_.append(space.data(), static_cast<std::size_t>(count));
    return true;
}

RawReply RawHttpClient::readHead() {
    RawReply reply;
    std::size_t end = std::string::npos;
    while ((end = received_.find("\r\n\r\n")) == std::string::npos)
        if (!receive(patience)) return reply;
    reply.head = received_.substr(0, end + 4);
    received_.erase(0, end + 4);
    if (reply.head.starts_with("HTTP/1.1 ")) reply.status = std::atoi(reply.head.c_str() + 9);
    return reply;
}

RawReply RawHttpClient::readWithoutBody() {
    return readHead();
}

RawReply RawHttpClient::read() {
    RawReply reply = readHead();
    const std::size_t length = std::strtoul(reply.field("Content-Length").c_str(), nullptr, 10);
    while (received_.size() < length)
        if (!receive(patience)) break;
    reply.body = received_.substr(0, length);
    received_.erase(0, length);
    return reply;
}

bool RawHttpClient::isClosedWithin(std::chrono::milliseconds time) {
    return received_.empty() && !receive(time) && isAtEnd_;
}

std::string RawHttpClient::readAll() {
    while (receive(patience)) {
    }
    return received_;
}

RawReply RawHttpClient::get(std::string_view target, std::string_view lines) {
    std::string request = "GET ";
    request.append(target).append(" HTTP/1.1\r\nHost: test.example\r\n").append(lines).append("\r\n");
    return ask(request);
}

}  // namespace torvex::test
