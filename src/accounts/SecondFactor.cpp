#include "accounts/SecondFactor.h"

#include <algorithm>
#include <fmt/format.h>

#include "accounts/Actor.h"
#include "accounts/ProgramTokens.h"
#include "accounts/TimeCode.h"
#include "platform/DateTime.h"
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

/// What is asked of the tables of one kind of owners.
struct Statements {
    Statements(std::string_view factors, std::string_view codes, std::string_view owner)
        : selectFactor(fmt::format("select factorId, secret, lastStep from {} where {} = ?", factors, owner)),
          selectState(
              fmt::format("select since, (select count(*) from {1} c where c.{2} = f.{2}) as codesLeft "
                          "from {0} f where f.{2} = ?",
                          factors, codes, owner)),
          insertFactor(fmt::format("insert into {0} ({1}, secret, since, lastStep) values (?, ?, ?, ?) "
                                   "on conflict ({1}) do nothing",
                                   factors, owner)),
          deleteFactor(fmt::format("delete from {} where {} = ?", factors, owner)),
          advanceStep(fmt::format("update {} set lastStep = ? where factorId = ? and lastStep < ?", factors)),
          insertCode(fmt::format("insert into {} ({}, codeHash) values (?, ?)", codes, owner)),
          deleteCode(fmt::format("delete from {} where {} = ? and codeHash = ?", codes, owner)),
          deleteCodes(fmt::format("delete from {} where {} = ?", codes, owner)) {}

    std::string selectFactor;
    std::string selectState;
    std::string insertFactor;
    std::string deleteFactor;
    std::string advanceStep;
    std::string insertCode;
    std::string deleteCode;
    std::string deleteCodes;
};

const Statements& statementsOf(FactorOwner owner) {
    static const Statements ofLogins("TORVEX_SECOND_FACTORS", "TORVEX_RECOVERY_CODES", "loginId");
    static const Statements ofVisitors("TORVEX_USER_FACTORS", "TORVEX_USER_RECOVERY_CODES", "userId");
    return owner.kind == FactorOwner::Kind::Login ? ofLogins : ofVisitors;
}

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

bool takePaperCode(db::Connection& transaction, FactorOwner owner, std::string_view code) {
    const std::string hash = sha256(code);
    return transaction.execute(statementsOf(owner).deleteCode, {owner.id, hash}) > 0;
}

}  // namespace

std::optional<SecondFactor> secondFactorOf(db::Connection& connection, FactorOwner owner) {
    auto rows = connection.query(statementsOf(owner).selectFactor, {owner.id});
    if (!rows.next()) return std::nullopt;
    return SecondFactor{static_cast<int>(rows.number("factorId")), rows.text("secret"),
                        static_cast<std::int64_t>(rows.number("lastStep"))};
}

std::optional<FactorState> factorStateOf(db::Connection& connection, FactorOwner owner) {
    auto rows = connection.query(statementsOf(owner).selectState, {owner.id});
    if (!rows.next()) return std::nullopt;
    return FactorState{rows.value("since"), static_cast<int>(rows.number("codesLeft"))};
}

bool takeTimeCode(db::Connection& transaction, FactorOwner owner, const SecondFactor& factor,
                  std::string_view typed, std::int64_t unixSeconds) {
    const auto secret = bytesOfBase32(factor.secret);
    if (!secret) return false;
    const auto step = typedStep(*secret, cleaned(typed), stepAt(unixSeconds), factor.lastStep);
    return step && transaction.execute(statementsOf(owner).advanceStep, {*step, factor.id, *step}) == 1;
}

TypedCode takeCode(db::Connection& transaction, FactorOwner owner, const SecondFactor& factor,
                   std::string_view typed, std::int64_t unixSeconds) {
    if (takeTimeCode(transaction, owner, factor, typed, unixSeconds)) return TypedCode::OfTelephone;
    const std::string code = cleaned(typed);
    return !code.empty() && takePaperCode(transaction, owner, code) ? TypedCode::OfPaper : TypedCode::Wrong;
}

FirstCode confirmFactor(db::Connection& transaction, FactorOwner owner, std::string_view secret,
                        std::string_view typed, const Clock& clock, std::vector<std::string>& codes) {
    const auto bytes = bytesOfBase32(secret);
    const auto step = typedStep(bytes.value_or(""), cleaned(typed), stepAt(clock.unixSeconds()), 0);
    if (!step) return FirstCode::Wrong;
    if (!giveSecondFactor(transaction, owner, secret, *step, clock.now())) return FirstCode::HasFactor;
    codes = renewRecoveryCodes(transaction, owner);
    return FirstCode::Taken;
}

bool giveSecondFactor(db::Connection& transaction, FactorOwner owner, std::string_view secret,
                      std::int64_t step, const DateTime& now) {
    return transaction.execute(statementsOf(owner).insertFactor, {owner.id, secret, now, step}) == 1;
}

std::vector<std::string> renewRecoveryCodes(db::Connection& transaction, FactorOwner owner) {
    const Statements& statements = statementsOf(owner);
    transaction.execute(statements.deleteCodes, {owner.id});
    std::vector<std::string> codes;
    while (codes.size() < recoveryCodes) {
        const std::string code = randomBase32(paperBytes);
        const std::string hash = sha256(code);
        transaction.execute(statements.insertCode, {owner.id, hash});
        codes.push_back(readable(code));
    }
    return codes;
}

bool dropSecondFactor(db::Connection& transaction, FactorOwner owner) {
    transaction.execute(statementsOf(owner).deleteCodes, {owner.id});
    return transaction.execute(statementsOf(owner).deleteFactor, {owner.id}) > 0;
}

bool isSecondFactorDemanded(db::Connection& connection, int loginId) {
    return connection.query(selectDemand, {loginId}).next();
}

bool mustEnrol(db::Connection& connection, const Actor& actor) {
    if (!actor.isLoggedIn() || actor.sessionId == programSession(actor.loginId)) return false;
    return isSecondFactorDemanded(connection, actor.loginId) &&
           !secondFactorOf(connection, ofLogin(actor.loginId));
}

int provenFactor(const Session& session) {
    return static_cast<int>(session.number(provenKey));
}

void setProvenFactor(Session& session, int factorId) {
    session.set(provenKey, factorId);
}

}  // namespace torvex
