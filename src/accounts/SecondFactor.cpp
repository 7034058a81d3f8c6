#include "accounts/SecondFactor.h"

#include <algorithm>

#include "accounts/Actor.h"
#include "accounts/ProgramTokens.h"
#include "accounts/TimeCode.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/text/Hexadecimal.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view provenKey = "torvex_second_factor";

/// 80 bits: sixteen letters in four groups.
constexpr std::size_t paperBytes = 10;
constexpr std::size_t groupLength = 4;
/// What is longer is no code; it isn't even looked at.
constexpr std::size_t longestTyped = 50;

constexpr std::string_view selectFactor =
    "select factorId, secret, lastStep from TORVEX_SECOND_FACTORS where loginId = ?";
constexpr std::string_view insertFactor =
    "insert into TORVEX_SECOND_FACTORS (loginId, secret, since, lastStep) values (?, ?, ?, ?) "
    "on conflict (loginId) do nothing";
constexpr std::string_view deleteFactor = "delete from TORVEX_SECOND_FACTORS where loginId = ?";
constexpr std::string_view advanceStep =
    "update TORVEX_SECOND_FACTORS set lastStep = ? where factorId = ? and lastStep < ?";
constexpr std::string_view insertCode = "insert into TORVEX_RECOVERY_CODES (loginId, codeHash) values (?, ?)";
constexpr std::string_view deleteCode =
    "delete from TORVEX_RECOVERY_CODES where loginId = ? and codeHash = ?";
constexpr std::string_view deleteCodes = "delete from TORVEX_RECOVERY_CODES where loginId = ?";
constexpr std::string_view selectDemand =
    "select r.roleId from TORVEX_ROLES_LOGINS a, TORVEX_ROLES r "
    "where a.loginId = ? and r.roleId = a.roleId and r.secondFactor = 1";

std::string cleaned(std::string_view typed) {
    if (typed.size() > longestTyped) return {};
    std::string code = text::upper(typed);
    std::erase_if(code, [](char c) { return c == ' ' || c == '-'; });
    return code;
}

std::string readable(const std::string& code) {
    std::string groups;
    for (std::size_t at = 0; at < code.size(); at += groupLength)
        groups += (at > 0 ? "-" : "") + code.substr(at, groupLength);
    return groups;
}

bool takePaperCode(db::Connection& transaction, int loginId, std::string_view code) {
    const std::string hash = sha256(code);
    return transaction.execute(deleteCode, {loginId, hash}) > 0;
}

}  // namespace

std::optional<SecondFactor> secondFactorOf(db::Connection& connection, int loginId) {
    auto rows = connection.query(selectFactor, {loginId});
    if (!rows.next()) return std::nullopt;
    return SecondFactor{static_cast<int>(rows.number("factorId")), rows.text("secret"),
                        static_cast<std::int64_t>(rows.number("lastStep"))};
}

bool takeTimeCode(db::Connection& transaction, const SecondFactor& factor, std::string_view typed,
                  std::int64_t unixSeconds) {
    const auto secret = bytesOfBase32(factor.secret);
    if (!secret) return false;
    const auto step = typedStep(*secret, cleaned(typed), stepAt(unixSeconds), factor.lastStep);
    return step && transaction.execute(advanceStep, {*step, factor.id, *step}) == 1;
}

TypedCode takeCode(db::Connection& transaction, int loginId, const SecondFactor& factor,
                   std::string_view typed, std::int64_t unixSeconds) {
    if (takeTimeCode(transaction, factor, typed, unixSeconds)) return TypedCode::OfTelephone;
    const std::string code = cleaned(typed);
    return !code.empty() && takePaperCode(transaction, loginId, code) ? TypedCode::OfPaper : TypedCode::Wrong;
}

bool giveSecondFactor(db::Connection& transaction, int loginId, std::string_view secret, std::int64_t step,
                      const DateTime& now) {
    return transaction.execute(insertFactor, {loginId, secret, now, step}) == 1;
}

std::vector<std::string> renewRecoveryCodes(db::Connection& transaction, int loginId) {
    transaction.execute(deleteCodes, {loginId});
    std::vector<std::string> codes;
    while (codes.size() < recoveryCodes) {
        const std::string code = randomBase32(paperBytes);
        const std::string hash = sha256(code);
        transaction.execute(insertCode, {loginId, hash});
        codes.push_back(readable(code));
    }
    return codes;
}

bool dropSecondFactor(db::Connection& transaction, int loginId) {
    transaction.execute(deleteCodes, {loginId});
    return transaction.execute(deleteFactor, {loginId}) > 0;
}

bool isSecondFactorDemanded(db::Connection& connection, int loginId) {
    return connection.query(selectDemand, {loginId}).next();
}

bool mustEnrol(db::Connection& connection, const Actor& actor) {
    if (!actor.isLoggedIn() || actor.sessionId == programSession(actor.loginId)) return false;
    return isSecondFactorDemanded(connection, actor.loginId) && !secondFactorOf(connection, actor.loginId);
}

int provenFactor(const Session& session) {
    return static_cast<int>(session.number(provenKey));
}

void setProvenFactor(Session& session, int factorId) {
    session.set(provenKey, factorId);
}

}  // namespace torvex
