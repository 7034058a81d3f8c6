#include "accounts/Logins.h"

#include "accounts/Actor.h"
#include "accounts/ProgramTokens.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectLoginId = "select loginId from TORVEX_LOGINS where username = ?";
constexpr std::string_view selectName = "select name from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view selectSession = "select sessionId from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view selectSessionByName =
    "select loginId, sessionId, kind from TORVEX_LOGINS where username = ?";

}  // namespace

int loginIdOf(db::Connection& connection, std::string_view username) {
    auto rows = connection.query(selectLoginId, {text::trim(username)});
    return rows.next() ? static_cast<int>(rows.number("loginId")) : -1;
}

std::string fullnameOf(db::Connection& connection, int loginId) {
    auto rows = connection.query(selectName, {loginId});
    return std::string(rows.next() ? text::trim(rows.view("name")) : std::string_view());
}

bool isOnline(db::Connection& connection, int loginId) noexcept try {
    auto rows = connection.query(selectSession, {loginId});
    return rows.next() && !text::trim(rows.text("sessionId")).empty();
} catch (...) {
    return false;
}

bool ownsItsLogin(db::Connection& connection, const Actor& actor) noexcept try {
    if (actor.isAdministrator()) return true;
    if (actor.username.empty()) return false;
    auto rows = connection.query(selectSessionByName, {actor.username});
    if (!rows.next()) return false;
    if (text::equals(text::trim(rows.text("kind")), programKind))
        return actor.sessionId == programSession(static_cast<int>(rows.number("loginId")));
    return text::equals(rows.text("sessionId"), actor.sessionId);
} catch (...) {
    return false;
}

}  // namespace torvex
