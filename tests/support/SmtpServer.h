#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "support/LocalListener.h"

namespace torvex::test {

/// A small mail server on 127.0.0.1, without TLS, that keeps what it is given. It answers commands as tests
/// say. Each connection has a thread; all of it ends with the object.
class SmtpServer {
  public:
    struct Taken {
        std::string from;  ///< as it stood behind "MAIL FROM:"
        std::vector<std::string> to;
        std::string data;   ///< header and text, without the point at the end
        std::string login;  ///< what was given for "AUTH PLAIN", decoded by nobody
    };

    int port() const { return listener_.port(); }
    /// What a command ("MAIL", "RCPT", "DATA", "AUTH", "." for the mail itself, or "" for the greeting) is
    /// answered by, in place of yes; "" keeps silent for ever.
    void answer(const std::string& command, const std::string& reply);
    std::vector<Taken> mails() const;
    /// The lines of all connections so far.
    std::vector<std::string> commands() const;

  private:
    class Peer;

    void serve(int socket);
    /// The mail itself; false when the other side has gone.
    bool take(Peer& peer, Taken mail);
    std::string replyTo(const std::string& command, const std::string& usual) const;

    mutable std::mutex mutex_;  ///< guards what follows
    std::map<std::string, std::string> replies_;
    std::vector<Taken> mails_;
    std::vector<std::string> commands_;
    LocalListener listener_{[this](int socket) { serve(socket); }};  ///< last: it uses all else
};

}  // namespace torvex::test
