#include "modules/mail/MailDelivery.h"

#include <algorithm>
#include <exception>
#include <fmt/format.h>

#include "platform/Days.h"
#include "platform/OperatorLog.h"
#include "platform/db/Connection.h"
#include "platform/net/MailMessage.h"

namespace torvex {

namespace {

std::string nameOf(const Mail& mail) {
    return fmt::format("the mail \"{}\" to {}", mailHeaderText(mail.subject), mailHeaderText(mail.to));
}

void noteFailure(MailDesk& desk, db::Connection& connection, const QueuedMail& taken,
                 const std::string& reason, bool isLasting) {
    const int tries = taken.tries + 1;
    if (isLasting || tries >= desk.options.tries) {
        giveMailUp(connection, taken.id, reason);
        desk.log.warn(fmt::format("{} is given up: {}", nameOf(taken.mail), reason));
        return;
    }
    putMailOff(connection, taken.id, later(desk.clock.now(), waitAfter(tries, desk.options)), reason);
    desk.log.warn(
        fmt::format("{} couldn't be sent and is tried again later: {}", nameOf(taken.mail), reason));
}

/// Whether it was sent.
bool deliver(MailDesk& desk, db::Connection& connection, const QueuedMail& taken) {
    Mail mail = taken.mail;
    if (mail.from.empty()) mail.from = desk.sender;
    try {
        desk.transport->send(mail);
    } catch (const MailError& error) {
        noteFailure(desk, connection, taken, error.what(), error.isLasting());
        return false;
    } catch (const std::exception& error) {
        noteFailure(desk, connection, taken, error.what(), false);
        return false;
    }
    forgetMail(connection, taken.id);
    return true;
}

void tell(MailDesk& desk, db::Connection& connection, const QueuedMail& taken) {
    forgetMail(connection, taken.id);
    desk.log.warn(fmt::format("{} isn't sent: [mail] of torvex.toml names no server", nameOf(taken.mail)));
}

}  // namespace

DateTime later(const DateTime& moment, std::chrono::seconds seconds) {
    return momentOf(secondOf(moment) + seconds);
}

std::chrono::seconds waitAfter(int tries, const MailDeliveryOptions& options) {
    const int doublings = std::clamp(tries - 1, 0, 20);
    return std::min(options.longestWait, options.firstWait * (1 << doublings));
}

int deliverMails(MailDesk& desk, const std::function<bool()>& isEnding) {
    const db::Lease connection = desk.open();
    int sent = 0;
    while (!isEnding()) {
        const DateTime now = desk.clock.now();
        const auto taken = takeMail(*connection, now, later(now, desk.options.held));
        if (!taken) break;
        if (desk.transport == nullptr) {
            tell(desk, *connection, *taken);
        } else if (deliver(desk, *connection, *taken)) {
            ++sent;
        }
    }
    dropOldMails(*connection, later(desk.clock.now(), -desk.options.keepFailed));
    return sent;
}

MailDelivery::MailDelivery(MailDesk desk) : desk_(std::move(desk)), thread_([this] { work(); }) {}

MailDelivery::~MailDelivery() {
    {
        const std::scoped_lock guard(mutex_);
        isStopping_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

bool MailDelivery::isStopping() {
    const std::scoped_lock guard(mutex_);
    return isStopping_;
}

void MailDelivery::work() {
    std::unique_lock lock(mutex_);
    while (!isStopping_) {
        lock.unlock();
        deliver();
        lock.lock();
        changed_.wait_for(lock, desk_.options.pause, [this] { return isStopping_; });
    }
}

void MailDelivery::deliver() {
    try {
        deliverMails(desk_, [this] { return isStopping(); });
        isFailing_ = false;
    } catch (const std::exception& error) {
        if (!isFailing_) warnOf(desk_.log, "mails can't be sent for now", error);
        isFailing_ = true;
    }
}

}  // namespace torvex
