#include "search/catalogue/Socket.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <memory>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>

#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Wire.h"

namespace torvex::catalogue {

namespace {

constexpr const char* tooSlow = "the other server doesn't answer in time";

Addresses lookUp(const std::string& host, const std::string& port) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) return nullptr;
    return Addresses(found);
}

/// Looking up a name takes as long as it likes: who asked doesn't wait for it.
Addresses lookUp(const std::string& host, const std::string& port, Deadline until) {
    auto promise = std::make_shared<std::promise<Addresses>>();
    auto found = promise->get_future();
    std::thread([promise, host, port] { promise->set_value(lookUp(host, port)); }).detach();
    if (found.wait_until(until.until()) != std::future_status::ready) throw UnavailableError(tooSlow);
    Addresses addresses = found.get();
    if (!addresses) throw UnavailableError("there is no server \"" + host + "\"");
    return addresses;
}

void await(const Descriptor& socket, short event, Deadline until) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until.left()).count();
    pollfd waiting{socket.number(), event, 0};
    const int ready = ::poll(&waiting, 1, static_cast<int>(std::clamp<std::int64_t>(left, 0, 60'000)));
    if (ready == 0 || until.hasPassed()) throw UnavailableError(tooSlow);
}

bool connects(const Descriptor& socket, const addrinfo& address, Deadline until) {
    if (::connect(socket.number(), address.ai_addr, address.ai_addrlen) == 0) return true;
    if (errno != EINPROGRESS) return false;
    await(socket, POLLOUT, until);
    int error = 0;
    socklen_t size = sizeof error;
    return ::getsockopt(socket.number(), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

std::string receive(const Descriptor& socket, std::size_t size, Deadline until) {
    std::string bytes(size, '\0');
    for (std::size_t at = 0; at < size;) {
        const ssize_t taken = ::recv(socket.number(), bytes.data() + at, size - at, MSG_DONTWAIT);
        if (taken > 0) {
            at += static_cast<std::size_t>(taken);
        } else if (taken < 0 && (errno == EAGAIN || errno == EINTR)) {
            await(socket, POLLIN, until);
        } else {
            throw UnavailableError("the other side has gone");
        }
    }
    return bytes;
}

}  // namespace

void FreeAddresses::operator()(::addrinfo* addresses) const {
    ::freeaddrinfo(addresses);
}

Descriptor connectTo(const std::string& host, const std::string& port, Deadline until) {
    const Addresses addresses = lookUp(host, port, until);
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
        Descriptor socket(
            ::socket(address->ai_family, address->ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        if (socket && connects(socket, *address, until)) return socket;
    }
    throw UnavailableError("no catalogue answers at " + host + ":" + port);
}

void sendMessage(const Descriptor& socket, std::string_view message, Deadline until) {
    const std::string bytes = wire::withLength(message);
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t sent = ::send(socket.number(), rest.data(), rest.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent > 0) {
            rest.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno == EAGAIN || errno == EINTR) {
            await(socket, POLLOUT, until);
        } else {
            throw UnavailableError("the other side has gone");
        }
    }
}

std::string receiveMessage(const Descriptor& socket, std::size_t longest, Deadline until) {
    const std::size_t size = wire::readLength(receive(socket, wire::lengthSize, until));
    if (size > longest) throw UnavailableError("the other side says too much");
    return receive(socket, size, until);
}

}  // namespace torvex::catalogue
