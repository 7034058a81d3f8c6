// desk: the caller's own password, and whether a password is easily guessed.

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
#include "accounts/CommonPasswords.h"
#include "accounts/Proof.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/OperatorLog.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

namespace password {
constexpr int changed = 0;
constexpr int wrong = 1;
constexpr int missing = 2;
constexpr int common = 3;
constexpr int notLoggedIn = -10;
}  // namespace password

namespace judgement {
constexpr int fine = 0;
constexpr int common = 1;
}  // namespace judgement

constexpr std::string_view selectPassword = "select password from TORVEX_LOGINS where loginId = ?";

/// As the row holds it from now on, for the session that is to go on.
std::string writePassword(db::Connection& own, PasswordStore store, const Actor& actor,
                          std::string_view typed) {
    givePassword(own, store, actor.username, typed);
    auto rows = own.query(selectPassword, {actor.loginId});
    return rows.next() ? rows.text("password") : std::string();
}

}  // namespace

int desk::changePassword(const std::string& username, const std::string& password,
                         const std::string& newPassword) try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return password::notLoggedIn;
    if (text::trim(newPassword).empty()) return password::missing;
    const PasswordStore store = passwordStoreOf(host_);
    const bool isOwn = text::equals(text::trim(username), actor.username);
    if (!isOwn || !proofOf(connection(), store, actor.username, text::trim(password))) return password::wrong;
    if (isCommonPassword(newPassword)) return password::common;
    const auto outcome = db::inOwnTransaction(host_, [&](db::Connection& own) {
        return db::commit(writePassword(own, store, actor, text::trim(newPassword)));
    });
    host_.session.set(sessionKey::authorPassword, outcome.value);
    followUp(host_.log, "changePassword", [&] {
        writeActorLine(host_, actor, 0, "save", "Login \"" + actor.fullname + "\" has a new password");
    });
    return password::changed;
} catch (...) {
    raiseFrom("changePassword !");
}

int desk::judgePassword(const std::string& password) try {
    return isCommonPassword(password) ? judgement::common : judgement::fine;
} catch (...) {
    raiseFrom("judgePassword !");
}

}  // namespace torvex
