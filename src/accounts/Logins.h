#pragma once

#include <string>
#include <string_view>

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

/// The number of a login; -1 when there is none of this name. Blanks around it don't count.
int loginIdOf(db::Connection& connection, std::string_view username);

/// The full name, trimmed; "" for a login that is gone.
std::string fullnameOf(db::Connection& connection, int loginId);

// A question that can't be answered is answered by no: neither throws.

/// Whether any session holds the login.
bool isOnline(db::Connection& connection, int loginId) noexcept;
/// Whether the actor's session still owns its login: another session may have taken it over, or an
/// administrator ended it. The administrator's is never lost, and a program's is owned by its calls alone.
bool ownsItsLogin(db::Connection& connection, const Actor& actor) noexcept;

}  // namespace torvex
