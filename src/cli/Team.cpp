#include "cli/Team.h"

#include <algorithm>
#include <fmt/format.h>

#include "accounts/StoredPassword.h"
#include "cli/GeneratedPassword.h"
#include "platform/db/Connection.h"

namespace torvex::cli {

namespace {

constexpr std::string_view selectLocked =
    "select username, name, job from TORVEX_LOGINS where password = 'locked' order by loginId";

constexpr std::string_view setPassword = "update TORVEX_LOGINS set password = ? where username = ?";

std::vector<TeamMember> lockedMembers(db::Connection& connection) {
    std::vector<TeamMember> team;
    auto rows = connection.query(selectLocked);
    while (rows.next()) {
        team.push_back(
            {rows.text("username"), generatePassword(), rows.text("name") + ", " + rows.text("job")});
    }
    return team;
}

}  // namespace

std::vector<TeamMember> unlockTeam(db::Connection& connection) {
    auto team = lockedMembers(connection);
    for (const TeamMember& member : team) {
        const std::string stored = encodePassword(member.password);
        connection.execute(setPassword, {stored, member.username});
    }
    return team;
}

std::string teamTable(const std::vector<TeamMember>& team) {
    std::size_t width = 0;
    for (const TeamMember& member : team) width = std::max(width, member.username.size());
    std::string table;
    for (const TeamMember& member : team) {
        table +=
            fmt::format("    {:{}}  {}  {}\n", member.username, width, member.password, member.description);
    }
    return table;
}

}  // namespace torvex::cli
