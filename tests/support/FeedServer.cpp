#include "support/FeedServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace torvex::test {

namespace {

constexpr int tick = 10;  // milliseconds between two looks at whether to end

bool isReady(int socket, short event) {
    pollfd wait{socket, event, 0};
    return poll(&wait, 1, tick) > 0;
}

int listeningSocket() {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto* place = static_cast<const sockaddr*>(static_cast<const void*>(&address));
    if (socket < 0 || bind(socket, place, sizeof address) != 0 || ::listen(socket, 64) != 0) {
        throw std::runtime_error("the feed server can't listen");
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

bool FeedServer::Peer::send(std::string_view bytes) {
    while (!bytes.empty() && !server_.ending_) {
        if (!isReady(socket_, POLLOUT)) continue;
        const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return bytes.empty();
}

void FeedServer::Peer::sendForEver(std::string_view piece, std::chrono::milliseconds pause) {
    while (send(piece)) std::this_thread::sleep_for(pause);
}

void FeedServer::Peer::waitForClose() {
    char byte = 0;
    while (!server_.ending_) {
        if (isReady(socket_, POLLIN) && recv(socket_, &byte, 1, MSG_DONTWAIT) == 0) return;
    }
}

FeedServer::FeedServer() : listening_(listeningSocket()), port_(portOf(listening_)) {
    listener_ = std::thread([this] { listen(); });
}

FeedServer::~FeedServer() {
    ending_ = true;
    listener_.join();
    for (std::thread& peer : peers_) peer.join();
    close(listening_);
}

void FeedServer::at(const std::string& path, Script script) {
    const std::lock_guard lock(mutex_);
    scripts_[path] = std::move(script);
}

void FeedServer::answer(const std::string& path, const std::string& status, const std::string& header,
                        const std::string& body) {
    at(path, [text = answerText(status, header, body)](Peer& peer) { peer.send(text); });
}

std::string FeedServer::url(const std::string& target) const {
    return "http://127.0.0.1:" + std::to_string(port_) + target;
}

std::vector<std::string> FeedServer::targets() const {
    const std::lock_guard lock(mutex_);
    return targets_;
}

std::string FeedServer::lastRequest() const {
    const std::lock_guard lock(mutex_);
    return lastRequest_;
}

void FeedServer::listen() {
    while (!ending_) {
        if (!isReady(listening_, POLLIN)) continue;
        const int socket = accept(listening_, nullptr, nullptr);
        if (socket < 0) continue;
        const std::lock_guard lock(mutex_);
        peers_.emplace_back([this, socket] { serve(socket); });
    }
}

void FeedServer::serve(int socket) {
    std::string request;
    char piece[4096];
    while (!ending_ && request.find("\r\n\r\n") == std::string::npos) {
        if (!isReady(socket, POLLIN)) continue;
        const ssize_t size = recv(socket, piece, sizeof piece, 0);
        if (size <= 0) break;
        request.append(piece, static_cast<std::size_t>(size));
    }
    if (request.find("\r\n\r\n") != std::string::npos) {
        Peer peer(socket, *this);
        scriptFor(request)(peer);
    }
    close(socket);
}

FeedServer::Script FeedServer::scriptFor(const std::string& request) {
    const std::size_t begin = request.find(' ') + 1;
    const std::string target = request.substr(begin, request.find(' ', begin) - begin);
    const std::lock_guard lock(mutex_);
    targets_.push_back(target);
    lastRequest_ = request;
    const auto found = scripts_.find(target.substr(0, target.find('?')));
    if (found != scripts_.end()) return found->second;
    return [](Peer& peer) { peer.send(answerText("404 Not Found", "", "nothing here")); };
}

std::string answerText(const std::string& status, const std::string& header, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n" + header + "\r\n" + body;
}

}  // namespace torvex::test
