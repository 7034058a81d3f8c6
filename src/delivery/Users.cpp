// cServer: the visitors who have a name.

#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
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

std::string orSession(const HostContext& host, const std::string& given, std::string_view key) {
    return given.empty() ? host.session.text(key) : given;
}

PageId groupPage(HostContext& host, db::Connection& connection, std::string_view statement,
                 const std::string& username, const std::string& password) {
    if (!host.application.isTrue("torvex_extranet")) return -1;
    const std::string name = orSession(host, username, "tvx_username");
    const std::string word = orSession(host, password, "tvx_password");
    auto rows = connection.query(statement, {name, word});
    return rows.next() ? rows.number("page", -1) : -1;
}

}  // namespace

bool cServer::isUser(const std::string& username, const std::string& password) try {
    return connection().query(selectUser, {username, password}).next();
} catch (...) {
    raiseFrom("isUser !");
}

double cServer::getUserId(const std::string& username, const std::string& password) try {
    const std::string name = orSession(host_, username, "tvx_username");
    const std::string word = orSession(host_, password, "tvx_password");
    auto rows = connection().query(selectUser, {name, word});
    return rows.next() ? rows.number("userId") : 0;
} catch (...) {
    raiseFrom("getUserId !");
}

std::string cServer::getUserPassword(const std::string& username) try {
    auto rows = connection().query(selectPassword, {orSession(host_, username, "tvx_username")});
    return rows.next() ? rows.text("password") : std::string();
} catch (...) {
    raiseFrom("getUserPassword !");
}

PageId cServer::getEntryPage(const std::string& username, const std::string& password) try {
    return groupPage(host_, connection(), selectEntryPage, username, password);
} catch (...) {
    raiseFrom("getEntryPage !");
}

PageId cServer::getExitPage(const std::string& username, const std::string& password) try {
    return groupPage(host_, connection(), selectExitPage, username, password);
} catch (...) {
    raiseFrom("getExitPage !");
}

}  // namespace torvex
