// cManager: the door of the authoring side.

#include "accounts/Logins.h"

#include <optional>

#include "accounts/AccessFilter.h"
#include "accounts/Actor.h"
#include "accounts/DoorLog.h"
#include "accounts/LoginHold.h"
#include "accounts/LoginSettings.h"
#include "authoring/cManager.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/OperatorLog.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/LogText.h"
#include "platform/text/Text.h"
#include "records/AuditTrail.h"

namespace torvex {

namespace {

constexpr std::string_view freeOwnRow =
    "update TORVEX_LOGINS set sessionId = '', currentSite = '', siteLock = '' "
    "where username = ? and sessionId = ?";

constexpr std::string_view freeRow =
    "update TORVEX_LOGINS set sessionId = '', currentSite = '', siteLock = '' where loginId = ?";

std::string callersAddress(const HostContext& host) {
    return std::string(text::trim(host.request.serverVariable("remote_addr")));
}

std::string trimmedSetting(const HostContext& host, std::string_view name) {
    return std::string(text::trim(host.application.text(name)));
}

void auditDenial(cManager& manager, const HostContext& host) {
    manager.addAuditTrail("", "", "Access denied", "Unauthorized access - IP " + callersAddress(host),
                          nobodysLine);
}

bool isLetIn(const HostContext& host, std::string& address) {
    const std::string filter = trimmedSetting(host, applicationKey::accessFilter);
    const bool isExact = host.application.isTrue(applicationKey::accessFilterExact);
    return isExact ? passesExactAccessFilter(filter, address) : passesAccessFilter(filter, address);
}

std::string_view reasonOf(LoginCode code) {
    if (code == LoginCode::AddressRefused) return "the address filter refuses it";
    if (code == LoginCode::HeldElsewhere) return "the login is held from another address";
    return "wrong name or password";
}

LoginCode enter(HostContext& host, db::Connection& connection, const std::string& username,
                std::string_view password, std::string_view address, Author& author) {
    const auto attempt = [&](const std::optional<Proof>& proof) {
        return proof ? takeLogin(host, *proof, address, author) : LoginCode::Unknown;
    };
    const auto proof = proofOf(connection, passwordStoreOf(host), username, password);
    const LoginCode code = attempt(proof);
    // Another session of the same author may just have put the hash in place of what was proved.
    const bool overtaken = code == LoginCode::Unknown && proof && proof->renewal;
    if (!overtaken || !hasStrongForm(connection, username)) return code;
    return attempt(proofOf(connection, passwordStoreOf(host), username, password));
}

}  // namespace

int cManager::login(const std::string& username, const std::string& password) try {
    loadSessionState();
    const bool typed = !username.empty() || !password.empty();
    std::string address = callersAddress(host_);
    LoginCode code = LoginCode::AddressRefused;
    if (isLetIn(host_, address)) {
        // What the session holds was proved when it logged in; it need only be what the row still has.
        code = typed ? enter(host_, connection(), text::lowerTrim(username), text::trim(password), address,
                             author_)
                     : takeLogin(host_, {author_.username, author_.password, {}}, address, author_);
    }
    if (code != LoginCode::LoggedIn) {
        auditDenial(*this, host_);
        if (typed) logFailedLogin(host_, LoginAttempt::Kind::Author, username, reasonOf(code));
        return static_cast<int>(code);
    }
    storeAuthor(host_, author_);
    if (typed) {
        takeOverSettings(host_, connection(), author_.loginId);
        host_.session.renewToken();
    }
    addAuditTrail("", "", "login", author_.fullname + " - IP " + address);
    return static_cast<int>(code);
} catch (...) {
    raiseFrom("login !");
}

void cManager::logout() try {
    const std::string username = host_.session.text(sessionKey::authorName);
    if (username.empty()) {
        auditDenial(*this, host_);
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
