#include "accounts/LoginHold.h"

#include <fmt/format.h>
#include <optional>
#include <utility>

#include "accounts/Actor.h"
#include "accounts/SecondFactor.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

namespace torvex {

namespace {

/// Changes nothing but keeps the row from other sessions until the end of the transaction: this one must be
/// the only one between the test and the writing.
constexpr std::string_view lockRow =
    "update TORVEX_LOGINS set username = username where username = ? and password = ?";

constexpr std::string_view selectRow =
    "select loginId, username, password, name, validFrom, validTo, sessionId, ipAddress from TORVEX_LOGINS "
    "where username = ? and password = ? and coalesce(kind, '') <> 'program' order by loginId";

constexpr std::string_view renewPassword =
    "update TORVEX_LOGINS set password = ?, passwordHash = ? where loginId = ?";

constexpr std::string_view updateHeldRow =
    "update TORVEX_LOGINS set ipAddress = ?, sessionId = ?, currentSite = '', siteLock = '', date = ?, time "
    "= ? where loginId = ?";

constexpr std::string_view freeOtherRows =
    "update TORVEX_LOGINS set sessionId = '', currentSite = '', siteLock = '' "
    "where sessionId = ? and loginId <> ?";

struct LoginRow {
    Author author;
    std::string validFrom;
    std::string validTo;
    std::string sessionId;
    std::string ipAddress;
};

std::optional<LoginRow> readRow(db::Connection& connection, const Proof& proof) {
    auto rows = connection.query(selectRow, {proof.username, proof.password});
    if (!rows.next()) return std::nullopt;
    return LoginRow{{static_cast<int>(rows.number("loginId")), rows.text("username"), rows.text("password"),
                     rows.text("name")},
                    rows.text("validFrom"),
                    rows.text("validTo"),
                    rows.text("sessionId"),
                    rows.text("ipAddress")};
}

bool isValidOn(const LoginRow& row, const std::string& today) {
    return isWithin(today, row.validFrom, row.validTo);
}

/// A second session at the holder's address takes the login over.
bool isHeldElsewhere(const LoginRow& row, std::string_view sessionId, std::string_view address) {
    return !isAdministrator(row.author.username) && !row.sessionId.empty() &&
           !text::equals(row.sessionId, sessionId) && !row.ipAddress.empty() &&
           !text::equals(row.ipAddress, address);
}

void renew(db::Connection& connection, const StrongForm& form, Author& author) {
    connection.execute(renewPassword, {form.mark, form.hash, author.loginId});
    author.password = form.mark;
}

/// Logged in when nothing is lacking. A session that has shown the login's factor needn't do so again.
LoginCode showSecond(db::Connection& own, const HostContext& host, int loginId, SecondProof& second) {
    const auto factor = secondFactorOf(own, ofLogin(loginId));
    const int shown = std::exchange(second.factorId, factor ? factor->id : 0);
    if (!factor || shown == factor->id) return LoginCode::LoggedIn;
    if (second.code.empty()) return LoginCode::NeedsCode;
    const TypedCode typed = takeCode(own, ofLogin(loginId), *factor, second.code, host.clock.unixSeconds());
    second.isOfPaper = typed == TypedCode::OfPaper;
    return typed == TypedCode::Wrong ? LoginCode::WrongCode : LoginCode::LoggedIn;
}

}  // namespace

LoginCode takeLogin(HostContext& host, const Proof& proof, SecondProof& second, std::string_view address,
                    OtherHolder other, Author& author) {
    std::optional<LoginRow> row;
    const auto take = [&](db::Connection& own) {
        own.execute(lockRow, {proof.username, proof.password});
        row = readRow(own, proof);
        if (!row || !isValidOn(*row, host.clock.today())) return db::refuse(LoginCode::Unknown);
        const LoginCode shown = showSecond(own, host, row->author.loginId, second);
        if (shown != LoginCode::LoggedIn) return db::refuse(shown);
        if (other == OtherHolder::Keeps && isHeldElsewhere(*row, host.session.id(), address))
            return db::commit(LoginCode::HeldElsewhere);  // the code is spent
        holdRow(own, host, row->author.loginId, address);
        if (proof.renewal) renew(own, *proof.renewal, row->author);
        return db::commit(LoginCode::LoggedIn);
    };
    const LoginCode code = db::inOwnTransaction(host, take).value;
    if (code == LoginCode::LoggedIn) author = std::move(row->author);
    return code;
}

void holdRow(db::Connection& connection, HostContext& host, int loginId, std::string_view address) {
    const DateTime now = host.clock.now();
    const std::string day = date8(now);
    const std::string time = fmt::format("{:02}:{:02}", now.hour, now.minute);
    connection.execute(updateHeldRow, {address, host.session.id(), day, time, loginId});
    connection.execute(freeOtherRows, {host.session.id(), loginId});
}

void storeAuthor(HostContext& host, const Author& author) {
    host.session.set(sessionKey::authorLoginId, author.loginId);
    host.session.set(sessionKey::authorName, author.username);
    host.session.set(sessionKey::authorPassword, author.password);
    host.session.set(sessionKey::authorFullname, author.fullname);
    host.session.set(sessionKey::authoringSsl, host.application.get(applicationKey::authoringSsl));
}

}  // namespace torvex
