#include "accounts/EditReach.h"

#include <algorithm>

#include "accounts/Actor.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectRights =
    "select site, lang, onOff, move, publish, approve, edit, scope from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_EDIT_RIGHTS b on a.roleId = b.roleId where a.loginId = ?";

/// A scope that is written out as this word is none.
constexpr std::string_view everywhere = "ALL";

bool givesAny(const db::Rows& row, std::span<const EditTask> tasks) {
    return std::any_of(tasks.begin(), tasks.end(),
                       [&](EditTask task) { return row.number(wordOf(task)) == 1; });
}

/// The nodes of a scope, blanks in it counting for nothing.
std::vector<std::string> nodesIn(std::string_view scope) {
    std::vector<std::string> nodes(1);
    for (const char c : text::lower(scope)) {
        if (c == ',') {
            nodes.emplace_back();
        } else if (c != ' ') {
            nodes.back() += c;
        }
    }
    return nodes;
}

/// A role gives rights in one tree; nodes of another in its scope give none there.
void addNodes(EditReach& reach, const std::string& root, std::string_view scope) {
    if (scope.empty() || text::equals(scope, everywhere)) {
        reach.nodes.push_back(root);
        return;
    }
    for (std::string& node : nodesIn(scope)) {
        if (node == root || node.starts_with(root + ".")) reach.nodes.push_back(std::move(node));
    }
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
        addNodes(reach, root, text::trim(rows.view("scope")));
    }
    std::sort(reach.nodes.begin(), reach.nodes.end());
    reach.nodes.erase(std::unique(reach.nodes.begin(), reach.nodes.end()), reach.nodes.end());
    return reach;
}

}  // namespace torvex
