#pragma once

namespace torvex {
struct Actor;
struct DateTime;
namespace db {
class Connection;
}

// An installation whose rights nobody can give any more is left to whoever has the password of "sa". Changes
// therefore look before and after whether somebody else is left who may.

/// Whether a login other than "sa" may administer: a person's, valid today, with edit access to both logins
/// and roles.
bool someoneAdministers(db::Connection& connection, const DateTime& now);

/// Whether nobody administers any more who did `before` the change. The administrator himself may do that.
bool tookLastAdministrator(db::Connection& transaction, const Actor& actor, bool before);

}  // namespace torvex
