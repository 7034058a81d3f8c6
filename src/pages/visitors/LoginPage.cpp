#include "accounts/DoorLog.h"
#include "accounts/LoginAttempt.h"
#include "accounts/VisitorLogin.h"
#include "delivery/cServer.h"
#include "pages/Pages.h"
#include "pages/Posted.h"
#include "pages/SameSite.h"
#include "pages/visitors/MessagePage.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr double noTrials = 0;

void answerTooMany(Response& response, std::chrono::seconds wait) {
    response.addHeader("Retry-After", std::to_string(wait.count()));
    answerMessage(response, 429,
                  {.title = "Too many attempts",
                   .explanation = "There were too many attempts to log in in a short time.",
                   .advice = "Wait " + std::to_string(wait.count()) + " seconds, then go back and try again.",
                   .reference = {}});
}

/// An address with a password in it would stand in logs and histories.
void answerUnposted(Response& response) {
    response.addHeader("Allow", "POST");
    answerMessage(response, 405,
                  {.title = "This address only takes login forms",
                   .explanation = "Nobody was logged in.",
                   .advice = "Go to a page with a login form and log in there.",
                   .reference = {}});
}

void answerForeign(Response& response) {
    answerMessage(response, 403,
                  {.title = "This login came from another site",
                   .explanation = "For your safety you can only log in from this site's pages.",
                   .advice = "Go to the home page and log in there.",
                   .reference = {}});
}

void reportFailure(HostContext& host, const LoginAttempt& attempt, std::string_view username) {
    logFailedLogin(host, LoginAttempt::Kind::Visitor, username);
    if (const auto wait = attempt.waitAfterwards(); wait.count() > 0)
        logLockOut(host, LoginAttempt::Kind::Visitor, username, wait);
}

}  // namespace

void loginPage(HostContext& host, GuessThrottle& throttle) {
    if (!isPosted(host)) return answerUnposted(host.response);
    if (!comesFromOwnPages(host)) return answerForeign(host.response);
    const std::string username = text::lowerTrim(host.request.item("torvex_username"));
    LoginAttempt attempt(throttle, LoginAttempt::Kind::Visitor, host.request.serverVariable("remote_addr"),
                         username);
    if (const auto wait = attempt.begin(); wait.count() > 0) {
        logEarlyTry(host);
        return answerTooMany(host.response, wait);
    }
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    cServer server(host);
    server.connect(*connection);
    const double trialsBefore = host.session.number(sessionKey::loginTrials);
    const std::string target = server.getLoginURL();
    const double trials = host.session.number(sessionKey::loginTrials);
    if (trials > trialsBefore) {
        reportFailure(host, attempt, username);
    } else if (trials == noTrials && !username.empty() && !pendingVisitor(host) &&
               host.session.text(sessionKey::visitorName) == username) {
        // Somebody else who is logged in may post a name without trying to log in; that forgives nothing. Nor does a
        // password whose second factor is still to be shown.
        attempt.succeeded();
    } else {
        attempt.takeBack();
    }
    host.response.redirect(target.empty() ? "/" : target);
}

}  // namespace torvex
