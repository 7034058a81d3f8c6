#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/DateTime.h"
#include "platform/net/MailTransport.h"

namespace torvex {
namespace db {
class Connection;
}

/// Puts a mail into the queue, on the caller's connection: inside a transaction it is sent only if that is
/// committed. Survives a restart.
void queueMail(db::Connection& connection, const Mail& mail, const DateTime& now);

/// A mail of the queue that is due.
struct QueuedMail {
    std::int64_t id = 0;
    int tries = 0;  ///< so far
    Mail mail;
};

// For who works the queue off. Several may do so at once, on several servers: a mail is taken by one of them.

/// The next mail that is due, taken: nobody else gets it until `until`, when it is due again if nothing was
/// noted of it, as after a crash. Nothing when none is due.
std::optional<QueuedMail> takeMail(db::Connection& connection, const DateTime& now, const DateTime& until);
void forgetMail(db::Connection& connection, std::int64_t id);
/// It couldn't be sent, and is due again at that moment.
void putMailOff(db::Connection& connection, std::int64_t id, const DateTime& next, const std::string& reason);
/// It is given up; its line stays so that people can look why.
void giveMailUp(db::Connection& connection, std::int64_t id, const std::string& reason);
/// Removes lines of mails that were given up before that moment.
void dropOldMails(db::Connection& connection, const DateTime& before);

}  // namespace torvex
