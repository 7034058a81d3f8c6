#include "support/SmtpServer.h"

#include <optional>
#include <poll.h>
#include <sys/socket.h>

namespace torvex::test {

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
        while (!server_.listener_.isEnding()) {
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
        if (!take(peer, std::move(mail))) return;
        mail = {};
    }
}

bool SmtpServer::take(Peer& peer, Taken mail) {
    for (auto line = peer.line(); line && *line != "."; line = peer.line()) mail.data += *line + "\r\n";
    const std::string answer = replyTo(".", "250 taken");
    if (answer.starts_with("250")) {
        const std::lock_guard lock(mutex_);
        mails_.push_back(std::move(mail));
    }
    return peer.say(answer);
}

}  // namespace torvex::test
