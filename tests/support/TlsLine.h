#pragma once

#include <openssl/ssl.h>

#include "support/ClientLine.h"
#include "support/OpenSsl.h"

namespace torvex::test {

/// Encrypted bytes, to a server with any certificate.
class TlsLine final : public ClientLine {
  public:
    /// `protocols` are offered for what is spoken on it: each with its length in front, "" offers none.
    explicit TlsLine(Descriptor socket, std::string_view protocols = {});

    bool shakeHands() { return SSL_connect(ssl_.get()) == 1; }
    /// What both have agreed on.
    std::string protocol() const;
    SSL* ssl() { return ssl_.get(); }

    void send(std::string_view bytes) override;
    std::optional<std::string> receive(std::chrono::milliseconds time) override;
    void endSending() override;
    int descriptor() const override { return socket_.number(); }

  private:
    Descriptor socket_;
    Held<SSL_CTX, SSL_CTX_free> context_;
    Held<SSL, SSL_free> ssl_;
};

}  // namespace torvex::test
