// cManager: the door of the authoring side.

#include "accounts/Logins.h"

#include "accounts/Actor.h"
#include "accounts/DoorLog.h"
#include "accounts/LogIn.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/OperatorLog.h"
#include "platform/Session.h"
#include "platform/text/LogText.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view freeOwnRow =
    "update TORVEX_LOGINS set sessionId = '', currentSite = '', siteLock = '' "
    "where username = ? and sessionId = ?";

constexpr std::string_view freeRow =
    "update TORVEX_LOGINS set sessionId = '', currentSite = '', siteLock = '' where loginId = ?";

}  // namespace

int cManager::login(const std::string& username, const std::string& password) try {
    loadSessionState();
    const bool typed = !username.empty() || !password.empty();
    return static_cast<int>(typed
                                ? logIn(host_, connection(), username, password, OtherHolder::Keeps, author_)
                                : confirmLogin(host_, author_));
} catch (...) {
    raiseFrom("login !");
}

void cManager::logout() try {
    const std::string username = host_.session.text(sessionKey::authorName);
    if (username.empty()) {
        auditDenial(host_);
    } else {
        // A session that lost the login to another one doesn't log that one out.
        db::openOwn(host_)->execute(freeOwnRow, {username, host_.session.id()});
        addAuditTrail("", "", "logout", author_.fullname + " - IP " + callersAddress(host_));
        logLogout(host_, LoginAttempt::Kind::Author, username);
    }
    host_.session.abandon();
} catch (...) {
    raiseFrom("logout !");
}

void cManager::endLogin(int loginId) try {
    if (!author_.isLoggedIn()) return;
    const std::string subject = getLoginName(loginId);
    db::openOwn(host_)->execute(freeRow, {loginId});
    const std::string actor = getLoginName(author_.loginId);
    addAuditTrail("", "", "forced logout", subject + " logged out by " + actor, loginId);
    addAuditTrail("", "", "forced logout", "Forced end of session of " + subject);
    host_.log.note("forced logout of \"" + forLog(subject) + "\" by \"" + forLog(actor) + '"');
} catch (...) {
    raiseFrom("endLogin !");
}

bool cManager::getLoginState(int loginId) try {
    if (loginId != 0) return isOnline(connection(), loginId);
    const Actor session = actorOf(host_);
    return session.isAdministrator() || ownsItsLogin(connection(), session);
} catch (...) {
    // Every page asks this first, so it never fails: an unanswered question means "not logged in".
    return false;
}

}  // namespace torvex
