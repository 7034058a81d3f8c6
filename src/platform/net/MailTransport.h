#pragma once

#include <stdexcept>
#include <string>

namespace torvex {

/// One mail in plain text, UTF-8.
struct Mail {
    std::string from;  ///< one address
    std::string to;    ///< one address
    std::string subject;
    std::string text;
};

/// That a mail couldn't be handed over. A lasting failure (an address that the server doesn't know) is the
/// same at every further try.
class MailError : public std::runtime_error {
  public:
    MailError(const std::string& reason, bool isLasting)
        : std::runtime_error(reason), isLasting_(isLasting) {}

    bool isLasting() const { return isLasting_; }

  private:
    bool isLasting_;
};

/// The way out for mails. Implementations are safe to share between threads.
class MailTransport {
  public:
    virtual ~MailTransport() = default;

    /// Throws `MailError` when the mail wasn't taken.
    virtual void send(const Mail& mail) = 0;
};

}  // namespace torvex
