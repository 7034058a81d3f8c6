#include "accounts/VisitorLogin.h"

#include <memory>

#include "accounts/SecondFactor.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"

namespace torvex {

namespace {

constexpr std::string_view key = "torvex_pending_visitor";
constexpr std::int64_t longest = 600;
/// Each has three in a million; then the password is to be given again.
constexpr int mostWrongCodes = 5;

struct Pending final : SessionObject {
    Pending(VisitorLogin kept, std::int64_t moment, int wrong)
        : login(std::move(kept)), begun(moment), wrongCodes(wrong) {}
    VisitorLogin login;
    std::int64_t begun;
    int wrongCodes;
};

std::shared_ptr<const Pending> pendingOf(const HostContext& host) {
    auto pending = std::dynamic_pointer_cast<const Pending>(host.session.object(key));
    const bool isUsable = pending && host.clock.unixSeconds() - pending->begun <= longest &&
                          visitorFactors(host) != VisitorFactors::Off;
    return isUsable ? pending : nullptr;
}

void countWrong(HostContext& host, const Pending& pending) {
    host.session.setObject(key,
                           std::make_shared<Pending>(pending.login, pending.begun, pending.wrongCodes + 1));
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
    host.session.setObject(key, std::make_shared<Pending>(login, host.clock.unixSeconds(), 0));
    return false;
}

std::optional<VisitorLogin> pendingVisitor(const HostContext& host) {
    const auto pending = pendingOf(host);
    return pending ? std::optional(pending->login) : std::nullopt;
}

void forgetPendingVisitor(HostContext& host) {
    host.session.setObject(key, nullptr);
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
    if (shown == ShownCode::Wrong && !isLast) countWrong(host, *pending);
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
