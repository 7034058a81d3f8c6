#include "support/SmtpServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <optional>
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

}  // namespace

/// One connection, line by line.
class SmtpServer::Peer {
  public:
    Peer(int socket, SmtpServer& server) : socket_(socket), server_(server) {}

    /// False when the other side has gone or the server is to end.
    bool say(const std::string& line) {
        if (line.empty()) return waitForClose();
        const std::string bytes = line + "\r\n";
        return send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }
    std::optional<std::string> line() {
        for (;;) {
            const auto end = read_.find("\r\n");
            if (end != std::string::npos) {
                std::string found = read_.substr(0, end);
                read_.erase(0, end + 2);
                return found;
            }
            if (!fill()) return std::nullopt;
        }
    }

  private:
    bool fill() {
        char piece[4096];
        while (!server_.ending_) {
            if (!isReady(socket_, POLLIN)) continue;
            const ssize_t size = recv(socket_, piece, sizeof piece, 0);
            if (size <= 0) return false;
            read_.append(piece, static_cast<std::size_t>(size));
            return true;
        }
        return false;
    }
    bool waitForClose() {
        while (fill()) read_.clear();
        return false;
    }

    int socket_;
    SmtpServer& server_;
    std::string read_;
};

SmtpServer::SmtpServer() {
    listening_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* place = static_cast<sockaddr*>(static_cast<void*>(&address));
    socklen_t size = sizeof address;
    if (listening_ < 0 || bind(listening_, place, size) != 0 || ::listen(listening_, 16) != 0)
        throw std::runtime_error("the mail server can't listen");
    getsockname(listening_, place, &size);
    port_ = ntohs(address.sin_port);
    listener_ = std::thread([this] { listen(); });
}

SmtpServer::~SmtpServer() {
    ending_ = true;
    listener_.join();
    for (std::thread& peer : peers_) peer.join();
    close(listening_);
}

void SmtpServer::answer(const std::string& command, const std::string& reply) {
    const std::lock_guard lock(mutex_);
    replies_[command] = reply;
}

std::vector<SmtpServer::Taken> SmtpServer::mails() const {
    const std::lock_guard lock(mutex_);
    return mails_;
}

std::vector<std::string> SmtpServer::commands() const {
    const std::lock_guard lock(mutex_);
    return commands_;
}

std::string SmtpServer::replyTo(const std::string& command, const std::string& usual) const {
    const std::lock_guard lock(mutex_);
    const auto found = replies_.find(command);
    return found == replies_.end() ? usual : found->second;
}

void SmtpServer::listen() {
    while (!ending_) {
        if (!isReady(listening_, POLLIN)) continue;
        const int socket = accept(listening_, nullptr, nullptr);
        if (socket < 0) continue;
        const std::lock_guard lock(mutex_);
        peers_.emplace_back([this, socket] {
            serve(socket);
            close(socket);
        });
    }
}

void SmtpServer::serve(int socket) {
    Peer peer(socket, *this);
    Taken mail;
    if (!peer.say(replyTo("", "220 mail.test"))) return;
    while (const auto command = peer.line()) {
        {
            const std::lock_guard lock(mutex_);
            commands_.push_back(*command);
        }
        const std::string verb = command->substr(0, command->find(' '));
        std::string reply = replyTo(verb, "250 yes");
        if (verb == "EHLO" && reply == "250 yes") {
            if (!peer.say("250-mail.test")) return;
            reply = "250 AUTH PLAIN";
        } else if (verb == "AUTH") {
            if (!peer.say("334 ")) return;
            mail.login = peer.line().value_or("");
            reply = replyTo(verb, "235 yes");
        } else if (verb == "MAIL") {
            mail.from = command->substr(10);
        } else if (verb == "RCPT") {
            mail.to.push_back(command->substr(8));
        } else if (verb == "DATA") {
            reply = replyTo(verb, "354 go on");
        }
        if (!peer.say(reply) || verb == "QUIT") return;
        if (verb != "DATA" || !reply.starts_with("354")) continue;
        for (auto line = peer.line(); line && *line != "."; line = peer.line()) mail.data += *line + "\r\n";
        const std::string taken = replyTo(".", "250 taken");
        if (taken.starts_with("250")) {
            const std::lock_guard lock(mutex_);
            mails_.push_back(mail);
        }
        if (!peer.say(taken)) return;
        mail = {};
    }
}

}  // namespace torvex::test
