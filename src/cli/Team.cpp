#include "cli/Team.h"

#include <algorithm>
#include <fmt/format.h>

#include "accounts/VisitorProof.h"
#include "cli/GeneratedPassword.h"
#include "platform/db/Connection.h"

namespace torvex::cli {

namespace {

constexpr std::string_view selectLocked =
    "select username, name, job from TORVEX_LOGINS where password = 'locked' order by loginId";

constexpr std::string_view selectVisitors =
    "select a.username, a.firstname, a.lastname, c.name from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on b.userId = a.userId "
    "inner join TORVEX_USERGROUPS c on c.groupId = b.groupId "
    "where a.password = '' order by a.userId, c.groupId";

std::vector<TeamMember> lockedMembers(db::Connection& connection) {
    std::vector<TeamMember> team;
    auto rows = connection.query(selectLocked);
    while (rows.next()) {
        team.push_back(
            {rows.text("username"), generatePassword(), rows.text("name") + ", " + rows.text("job")});
    }
    return team;
}

/// With the groups of each behind the name: "Flora Maas: Friends".
std::vector<TeamMember> visitorsWithoutPassword(db::Connection& connection) {
    std::vector<TeamMember> visitors;
    auto rows = connection.query(selectVisitors);
    while (rows.next()) {
        const std::string username = rows.text("username");
        const bool isNext = visitors.empty() || visitors.back().username != username;
        if (isNext) {
            visitors.push_back(
                {username, generatePassword(), rows.text("firstname") + " " + rows.text("lastname") + ":"});
        }
        visitors.back().description += (isNext ? " " : ", ") + rows.text("name");
    }
    return visitors;
}

}  // namespace

std::vector<TeamMember> unlockTeam(db::Connection& connection, PasswordStore store) {
    auto team = lockedMembers(connection);
    for (const TeamMember& member : team) givePassword(connection, store, member.username, member.password);
    return team;
}

std::vector<TeamMember> unlockVisitors(db::Connection& connection, PasswordStore store) {
    auto visitors = visitorsWithoutPassword(connection);
    for (const TeamMember& visitor : visitors)
        giveVisitorPassword(connection, store, visitor.username, visitor.password);
    return visitors;
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
