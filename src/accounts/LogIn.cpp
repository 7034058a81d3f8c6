#include "accounts/LogIn.h"

#include <optional>

#include "accounts/AccessFilter.h"
#include "accounts/DoorLog.h"
#include "accounts/LoginSettings.h"
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
        return proof ? takeLogin(host, *proof, visit.address, visit.other, author) : LoginCode::Unknown;
    };
    const auto proof = proofOf(connection, passwordStoreOf(host), visit.username, visit.password);
    const LoginCode code = attempt(proof);
    // Another session of the same author may just have put the hash in place of what was proved.
    const bool overtaken = code == LoginCode::Unknown && proof && proof->renewal;
    if (!overtaken || !hasStrongForm(connection, visit.username)) return code;
    return attempt(proofOf(connection, passwordStoreOf(host), visit.username, visit.password));
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
    if (code != LoginCode::LoggedIn) {
        auditDenial(host);
        logFailedLogin(host, LoginAttempt::Kind::Author, username, reasonOf(code));
        return code;
    }
    storeAuthor(host, author);
    takeOverSettings(host, connection, author.loginId);
    host.session.renewToken();
    auditLogin(host, author, address);
    return code;
}

LoginCode confirmLogin(HostContext& host, Author& author) {
    std::string address = callersAddress(host);
    LoginCode code = LoginCode::AddressRefused;
    if (isLetIn(host, address))
        code = takeLogin(host, {author.username, author.password, {}}, address, OtherHolder::Keeps, author);
    if (code != LoginCode::LoggedIn) {
        auditDenial(host);
        return code;
    }
    storeAuthor(host, author);
    auditLogin(host, author, address);
    return code;
}

}  // namespace torvex
