// desk: the tokens by which programs call.

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
#include "accounts/Logins.h"
#include "accounts/ProgramTokens.h"
#include "authoring/StatusCodes.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view notThere = "-1";
constexpr std::string_view isTheAdministrators = "-2";
constexpr std::string_view isAPersons = "-2";
constexpr std::string_view cannotBeUsed = "-3";

constexpr std::string_view selectLogin = "select username, kind from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view updateKind =
    "update TORVEX_LOGINS set kind = ?, sessionId = '', currentSite = '', siteLock = '' where loginId = ?";
constexpr std::string_view selectTokens =
    "select tokenId, name, operations, addresses, lastDay, lastUse from TORVEX_API_TOKENS where loginId = ? "
    "order by name, tokenId";
constexpr std::string_view selectToken = "select loginId, name from TORVEX_API_TOKENS where tokenId = ?";
constexpr std::string_view deleteToken = "delete from TORVEX_API_TOKENS where tokenId = ?";

/// A change in a transaction of its own, of whoever is logged in; with a line in the trail that `describe` makes
/// when it was made.
template <typename Work, typename Describe>
std::string change(HostContext& host, const std::string& name, int advId, std::string_view action,
                   Work&& work, Describe&& describe) {
    const Actor actor = actorOf(host);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const auto outcome = db::tryInOwnTransaction(host, name, std::string(status::failed), work);
    if (outcome.isCommitted) writeActorLine(host, actor, advId, action, describe());
    return outcome.value;
}

std::string quoted(const std::string& name) {
    return '"' + name + '"';
}

}  // namespace

std::string desk::setProgram(int loginId, bool isProgram, int advId) try {
    std::string username;
    const auto work = [&](db::Connection& own) -> db::Outcome<std::string> {
        {
            auto rows = own.query(selectLogin, {loginId});
            if (!rows.next()) return db::refuse(notThere);
            username = text::trim(rows.text("username"));
        }
        if (isAdministrator(username)) return db::refuse(isTheAdministrators);
        own.execute(updateKind, {isProgram ? programKind : std::string_view(), loginId});
        return db::commit(std::string());
    };
    return change(host_, "setProgram", advId, "edit", work, [&] {
        return "Login " + quoted(username) + (isProgram ? " is a program's" : " is a person's");
    });
} catch (...) {
    raiseFrom("setProgram !");
}

std::string desk::makeToken(int loginId, const std::string& name, const std::string& operations,
                            const std::string& addresses, const std::string& lastDay, int advId) try {
    const TokenWish wish{loginId, name, operations, addresses, std::string(text::trim(lastDay))};
    const auto work = [&](db::Connection& own) -> db::Outcome<std::string> {
        if (!own.query(selectLogin, {loginId}).next()) return db::refuse(notThere);
        if (!torvex::isProgram(own, loginId)) return db::refuse(isAPersons);
        if (!isUsable(wish)) return db::refuse(cannotBeUsed);
        return db::commit(torvex::makeToken(own, wish));
    };
    return change(host_, "makeToken", advId, "new", work, [&] {
        return "Token " + quoted(std::string(text::trim(name))) + " for " +
               quoted(fullnameOf(connection(), loginId));
    });
} catch (...) {
    raiseFrom("makeToken !");
}

Value desk::getTokens(int loginId) try {
    return db::gridOf(connection().query(selectTokens, {loginId}));
} catch (...) {
    raiseFrom("getTokens !");
}

std::string desk::revokeToken(int tokenId, int advId) try {
    std::string name;
    int loginId = 0;
    const auto work = [&](db::Connection& own) -> db::Outcome<std::string> {
        {
            auto rows = own.query(selectToken, {tokenId});
            if (!rows.next()) return db::refuse(notThere);
            name = rows.text("name");
            loginId = static_cast<int>(rows.number("loginId"));
        }
        own.execute(deleteToken, {tokenId});
        return db::commit(std::string());
    };
    return change(host_, "revokeToken", advId, "delete", work, [&] {
        return "Token " + quoted(name) + " of " + quoted(fullnameOf(connection(), loginId));
    });
} catch (...) {
    raiseFrom("revokeToken !");
}

}  // namespace torvex
