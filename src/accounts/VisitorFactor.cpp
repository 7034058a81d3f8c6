#include "accounts/VisitorFactor.h"

#include <memory>

#include "accounts/BegunFactor.h"
#include "accounts/VisitorProof.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// Apart from the values of a session, which settings and operations can name.
constexpr std::string_view shownKey = "torvex_visitor_factor";

struct Shown final : SessionObject {
    explicit Shown(std::string name) : username(std::move(name)) {}
    std::string username;
};

constexpr std::string_view selectUser =
    "select userId from TORVEX_USERS where userId = ? and username = ? and password = ?";

using Outcome = db::Outcome<FactorChange>;

}  // namespace

VisitorFactors visitorFactors(const HostContext& host) {
    const std::string setting = text::lowerTrim(host.application.text(visitorFactorSetting));
    if (setting.empty() || setting == "off") return VisitorFactors::Off;
    return setting == "offered" ? VisitorFactors::Offered : VisitorFactors::Demanded;
}

bool countsAsLoggedIn(const HostContext& host) {
    if (visitorFactors(host) != VisitorFactors::Demanded) return true;
    const auto shown = std::dynamic_pointer_cast<const Shown>(host.session.object(shownKey));
    return shown && text::equals(shown->username, host.session.text(sessionKey::visitorName));
}

void setFactorShown(HostContext& host) {
    host.session.setObject(shownKey, std::make_shared<Shown>(host.session.text(sessionKey::visitorName)));
}

bool isStill(db::Connection& connection, const VisitorIdentity& visitor) {
    return connection.query(selectUser, {visitor.userId, visitor.username, visitor.stored}).next();
}

FactorChange enrolVisitor(HostContext& host, const VisitorIdentity& visitor, std::string_view code,
                          std::vector<std::string>& codes) {
    const FactorOwner owner = ofVisitor(visitor.userId);
    const std::string secret = begunSecret(host, owner);
    if (secret.empty()) return FactorChange::Impossible;
    const auto outcome = db::inOwnTransaction(host, [&](db::Connection& own) -> Outcome {
        if (!isStill(own, visitor)) return db::refuse(FactorChange::Impossible);
        switch (confirmFactor(own, owner, secret, code, host.clock, codes)) {
            case FirstCode::Wrong:
                return db::refuse(FactorChange::Wrong);
            case FirstCode::HasFactor:
                return db::refuse(FactorChange::Impossible);
            case FirstCode::Taken:
                break;
        }
        return db::commit(FactorChange::Done);
    });
    if (outcome.isCommitted) forgetBegun(host);
    return outcome.value;
}

FactorChange renewVisitorCodes(HostContext& host, const VisitorIdentity& visitor, std::string_view code,
                               std::vector<std::string>& codes) {
    const FactorOwner owner = ofVisitor(visitor.userId);
    const auto renew = [&](db::Connection& own) -> Outcome {
        const auto factor = secondFactorOf(own, owner);
        if (!factor || !isStill(own, visitor)) return db::refuse(FactorChange::Impossible);
        if (!takeTimeCode(own, owner, *factor, code, host.clock.unixSeconds()))
            return db::refuse(FactorChange::Wrong);
        codes = renewRecoveryCodes(own, owner);
        return db::commit(FactorChange::Done);
    };
    return db::inOwnTransaction(host, renew).value;
}

FactorChange dropVisitorFactor(HostContext& host, const VisitorIdentity& visitor, std::string_view proof) {
    if (visitorFactors(host) == VisitorFactors::Demanded) return FactorChange::IsDemanded;
    const FactorOwner owner = ofVisitor(visitor.userId);
    const auto password =
        proofOfVisitor(*db::openOwn(host), passwordStoreOf(host), visitor.username, text::lowerTrim(proof));
    const bool isPassword = password && static_cast<int>(password->userId) == visitor.userId;
    const auto drop = [&](db::Connection& own) -> Outcome {
        const auto factor = secondFactorOf(own, owner);
        if (!factor || !isStill(own, visitor)) return db::refuse(FactorChange::Impossible);
        if (!isPassword && takeCode(own, owner, *factor, proof, host.clock.unixSeconds()) == TypedCode::Wrong)
            return db::refuse(FactorChange::Wrong);
        dropSecondFactor(own, owner);
        return db::commit(FactorChange::Done);
    };
    const FactorChange change = db::inOwnTransaction(host, drop).value;
    if (change == FactorChange::Done) host.session.setObject(shownKey, nullptr);
    return change;
}

}  // namespace torvex
