#include "cli/BatchLogin.h"

#include <fmt/format.h>

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/Text.h"
#include "platform/db/Link.h"

namespace torvex::cli {

namespace {

struct Login {
    double loginId = 0;
    std::string username;
    std::string password;
    std::string fullname;
};

constexpr std::string_view selectLogin =
    "select loginId, username, password, name from TORVEX_LOGINS where username = ?";

constexpr std::string_view holdRow =
    "update TORVEX_LOGINS set ipAddress = ?, sessionId = ?, currentSite = '', siteLock = '', date = ?, time "
    "= ? "
    "where loginId = ?";

constexpr std::string_view freeOtherRows =
    "update TORVEX_LOGINS set sessionId = '', currentSite = '', siteLock = '' "
    "where sessionId = ? and loginId <> ?";

Login readLogin(db::Connection& connection, const std::string& username) {
    auto rows = connection.query(selectLogin, {text::trim(username)});
    if (!rows.next()) throw Error("there is no login \"" + username + '"');
    return {rows.number("loginId"), rows.text("username"), rows.text("password"), rows.text("name")};
}

void writeRows(db::Connection& connection, HostContext& host, double loginId) {
    const DateTime now = host.clock.now();
    const std::string day = date8(now);
    const std::string time = fmt::format("{:02}:{:02}", now.hour, now.minute);
    const std::string address = host.request.serverVariable("remote_addr");
    db::Transaction transaction(connection);
    connection.execute(holdRow, {text::trim(address), host.session.id(), day, time, loginId});
    connection.execute(freeOtherRows, {host.session.id(), loginId});
    transaction.commit();
}

void writeKeys(HostContext& host, const Login& login) {
    host.session.set("torvex_loginId", login.loginId);
    host.session.set("torvex_username", login.username);
    host.session.set("torvex_password", login.password);
    host.session.set("torvex_fullname", login.fullname);
    host.session.set("torvex_ssl", host.application.get("torvex_ssl"));
}

}  // namespace

void holdLogin(HostContext& host, const std::string& username) {
    const auto connection = db::openOwn(host);
    const Login login = readLogin(*connection, username);
    writeRows(*connection, host, login.loginId);
    writeKeys(host, login);
}

}  // namespace torvex::cli
