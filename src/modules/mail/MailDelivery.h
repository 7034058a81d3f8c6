#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "modules/mail/MailQueue.h"
#include "platform/db/Database.h"

namespace torvex {

class Clock;
class OperatorLog;

struct MailDeliveryOptions {
    /// After the first failure; twice as long after each further one.
    std::chrono::seconds firstWait{60};
    std::chrono::seconds longestWait{4 * 3600};
    /// In all: with these waits some two days.
    int tries = 18;
    /// How long a mail that was taken is left to who took it.
    std::chrono::seconds held{300};
    std::chrono::hours keepFailed{24 * 30};
    /// Between two looks at the queue.
    std::chrono::milliseconds pause{5'000};
};

/// `moment` and so much later, by the calendar.
DateTime later(const DateTime& moment, std::chrono::seconds seconds);

/// How long a mail waits for its next try after so many.
std::chrono::seconds waitAfter(int tries, const MailDeliveryOptions& options);

/// What mails are worked off with; outlives who uses it.
struct MailDesk {
    std::function<db::Lease()> open;  ///< a connection, on any thread
    MailTransport* transport;         ///< null: no server is set, and mails are told to operators instead
    const Clock& clock;
    OperatorLog& log;
    std::string sender{};  ///< of mails that name none
    MailDeliveryOptions options{};
};

/// Sends what is due, one after the other, until nothing is or `isEnding` says so. The number of mails that
/// were sent. Throws `DatabaseError` when the queue can't be read.
int deliverMails(MailDesk& desk, const std::function<bool()>& isEnding);

/// Works the queue off on a thread of its own, for as long as the object lives. A queue that can't be read is
/// told once, until it can be again.
class MailDelivery {
  public:
    explicit MailDelivery(MailDesk desk);
    MailDelivery(const MailDelivery&) = delete;
    MailDelivery& operator=(const MailDelivery&) = delete;
    /// Waits for the mail that is being sent; see `SmtpClient::cancel`.
    ~MailDelivery();

  private:
    void work();
    void deliver();
    bool isStopping();

    MailDesk desk_;
    bool isFailing_ = false;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isStopping_ = false;
    std::thread thread_;
};

}  // namespace torvex
