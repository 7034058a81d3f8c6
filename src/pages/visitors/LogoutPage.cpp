#include "accounts/DoorLog.h"
#include "accounts/VisitorLogin.h"
#include "delivery/cServer.h"
#include "pages/Pages.h"
#include "pages/SameSite.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"

namespace torvex {

void logoutPage(HostContext& host) {
    if (!comesFromOwnPages(host)) return host.response.redirect("/");
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    cServer server(host);
    server.connect(*connection);
    const std::string username = host.session.text(sessionKey::visitorName);
    const std::string target = server.getLogoutURL();
    if (!username.empty() && host.session.text(sessionKey::visitorName).empty())
        logLogout(host, LoginAttempt::Kind::Visitor, username);
    forgetPendingVisitor(host);
    host.session.renewToken();
    host.response.redirect(target.empty() ? "/" : target);
}

}  // namespace torvex
