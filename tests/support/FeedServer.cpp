#include "support/FeedServer.h"

#include <poll.h>
#include <sys/socket.h>
#include <thread>

namespace torvex::test {

bool FeedServer::Peer::send(std::string_view bytes) {
    while (!bytes.empty() && !server_.listener_.isEnding()) {
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
    while (!server_.listener_.isEnding()) {
        if (isReady(socket_, POLLIN) && recv(socket_, &byte, 1, MSG_DONTWAIT) == 0) return;
    }
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
    return "http://127.0.0.1:" + std::to_string(listener_.port()) + target;
}

std::vector<std::string> FeedServer::targets() const {
    const std::lock_guard lock(mutex_);
    return targets_;
}

std::string FeedServer::lastRequest() const {
    const std::lock_guard lock(mutex_);
    return lastRequest_;
}

void FeedServer::serve(int socket) {
    std::string request;
    char piece[4096];
    while (!listener_.isEnding() && request.find("\r\n\r\n") == std::string::npos) {
        if (!isReady(socket, POLLIN)) continue;
        const ssize_t size = recv(socket, piece, sizeof piece, 0);
        if (size <= 0) break;
        request.append(piece, static_cast<std::size_t>(size));
    }
    if (request.find("\r\n\r\n") != std::string::npos) {
        Peer peer(socket, *this);
        scriptFor(request)(peer);
    }
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
