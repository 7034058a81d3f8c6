#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/DateTime.h"

namespace torvex {
namespace db {
class Connection;
}

/// A login that belongs to a program (its `kind`): nobody can log in with it, and programs call in its name with
/// tokens, each for what its maker allowed.
inline constexpr std::string_view programKind = "program";

/// In place of operations: all that leaves nothing behind.
inline constexpr std::string_view readsOnly = "reads";

/// The id of the session that a program's call has. No visitor's session has such a one.
std::string programSession(int loginId);

bool isProgram(db::Connection& connection, int loginId);

/// A token as its maker wants it.
struct TokenWish {
    int loginId = 0;
    std::string name;
    std::string operations;  ///< "reads", or names "class.operation" divided by commas
    std::string addresses;   ///< as in a whole address filter; "" for all
    std::string lastDay;     ///< yyyymmdd; "" for no end
};

/// Whether it has a name, its operations have their form, and its last day is one. Nothing is said of whether
/// the operations are there.
bool isUsable(const TokenWish& wish);

/// Makes it: the token, "tvx_" and 256 random bits as letters. Nobody can be told it again.
std::string makeToken(db::Connection& transaction, const TokenWish& wish);

/// What a token that was shown may do.
struct ProgramToken {
    int tokenId = 0;
    int loginId = 0;
    std::string username;
    std::string fullname;
    std::string operations;
};

/// The token of a text, if it may be used from the address today: nothing for one that was never made or is
/// revoked, one past its last day, and one of a login that is no program any more or isn't valid. Its use is
/// noted, to the minute.
std::optional<ProgramToken> useToken(db::Connection& connection, std::string_view text,
                                     std::string_view address, const DateTime& now);

/// Whether operations as a token has them cover one of a class.
bool coversOperation(std::string_view operations, std::string_view className, std::string_view operation);
/// Whether they cover any of a class.
bool coversClass(std::string_view operations, std::string_view className);

}  // namespace torvex
