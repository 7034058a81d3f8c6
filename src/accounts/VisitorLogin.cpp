#include "accounts/VisitorLogin.h"

#include "accounts/BriefMemory.h"
#include "accounts/SecondFactor.h"
#include "platform/Keys.h"
#include "platform/db/OwnTransaction.h"

namespace torvex {

namespace {

/// Each has three in a million; then the password is to be given again.
constexpr int mostWrongCodes = 5;

struct Pending {
    VisitorLogin login;
    int wrongCodes = 0;
};
constexpr BriefMemory<Pending> pendingLogins{"torvex_pending_visitor", std::chrono::minutes(10)};

std::shared_ptr<const Pending> pendingOf(const HostContext& host) {
    return visitorFactors(host) == VisitorFactors::Off ? nullptr : pendingLogins.get(host);
}

/// The session is the visitor's from now on.
void enter(HostContext& host, const VisitorLogin& login) {
    Session& session = host.session;
    session.set(sessionKey::visitorName, login.visitor.username);
    session.set(sessionKey::visitorPassword, login.visitor.stored);
    session.set(sessionKey::visitorTarget, login.target);
    session.set(sessionKey::loginTrials, 0);
    session.renewToken();
    forgetPendingVisitor(host);
}

void enterWithFactor(HostContext& host, const VisitorLogin& login) {
    enter(host, login);
    setFactorShown(host);
}

bool mustWait(const HostContext& host, db::Connection& connection, int userId) {
    const VisitorFactors factors = visitorFactors(host);
    if (factors == VisitorFactors::Off) return false;
    return factors == VisitorFactors::Demanded || secondFactorOf(connection, ofVisitor(userId));
}

}  // namespace

bool admitVisitor(HostContext& host, db::Connection& connection, const VisitorLogin& login) {
    if (!mustWait(host, connection, login.visitor.userId)) {
        enter(host, login);
        return true;
    }
    pendingLogins.keep(host, {login});
    return false;
}

std::optional<VisitorLogin> pendingVisitor(const HostContext& host) {
    const auto pending = pendingOf(host);
    return pending ? std::optional(pending->login) : std::nullopt;
}

void forgetPendingVisitor(HostContext& host) {
    pendingLogins.forget(host);
}

ShownCode showVisitorCode(HostContext& host, std::string_view typed) {
    const auto pending = pendingOf(host);
    if (!pending) return ShownCode::ProveAgain;
    const VisitorIdentity& visitor = pending->login.visitor;
    const auto show = [&](db::Connection& own) {
        const FactorOwner owner = ofVisitor(visitor.userId);
        const auto factor = secondFactorOf(own, owner);
        if (!factor || !isStill(own, visitor)) return db::refuse(ShownCode::ProveAgain);
        const TypedCode code = takeCode(own, owner, *factor, typed, host.clock.unixSeconds());
        return code == TypedCode::Wrong ? db::refuse(ShownCode::Wrong) : db::commit(ShownCode::LetIn);
    };
    const ShownCode shown = db::inOwnTransaction(host, show).value;
    if (shown == ShownCode::LetIn) enterWithFactor(host, pending->login);
    const bool isLast = shown == ShownCode::Wrong && pending->wrongCodes + 1 >= mostWrongCodes;
    if (shown == ShownCode::Wrong && !isLast)
        pendingLogins.change(host, {pending->login, pending->wrongCodes + 1});
    if (shown == ShownCode::ProveAgain || isLast) forgetPendingVisitor(host);
    return isLast ? ShownCode::ProveAgain : shown;
}

FactorChange enrolPendingVisitor(HostContext& host, std::string_view code, std::vector<std::string>& codes) {
    const auto pending = pendingOf(host);
    if (!pending) return FactorChange::Impossible;
    const FactorChange change = enrolVisitor(host, pending->login.visitor, code, codes);
    if (change == FactorChange::Done) enterWithFactor(host, pending->login);
    return change;
}

}  // namespace torvex
