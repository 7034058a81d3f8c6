#include "search/catalogue/CatalogueServer.h"

#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <memory>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>
#include <thread>

#include "search/catalogue/Socket.h"
#include "search/catalogue/Wire.h"

namespace torvex::catalogue {

namespace {

/// Requests at a time; further ones wait to be accepted.
constexpr unsigned most = 16;
constexpr std::chrono::seconds forRequest{5};
constexpr std::chrono::seconds forAnswer{10};

Descriptor listenAt(const std::string& address, std::uint16_t port) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICHOST | AI_PASSIVE;
    addrinfo* found = nullptr;
    const auto refuse = [&](const char* reason) {
        throw Error(fmt::format("Can't listen at {}:{}: {}", address, port, reason));
    };
    if (::getaddrinfo(address.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) {
        refuse("it is no address");
    }
    const Addresses addresses(found);
    Descriptor listener(::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int yes = 1;
    ::setsockopt(listener.number(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (::bind(listener.number(), found->ai_addr, found->ai_addrlen) != 0 ||
        ::listen(listener.number(), SOMAXCONN) != 0) {
        refuse(std::strerror(errno));
    }
    return listener;
}

}  // namespace

CatalogueServer::CatalogueServer(const Backend& backend, const std::string& address, std::uint16_t port)
    : backend_(backend), listener_(listenAt(address, port)) {}

CatalogueServer::~CatalogueServer() {
    stop();
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return busy_ == 0; });
}

std::uint16_t CatalogueServer::port() const {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    ::getsockname(listener_.number(), reinterpret_cast<sockaddr*>(&address), &size);
    char digits[NI_MAXSERV] = "";
    ::getnameinfo(reinterpret_cast<sockaddr*>(&address), size, nullptr, 0, digits, sizeof digits,
                  NI_NUMERICSERV);
    return static_cast<std::uint16_t>(std::stoi(digits));
}

void CatalogueServer::stop() {
    isStopping_ = true;
}

void CatalogueServer::run() {
    constexpr int look = 200;  // milliseconds between two looks at whether to stop
    while (!isStopping_) {
        pollfd waiting{listener_.number(), POLLIN, 0};
        if (::poll(&waiting, 1, look) <= 0) continue;
        Descriptor socket(::accept4(listener_.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!socket) continue;
        begin();
        try {
            std::thread([this, taken = std::make_shared<Descriptor>(std::move(socket))] {
                answer(std::move(*taken));
                end();
            }).detach();
        } catch (const std::system_error&) {
            // Without a thread for it, the other side has to ask again.
            end();
        }
    }
}

void CatalogueServer::begin() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return busy_ < most; });
    ++busy_;
}

void CatalogueServer::end() {
    const std::scoped_lock lock(mutex_);
    --busy_;
    changed_.notify_all();
}

void CatalogueServer::answer(Descriptor socket) {
    try {
        const std::string request = receiveMessage(socket, wire::longestRequest, Deadline::in(forRequest));
        sendMessage(socket, wire::answer(backend_, request), Deadline::in(forAnswer));
    } catch (const std::exception&) {
        // Who doesn't ask, or doesn't listen, gets nothing.
    }
}

}  // namespace torvex::catalogue
