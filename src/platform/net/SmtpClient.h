#pragma once

#include <atomic>

#include "platform/net/MailServer.h"
#include "platform/net/MailTransport.h"

namespace torvex {

/// Hands mails to a server by SMTP, on libcurl; a connection for each mail. Certificates are checked. The
/// password is never part of an error.
class SmtpClient final : public MailTransport {
  public:
    explicit SmtpClient(MailServer server);

    /// Addresses that are none are refused before anything is sent.
    void send(const Mail& mail) override;
    /// Ends what is being sent, and whatever comes later, with an error that isn't lasting. From any thread.
    void cancel() { isCancelled_ = true; }

  private:
    const MailServer server_;
    std::atomic<bool> isCancelled_ = false;
};

}  // namespace torvex
