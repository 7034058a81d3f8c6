// desk: the caller's own second factor, and the step of a login that asks for it.

#include "accounts/SecondFactor.h"

#include <fmt/format.h>
#include <memory>

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
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
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view wrong = "-1";
constexpr std::string_view notBegun = "-2";
constexpr std::string_view isDemanded = "-2";
constexpr std::string_view hasOne = "-3";
constexpr std::string_view hasNone = "-3";

constexpr std::string_view begunKey = "torvex_begun_second_factor";
constexpr std::int64_t longest = 600;
constexpr std::string_view issuer = "Torvex";
constexpr std::size_t stateColumns = 4;

constexpr std::string_view selectState =
    "select (select count(*) from TORVEX_RECOVERY_CODES c where c.loginId = l.loginId) as codesLeft, f.since "
    "from TORVEX_LOGINS l left outer join TORVEX_SECOND_FACTORS f on f.loginId = l.loginId "
    "where l.loginId = ?";

using Outcome = db::Outcome<std::string>;

/// A secret that was told and not confirmed yet: in the memory of the session alone.
struct BegunFactor final : SessionObject {
    BegunFactor(int login, std::string made, std::int64_t moment)
        : loginId(login), secret(std::move(made)), at(moment) {}
    int loginId;
    std::string secret;
    std::int64_t at;
};

std::shared_ptr<const BegunFactor> begunBy(const HostContext& host, const Actor& actor) {
    auto begun = std::dynamic_pointer_cast<const BegunFactor>(host.session.object(begunKey));
    const bool isUsable =
        begun && begun->loginId == actor.loginId && host.clock.unixSeconds() - begun->at <= longest;
    return isUsable ? begun : nullptr;
}

std::string told(const std::vector<std::string>& codes) {
    return fmt::format("{}", fmt::join(codes, " "));
}

Outcome confirm(db::Connection& own, const Actor& actor, const BegunFactor& begun, std::string_view code,
                std::int64_t now) {
    std::string digits(code);
    std::erase(digits, ' ');
    const auto secret = bytesOfBase32(begun.secret);
    const auto step = typedStep(secret.value_or(""), digits, stepAt(now), 0);
    if (!step) return db::refuse(wrong);
    if (!giveSecondFactor(own, actor.loginId, begun.secret, *step, actor.now)) return db::refuse(hasOne);
    return db::commit(told(renewRecoveryCodes(own, actor.loginId)));
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
    const bool demanded = isSecondFactorDemanded(connection(), actor.loginId);
    auto rows = connection().query(selectState, {actor.loginId});
    if (!rows.next()) return {};
    ResultGrid grid(stateColumns);
    grid.add({rows.isNull("since") ? 0 : 1, rows.value("since"), rows.value("codesLeft"), demanded ? 1 : 0});
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getSecondFactor !");
}

std::string desk::beginSecondFactor() try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    if (secondFactorOf(connection(), actor.loginId)) return std::string(hasOne);
    const std::string secret = newSecret();
    host_.session.setObject(begunKey,
                            std::make_shared<BegunFactor>(actor.loginId, secret, host_.clock.unixSeconds()));
    const std::string site = host_.request.serverVariable("http_host");
    return enrolmentAddress(issuer, actor.username + (site.empty() ? "" : " - " + site), secret);
} catch (...) {
    raiseFrom("beginSecondFactor !");
}

std::string desk::confirmSecondFactor(const std::string& code) try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const auto begun = begunBy(host_, actor);
    if (!begun) return std::string(notBegun);
    int factorId = 0;
    const auto outcome =
        db::tryInOwnTransaction(host_, "confirmSecondFactor", status::failed, [&](db::Connection& own) {
            const Outcome confirmed = confirm(own, actor, *begun, code, host_.clock.unixSeconds());
            if (confirmed.isCommitted) factorId = secondFactorOf(own, actor.loginId)->id;
            return confirmed;
        });
    if (!outcome.isCommitted) return outcome.value;
    host_.session.setObject(begunKey, nullptr);
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
            const auto factor = secondFactorOf(own, actor.loginId);
            if (const auto why = obstacle(own, actor, factor); !why.empty()) return db::refuse(why);
            if (!isPassword &&
                takeCode(own, actor.loginId, *factor, proof, host_.clock.unixSeconds()) == TypedCode::Wrong)
                return db::refuse(wrong);
            torvex::dropSecondFactor(own, actor.loginId);
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
            const auto factor = secondFactorOf(own, actor.loginId);
            if (!factor) return db::refuse(hasNone);
            if (!takeTimeCode(own, *factor, code, host_.clock.unixSeconds())) return db::refuse(wrong);
            return db::commit(told(torvex::renewRecoveryCodes(own, actor.loginId)));
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
