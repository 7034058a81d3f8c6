#include "modules/mail/MailQueue.h"

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view insertMail =
    "insert into TORVEX_MAIL_QUEUE (mail_to, mail_from, mail_subject, mail_text, mail_created, mail_next) "
    "values (?, ?, ?, ?, ?, ?)";
constexpr std::string_view selectDue =
    "select mail_id, mail_to, mail_from, mail_subject, mail_text, mail_tries from TORVEX_MAIL_QUEUE "
    "where mail_failed = 0 and mail_next <= ? order by mail_next, mail_id limit 1";
/// Finds the line as it was only if nobody else has taken it meanwhile.
constexpr std::string_view takeDue =
    "update TORVEX_MAIL_QUEUE set mail_next = ?, mail_tries = mail_tries + 1 "
    "where mail_id = ? and mail_tries = ? and mail_failed = 0";
constexpr std::string_view deleteMail = "delete from TORVEX_MAIL_QUEUE where mail_id = ?";
constexpr std::string_view updateNext =
    "update TORVEX_MAIL_QUEUE set mail_next = ?, mail_error = ? where mail_id = ?";
constexpr std::string_view updateFailed =
    "update TORVEX_MAIL_QUEUE set mail_failed = 1, mail_error = ? where mail_id = ?";
constexpr std::string_view deleteFailed =
    "delete from TORVEX_MAIL_QUEUE where mail_failed = 1 and mail_next < ?";

constexpr std::size_t mostOfReason = 500;

std::string shortened(const std::string& reason) {
    return std::string(text::first(text::toValidUtf8(reason), mostOfReason));
}

}  // namespace

void queueMail(db::Connection& connection, const Mail& mail, const DateTime& now) {
    connection.execute(insertMail, {mail.to, mail.from, mail.subject, mail.text, now, now});
}

std::optional<QueuedMail> takeMail(db::Connection& connection, const DateTime& now, const DateTime& until) {
    for (;;) {
        QueuedMail due;
        {
            auto rows = connection.query(selectDue, {now});
            if (!rows.next()) return std::nullopt;
            due = {static_cast<std::int64_t>(rows.number("mail_id")),
                   static_cast<int>(rows.number("mail_tries")),
                   {rows.text("mail_from"), rows.text("mail_to"), rows.text("mail_subject"),
                    rows.text("mail_text")}};
        }
        if (connection.execute(takeDue, {until, due.id, due.tries}) == 1) return due;
    }
}

void forgetMail(db::Connection& connection, std::int64_t id) {
    connection.execute(deleteMail, {id});
}

void putMailOff(db::Connection& connection, std::int64_t id, const DateTime& next,
                const std::string& reason) {
    const std::string kept = shortened(reason);
    connection.execute(updateNext, {next, kept, id});
}

void giveMailUp(db::Connection& connection, std::int64_t id, const std::string& reason) {
    const std::string kept = shortened(reason);
    connection.execute(updateFailed, {kept, id});
}

void dropOldMails(db::Connection& connection, const DateTime& before) {
    connection.execute(deleteFailed, {before});
}

}  // namespace torvex
