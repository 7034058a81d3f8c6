#include "accounts/EditReach.h"

#include <algorithm>

#include "accounts/Actor.h"
#include "accounts/EditScope.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectRights =
    "select site, lang, onOff, move, publish, approve, edit, scope from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_EDIT_RIGHTS b on a.roleId = b.roleId where a.loginId = ?";

bool givesAny(const db::Rows& row, std::span<const EditTask> tasks) {
    return std::any_of(tasks.begin(), tasks.end(),
                       [&](EditTask task) { return row.number(wordOf(task)) == 1; });
}

}  // namespace

bool EditReach::covers(std::string_view nodeId) const {
    if (isEverywhere) return true;
    const std::string lower = text::lowerTrim(nodeId);
    if (lower.size() > PageIdentity::longestNode) return false;
    std::string_view node = lower;
    while (node.size() >= PageIdentity::rootLength) {
        if (std::binary_search(nodes.begin(), nodes.end(), node)) return true;
        node = node.substr(0, node.size() - PageIdentity::levelLength);
    }
    return false;
}

EditReach editReachOf(db::Connection& connection, const Actor& actor, std::span<const EditTask> tasks) {
    EditReach reach;
    reach.isEverywhere = actor.isAdministrator();
    if (reach.isEverywhere || !actor.isLoggedIn()) return reach;
    auto rows = connection.query(selectRights, {actor.loginId});
    while (rows.next()) {
        if (!givesAny(rows, tasks)) continue;
        const std::string root =
            text::lowerTrim(rows.text("site")) + "." + text::lowerTrim(rows.text("lang"));
        for (std::string& node : reachInTree(root, rows.view("scope")))
            reach.nodes.push_back(std::move(node));
    }
    std::sort(reach.nodes.begin(), reach.nodes.end());
    reach.nodes.erase(std::unique(reach.nodes.begin(), reach.nodes.end()), reach.nodes.end());
    return reach;
}

}  // namespace torvex
