#include "accounts/LoginRecord.h"

#include "accounts/Actor.h"
#include "accounts/StoredPassword.h"
#include "platform/DateTime.h"
#include "platform/db/Connection.h"
#include "platform/db/TrimmedText.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::size_t longestUsername = 20;
constexpr std::size_t longestPassword = 20;
constexpr std::size_t longestName = 30;
constexpr std::size_t longestJob = 50;
constexpr std::size_t longestEmail = 50;

constexpr std::string_view administrator = "sa";

constexpr std::string_view selectUsername = "select username from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view selectNamesake =
    "select loginId from TORVEX_LOGINS where username = ? and loginId <> ?";
constexpr std::string_view selectDetails =
    "select username, name, job, email, emailNotification, validFrom, validTo from TORVEX_LOGINS "
    "where loginId = ?";

/// A null leaves what is there.
constexpr std::string_view updateLogin =
    "update TORVEX_LOGINS set username = coalesce(?, username), password = coalesce(?, password), "
    "name = coalesce(?, name), job = coalesce(?, job), email = coalesce(?, email), "
    "emailNotification = coalesce(?, emailNotification), validFrom = coalesce(?, validFrom), "
    "validTo = coalesce(?, validTo), lock = '' where loginId = ?";
constexpr std::string_view insertLogin =
    "insert into TORVEX_LOGINS (username, password, name, job, email, emailNotification, validFrom, validTo, "
    "lock) values (?, ?, ?, ?, ?, ?, ?, ?, '')";
constexpr std::string_view copySettings =
    "insert into TORVEX_SETUP (parameter, value, dataType, loginId) "
    "select parameter, value, dataType, cast(? as integer) from TORVEX_SETUP where loginId = 1";

std::string cut(std::string_view given, std::size_t longest) {
    return std::string(text::first(text::trim(given), longest));
}

std::string storedPassword(std::string_view given) {
    return std::string(text::first(encodePassword(text::trim(given)), longestPassword));
}

std::optional<std::string> bound(std::string_view given) {
    const std::string_view day = text::trim(given);
    if (!day.empty() && !isDate8(day)) return std::nullopt;
    return std::string(day);
}

db::Parameter unlessEmpty(std::string_view value) {
    if (value.empty()) return nullptr;
    return value;
}

db::Parameter unlessMissing(const std::optional<std::string>& value) {
    if (!value) return nullptr;
    return std::string_view(*value);
}

db::Parameter unlessNegative(int value) {
    if (value < 0) return nullptr;
    return value;
}

/// 0 when there is none. No row has the number 0, so that it leaves none out.
int namesakeOf(db::Connection& connection, std::string_view username, int loginId) {
    if (username.empty()) return 0;
    auto rows = connection.query(selectNamesake, {username, loginId});
    return rows.next() ? static_cast<int>(rows.number("loginId")) : 0;
}

std::optional<std::string> usernameOf(db::Connection& connection, int loginId) {
    auto rows = connection.query(selectUsername, {loginId});
    if (!rows.next()) return std::nullopt;
    return rows.text("username");
}

/// "" when nothing is missing.
std::string_view missingIn(const LoginChange& change) {
    if (change.username.empty()) return loginCode::noUsername;
    if (change.password.empty()) return loginCode::noPassword;
    return change.name.empty() ? loginCode::noName : std::string_view();
}

}  // namespace

LoginChange loginChange(std::string_view username, std::string_view password, std::string_view name,
                        std::string_view job, std::string_view email, int emailNotification,
                        std::string_view validFrom, std::string_view validTo) {
    return {cut(username, longestUsername),
            storedPassword(password),
            cut(name, longestName),
            cut(job, longestJob),
            cut(email, longestEmail),
            emailNotification,
            bound(validFrom),
            bound(validTo)};
}

SavedLogin changeLogin(db::Connection& transaction, int loginId, const LoginChange& given) {
    lockRegisters(transaction);
    if (namesakeOf(transaction, given.username, loginId) > 0) return {loginCode::nameTaken};
    const auto username = usernameOf(transaction, loginId);
    if (!username) return {loginCode::notThere};
    LoginChange change = given;
    if (isAdministrator(*username)) {
        change.username = administrator;
        change.validFrom = change.validTo = "";
    }
    transaction.execute(
        updateLogin,
        {unlessEmpty(change.username), unlessEmpty(change.password), unlessEmpty(change.name),
         unlessEmpty(change.job), unlessEmpty(change.email), unlessNegative(change.emailNotification),
         unlessMissing(change.validFrom), unlessMissing(change.validTo), loginId});
    return {{}, loginId};
}

SavedLogin addLogin(db::Connection& transaction, const LoginChange& change) {
    if (const auto code = missingIn(change); !code.empty()) return {code};
    lockRegisters(transaction);
    if (namesakeOf(transaction, change.username, 0) > 0) return {loginCode::nameTaken};
    const int notification = change.emailNotification < 0 ? 0 : change.emailNotification;
    transaction.execute(
        insertLogin, {change.username, change.password, change.name, change.job, change.email, notification,
                      unlessMissing(change.validFrom), unlessMissing(change.validTo)});
    const int loginId = namesakeOf(transaction, change.username, 0);
    transaction.execute(copySettings, {loginId});
    return {{}, loginId};
}

LoginDetails readLogin(db::Connection& connection, int loginId) {
    LoginDetails details;
    auto rows = connection.query(selectDetails, {loginId});
    details.loginId = rows.next() ? loginId : -1;
    if (details.loginId == -1) return details;
    details.username = trimmed(rows, "username");
    details.fullname = trimmed(rows, "name");
    details.job = trimmed(rows, "job");
    details.email = trimmed(rows, "email");
    details.emailNotification = static_cast<int>(rows.number("emailNotification"));
    details.validFrom = trimmed(rows, "validFrom");
    details.validTo = trimmed(rows, "validTo");
    return details;
}

}  // namespace torvex
