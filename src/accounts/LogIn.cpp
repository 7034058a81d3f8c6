#include "accounts/LogIn.h"

#include <optional>

#include "accounts/AccessFilter.h"
#include "accounts/DoorLog.h"
#include "accounts/LoginSettings.h"
#include "accounts/PendingLogin.h"
#include "accounts/SecondFactor.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/AuditTrail.h"

namespace torvex {

namespace {

std::string trimmedSetting(const HostContext& host, std::string_view name) {
    return std::string(text::trim(host.application.text(name)));
}

void audit(HostContext& host, const Author& author, std::string_view action, const std::string& description) {
    AuditLine line;
    line.loginId = author.loginId;
    line.loginName = author.fullname;
    line.action = action;
    line.description = description;
    asLevel("addAuditTrail !", [&] { writeAuditLine(host, line); });
}

void auditLogin(HostContext& host, const Author& author, const std::string& address) {
    audit(host, author, "login", author.fullname + " - IP " + address);
}

bool isLetIn(const HostContext& host, std::string& address) {
    const std::string filter = trimmedSetting(host, applicationKey::accessFilter);
    const bool isExact = host.application.isTrue(applicationKey::accessFilterExact);
    return isExact ? passesExactAccessFilter(filter, address) : passesAccessFilter(filter, address);
}

std::string_view reasonOf(LoginCode code) {
    if (code == LoginCode::AddressRefused) return "the address filter refuses it";
    if (code == LoginCode::HeldElsewhere) return "the login is held from another address";
    if (code == LoginCode::WrongCode) return "wrong code";
    return "wrong name or password";
}

/// Who is at the door, and with what.
struct Visit {
    const std::string& username;
    std::string_view password;
    std::string_view address;
    OtherHolder other;
};

LoginCode prove(HostContext& host, db::Connection& connection, const Visit& visit, Author& author) {
    const auto attempt = [&](const std::optional<Proof>& proof) {
        if (!proof) return LoginCode::Unknown;
        SecondProof none;
        const LoginCode code = takeLogin(host, *proof, none, visit.address, visit.other, author);
        if (code == LoginCode::NeedsCode) pendingLogins.keep(host, {*proof, visit.other});
        return code;
    };
    const auto proof = proofOf(connection, passwordStoreOf(host), visit.username, visit.password);
    const LoginCode code = attempt(proof);
    // Another session of the same author may just have put the hash in place of what was proved.
    const bool overtaken = code == LoginCode::Unknown && proof && proof->renewal;
    if (!overtaken || !hasStrongForm(connection, visit.username)) return code;
    return attempt(proofOf(connection, passwordStoreOf(host), visit.username, visit.password));
}

LoginCode refuse(HostContext& host, LoginCode code, const std::string& username) {
    auditDenial(host);
    logFailedLogin(host, LoginAttempt::Kind::Author, username, reasonOf(code));
    return code;
}

void enter(HostContext& host, db::Connection& connection, const Author& author, const std::string& address,
           int factorId) {
    pendingLogins.forget(host);
    storeAuthor(host, author);
    setProvenFactor(host.session, factorId);
    takeOverSettings(host, connection, author.loginId);
    host.session.renewToken();
    auditLogin(host, author, address);
}

/// The step is taken for the login that was proved, whatever name is given with the code.
LoginCode showSecond(HostContext& host, PendingLogin pending, SecondProof& second, std::string_view address,
                     Author& author) {
    second.factorId = pending.factorId;
    const LoginCode code = takeLogin(host, pending.proof, second, address, pending.other, author);
    if (code == LoginCode::HeldElsewhere) {
        pending.factorId = second.factorId;
        pendingLogins.change(host, std::move(pending));
    }
    if (code == LoginCode::Unknown) pendingLogins.forget(host);
    return code;
}

}  // namespace

std::string callersAddress(const HostContext& host) {
    return std::string(text::trim(host.request.serverVariable("remote_addr")));
}

void auditDenial(HostContext& host) {
    audit(host, {}, "Access denied", "Unauthorized access - IP " + callersAddress(host));
}

LoginCode logIn(HostContext& host, db::Connection& connection, const std::string& username,
                const std::string& password, OtherHolder other, Author& author) {
    std::string address = callersAddress(host);
    const std::string name = text::lowerTrim(username);
    LoginCode code = LoginCode::AddressRefused;
    if (isLetIn(host, address))
        code = prove(host, connection, {name, text::trim(password), address, other}, author);
    if (code == LoginCode::NeedsCode) return code;
    if (code != LoginCode::LoggedIn) return refuse(host, code, username);
    enter(host, connection, author, address, 0);
    return code;
}

LoginCode showCode(HostContext& host, db::Connection& connection, const std::string& username,
                   const std::string& code, OtherHolder other) {
    std::string address = callersAddress(host);
    if (!isLetIn(host, address)) return refuse(host, LoginCode::AddressRefused, username);
    const auto kept = pendingLogins.get(host);
    if (!kept || text::lowerTrim(username) != text::lowerTrim(kept->proof.username))
        return refuse(host, LoginCode::Unknown, username);
    PendingLogin pending = *kept;
    if (other == OtherHolder::Loses) pending.other = other;
    SecondProof second{std::string(text::trim(code))};
    Author author;
    LoginCode shown = showSecond(host, std::move(pending), second, address, author);
    if (shown == LoginCode::NeedsCode) shown = LoginCode::WrongCode;
    if (shown != LoginCode::LoggedIn) return refuse(host, shown, username);
    enter(host, connection, author, address, second.factorId);
    if (second.isOfPaper) audit(host, author, "login", author.fullname + " used a recovery code");
    return shown;
}

LoginCode confirmLogin(HostContext& host, Author& author) {
    std::string address = callersAddress(host);
    LoginCode code = LoginCode::AddressRefused;
    const Proof proof{author.username, author.password, {}};
    SecondProof second{{}, provenFactor(host.session)};
    if (isLetIn(host, address)) code = takeLogin(host, proof, second, address, OtherHolder::Keeps, author);
    // The session is older than the factor.
    if (code == LoginCode::NeedsCode) {
        pendingLogins.keep(host, {proof, OtherHolder::Keeps});
        return code;
    }
    if (code != LoginCode::LoggedIn) {
        auditDenial(host);
        return code;
    }
    storeAuthor(host, author);
    auditLogin(host, author, address);
    return code;
}

}  // namespace torvex
