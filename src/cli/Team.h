#pragma once

#include <string>
#include <vector>

#include "accounts/Proof.h"

namespace torvex::db {
class Connection;
}

namespace torvex::cli {

/// An author or visitor that an installation begins with, as their password is shown to who makes it.
struct TeamMember {
    std::string username;
    std::string password;
    std::string description;
};

/// Gives every login that is still locked a random password of its own: none that is known may open a served
/// installation. To be run in a transaction. The members in the order of their numbers.
std::vector<TeamMember> unlockTeam(db::Connection& connection, PasswordStore store);

/// Likewise every visitor who has no password yet, each with the names of the groups.
std::vector<TeamMember> unlockVisitors(db::Connection& connection, PasswordStore store);

/// One line for each member; "" without any.
std::string teamTable(const std::vector<TeamMember>& team);

}  // namespace torvex::cli
