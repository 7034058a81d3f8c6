// desk: the caller's own second factor, and the step of a login that asks for it.

#include "accounts/SecondFactor.h"

#include <fmt/format.h>

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
#include "accounts/BegunFactor.h"
#include "accounts/LogIn.h"
#include "accounts/Proof.h"
#include "accounts/TimeCode.h"
#include "authoring/StatusCodes.h"
#include "desk/desk.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/Request.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view wrong = "-1";
constexpr std::string_view notBegun = "-2";
constexpr std::string_view isDemanded = "-2";
constexpr std::string_view hasOne = "-3";
constexpr std::string_view hasNone = "-3";

constexpr std::string_view issuer = "Torvex";
constexpr std::size_t stateColumns = 4;

using Outcome = db::Outcome<std::string>;

std::string told(const std::vector<std::string>& codes) {
    return fmt::format("{}", fmt::join(codes, " "));
}

Outcome confirm(db::Connection& own, const Actor& actor, const std::string& secret, std::string_view code,
                const Clock& clock) {
    std::vector<std::string> codes;
    switch (confirmFactor(own, ofLogin(actor.loginId), secret, code, clock, codes)) {
        case FirstCode::Wrong:
            return db::refuse(wrong);
        case FirstCode::HasFactor:
            return db::refuse(hasOne);
        case FirstCode::Taken:
            break;
    }
    return db::commit(told(codes));
}

/// The trail, after a change of the caller's own factor.
void tell(HostContext& host, const Actor& actor, const std::string& operation, std::string_view action,
          std::string_view what) {
    followUp(host.log, operation, [&] {
        writeActorLine(host, actor, 0, action, fmt::format("Login \"{}\" {}", actor.fullname, what));
    });
}

/// What keeps the factor from being dropped; nothing when it may be.
std::string_view obstacle(db::Connection& own, const Actor& actor,
                          const std::optional<SecondFactor>& factor) {
    if (!factor) return hasNone;
    return isSecondFactorDemanded(own, actor.loginId) ? isDemanded : std::string_view();
}

}  // namespace

Value desk::getSecondFactor() try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return {};
    const bool demanded = isSecondFactorDemanded(connection(), actor.loginId);
    const auto state = factorStateOf(connection(), ofLogin(actor.loginId));
    ResultGrid grid(stateColumns);
    grid.add({state ? 1 : 0, state ? state->since : Value(), state ? state->codesLeft : 0, demanded ? 1 : 0});
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getSecondFactor !");
}

std::string desk::beginSecondFactor() try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    if (secondFactorOf(connection(), ofLogin(actor.loginId))) return std::string(hasOne);
    const std::string secret = beginFactor(host_, ofLogin(actor.loginId));
    const std::string site = host_.request.serverVariable("http_host");
    return enrolmentAddress(issuer, actor.username + (site.empty() ? "" : " - " + site), secret);
} catch (...) {
    raiseFrom("beginSecondFactor !");
}

std::string desk::confirmSecondFactor(const std::string& code) try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string secret = begunSecret(host_, ofLogin(actor.loginId));
    if (secret.empty()) return std::string(notBegun);
    int factorId = 0;
    const auto outcome =
        db::tryInOwnTransaction(host_, "confirmSecondFactor", status::failed, [&](db::Connection& own) {
            const Outcome confirmed = confirm(own, actor, secret, code, host_.clock);
            if (confirmed.isCommitted) factorId = secondFactorOf(own, ofLogin(actor.loginId))->id;
            return confirmed;
        });
    if (!outcome.isCommitted) return outcome.value;
    forgetBegun(host_);
    setProvenFactor(host_.session, factorId);
    tell(host_, actor, "confirmSecondFactor", "save", "has a second factor");
    return outcome.value;
} catch (...) {
    raiseFrom("confirmSecondFactor !");
}

std::string desk::dropSecondFactor(const std::string& username, const std::string& proof) try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    if (!text::equals(text::trim(username), actor.username)) return std::string(wrong);
    const bool isPassword =
        proofOf(connection(), passwordStoreOf(host_), actor.username, text::trim(proof)).has_value();
    const auto outcome = db::tryInOwnTransaction(
        host_, "dropSecondFactor", status::failed, [&](db::Connection& own) -> Outcome {
            const auto factor = secondFactorOf(own, ofLogin(actor.loginId));
            if (const auto why = obstacle(own, actor, factor); !why.empty()) return db::refuse(why);
            if (!isPassword && takeCode(own, ofLogin(actor.loginId), *factor, proof,
                                        host_.clock.unixSeconds()) == TypedCode::Wrong)
                return db::refuse(wrong);
            torvex::dropSecondFactor(own, ofLogin(actor.loginId));
            return db::commit(std::string());
        });
    if (outcome.isCommitted) tell(host_, actor, "dropSecondFactor", "delete", "has no second factor");
    return outcome.value;
} catch (...) {
    raiseFrom("dropSecondFactor !");
}

std::string desk::renewRecoveryCodes(const std::string& username, const std::string& code) try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    if (!text::equals(text::trim(username), actor.username)) return std::string(wrong);
    const auto outcome = db::tryInOwnTransaction(
        host_, "renewRecoveryCodes", status::failed, [&](db::Connection& own) -> Outcome {
            const auto factor = secondFactorOf(own, ofLogin(actor.loginId));
            if (!factor) return db::refuse(hasNone);
            if (!takeTimeCode(own, ofLogin(actor.loginId), *factor, code, host_.clock.unixSeconds()))
                return db::refuse(wrong);
            return db::commit(told(torvex::renewRecoveryCodes(own, ofLogin(actor.loginId))));
        });
    if (outcome.isCommitted) tell(host_, actor, "renewRecoveryCodes", "save", "has new recovery codes");
    return outcome.value;
} catch (...) {
    raiseFrom("renewRecoveryCodes !");
}

int desk::proveSecond(const std::string& username, const std::string& code, bool takeOver) try {
    const OtherHolder other = takeOver ? OtherHolder::Loses : OtherHolder::Keeps;
    return static_cast<int>(showCode(host_, connection(), username, code, other));
} catch (...) {
    raiseFrom("proveSecond !");
}

}  // namespace torvex
