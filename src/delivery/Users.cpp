// cServer: the visitors who have a name.

#include "delivery/Users.h"

#include "accounts/StrongPassword.h"
#include "accounts/VisitorProof.h"
#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectUser = "select userId from TORVEX_USERS where username = ? and password = ?";
constexpr std::string_view selectPassword = "select password from TORVEX_USERS where username = ?";

constexpr std::string_view selectEntryPage =
    "select c.entryPage as page from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on b.userId = a.userId "
    "inner join TORVEX_USERGROUPS c on c.groupId = b.groupId "
    "where a.username = ? and a.password = ? and c.entryPage > 0 order by b.groupId";
constexpr std::string_view selectExitPage =
    "select c.exitPage as page from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on b.userId = a.userId "
    "inner join TORVEX_USERGROUPS c on c.groupId = b.groupId "
    "where a.username = ? and a.password = ? and c.exitPage > 0 order by b.groupId";

/// What was left out is the session's.
Visitor orOfSession(HostContext& host, db::Connection& connection, const std::string& username,
                    const std::string& password) {
    Visitor user = visitorOf(host);
    if (!username.empty()) user.username = username;
    if (!password.empty()) user.password = password;
    return asStored(host, connection, user);
}

PageId groupPage(HostContext& host, db::Connection& connection, std::string_view statement,
                 const Visitor& user) {
    if (!hasExtranet(host)) return -1;
    auto rows = connection.query(statement, {user.username, user.password});
    return rows.next() ? rows.number("page", -1) : -1;
}

}  // namespace

Visitor asStored(const HostContext& host, db::Connection& connection, const Visitor& user) {
    // The session's is what the row holds already.
    if (isStrongMark(user.password) || user.password == host.session.text(sessionKey::visitorPassword))
        return user;
    return {user.username, markFor(connection, user.username, user.password).value_or(user.password)};
}

double userIdOf(db::Connection& connection, const Visitor& user) {
    auto rows = connection.query(selectUser, {user.username, user.password});
    return rows.next() ? rows.number("userId") : 0;
}

std::string passwordOf(db::Connection& connection, const std::string& username) {
    auto rows = connection.query(selectPassword, {username});
    return rows.next() ? rows.text("password") : std::string();
}

PageId entryPageOf(HostContext& host, db::Connection& connection, const Visitor& user) {
    return groupPage(host, connection, selectEntryPage, user);
}

PageId exitPageOf(HostContext& host, db::Connection& connection, const Visitor& user) {
    return groupPage(host, connection, selectExitPage, user);
}

bool cServer::isUser(const std::string& username, const std::string& password) try {
    return userIdOf(connection(), asStored(host_, connection(), {username, password})) != 0;
} catch (...) {
    raiseFrom("isUser !");
}

double cServer::getUserId(const std::string& username, const std::string& password) try {
    return userIdOf(connection(), orOfSession(host_, connection(), username, password));
} catch (...) {
    raiseFrom("getUserId !");
}

std::string cServer::getUserPassword(const std::string& username) try {
    return passwordOf(connection(), orOfSession(host_, connection(), username, "").username);
} catch (...) {
    raiseFrom("getUserPassword !");
}

PageId cServer::getEntryPage(const std::string& username, const std::string& password) try {
    return entryPageOf(host_, connection(), orOfSession(host_, connection(), username, password));
} catch (...) {
    raiseFrom("getEntryPage !");
}

PageId cServer::getExitPage(const std::string& username, const std::string& password) try {
    return exitPageOf(host_, connection(), orOfSession(host_, connection(), username, password));
} catch (...) {
    raiseFrom("getExitPage !");
}

}  // namespace torvex
