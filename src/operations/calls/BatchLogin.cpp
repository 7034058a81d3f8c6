#include "operations/calls/BatchLogin.h"

#include "accounts/LoginHold.h"
#include "accounts/LoginSettings.h"
#include "accounts/SecondFactor.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

constexpr std::string_view selectLogin =
    "select loginId, username, password, name from TORVEX_LOGINS where username = ?";

Author readAuthor(db::Connection& connection, const std::string& username) {
    auto rows = connection.query(selectLogin, {text::trim(username)});
    if (!rows.next()) throw Error("there is no login \"" + username + '"');
    return {static_cast<int>(rows.number("loginId")), rows.text("username"), rows.text("password"),
            rows.text("name")};
}

}  // namespace

void holdLogin(HostContext& host, const std::string& username) {
    const auto connection = db::openOwn(host);
    const Author author = readAuthor(*connection, username);
    db::Transaction transaction(*connection);
    holdRow(*connection, host, author.loginId, text::trim(host.request.serverVariable("remote_addr")));
    transaction.commit();
    storeAuthor(host, author);
    const auto factor = secondFactorOf(*connection, ofLogin(author.loginId));
    setProvenFactor(host.session, factor ? factor->id : 0);
    takeOverSettings(host, *connection, author.loginId);
}

}  // namespace torvex::operations
