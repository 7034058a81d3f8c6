#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Value.h"

namespace torvex {
struct Actor;
struct DateTime;
class Clock;
class Session;
namespace db {
class Connection;
}

// What somebody has beside the password: a telephone that shows codes (TimeCode.h), and codes on paper for the day when
// it is gone. Logins of authors and accounts of visitors have at most one such factor; its secret leaves the database for
// nobody.

inline constexpr std::size_t recoveryCodes = 10;

/// Whose factor it is. Each kind has tables of its own.
struct FactorOwner {
    enum class Kind { Login, Visitor };

    Kind kind;
    int id;

    bool operator==(const FactorOwner&) const = default;
};
inline FactorOwner ofLogin(int loginId) {
    return {FactorOwner::Kind::Login, loginId};
}
inline FactorOwner ofVisitor(int userId) {
    return {FactorOwner::Kind::Visitor, userId};
}

struct SecondFactor {
    int id = 0;  ///< never given twice: who sets it up anew has another one
    std::string secret;
    std::int64_t lastStep = 0;  ///< of it and of all before no code is taken
};

/// Nothing when there is none.
std::optional<SecondFactor> secondFactorOf(db::Connection& connection, FactorOwner owner);

/// What may be told of it.
struct FactorState {
    Value since;
    int codesLeft = 0;  ///< on paper
};
/// Nothing when there is none.
std::optional<FactorState> factorStateOf(db::Connection& connection, FactorOwner owner);

// ---- Codes ----

enum class TypedCode { Wrong, OfTelephone, OfPaper };

/// Takes a code, which is worth nothing from then on: of two that come at once, only one is taken. Blanks and dashes
/// don't count, nor does case. For a transaction.
TypedCode takeCode(db::Connection& transaction, FactorOwner owner, const SecondFactor& factor,
                   std::string_view typed, std::int64_t unixSeconds);
/// The same for codes of the telephone alone.
bool takeTimeCode(db::Connection& transaction, FactorOwner owner, const SecondFactor& factor,
                  std::string_view typed, std::int64_t unixSeconds);

// ---- Setting it up ----

enum class FirstCode { Taken, Wrong, HasFactor };

/// Gives the owner the factor of a secret whose code was typed, and tells the codes on paper. For a transaction.
FirstCode confirmFactor(db::Connection& transaction, FactorOwner owner, std::string_view secret,
                        std::string_view typed, const Clock& clock, std::vector<std::string>& codes);
/// Gives a factor by a secret whose code of a step was shown. False when there is one. For a transaction.
bool giveSecondFactor(db::Connection& transaction, FactorOwner owner, std::string_view secret,
                      std::int64_t step, const DateTime& now);
/// New codes on paper in place of all before. Nobody can be told them again. For a transaction.
std::vector<std::string> renewRecoveryCodes(db::Connection& transaction, FactorOwner owner);
/// With its codes. False when there was none. For a transaction.
bool dropSecondFactor(db::Connection& transaction, FactorOwner owner);

// ---- Authors who must have one ----

/// Whether a role of the login demands one.
bool isSecondFactorDemanded(db::Connection& connection, int loginId);
/// Whether the actor has to set one up before anything else. Programs, which call by tokens, never have to.
bool mustEnrol(db::Connection& connection, const Actor& actor);

// ---- What a session has shown ----

/// The factor by which the session has logged in; 0 for none.
int provenFactor(const Session& session);
void setProvenFactor(Session& session, int factorId);

}  // namespace torvex
