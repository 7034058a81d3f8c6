#include "accounts/RightReasons.h"

#include <array>

#include "accounts/AdvancedRights.h"
#include "accounts/EditScope.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

// Memberships count by themselves, also of a role whose row is gone; a login may hold a role twice.

constexpr std::string_view selectEditRights =
    "select distinct r.roleName, a.roleId, b.site, b.lang, b.onOff, b.move, b.publish, b.approve, b.edit, "
    "b.scope, case when b.site = ? and b.lang = ? then 1 else 0 end as isHere "
    "from TORVEX_ROLES_LOGINS a left outer join TORVEX_ROLES r on r.roleId = a.roleId "
    "left outer join TORVEX_EDIT_RIGHTS b on b.roleId = a.roleId "
    "where a.loginId = ? order by r.roleName, a.roleId, b.site, b.lang";

constexpr std::string_view selectEntryRights =
    "select distinct r.roleName, a.roleId, b.site, b.lang, b.viewAccess, b.editAccess, "
    "case when (b.site = '' or b.site = ?) and (b.lang = '' or b.lang = ?) then 1 else 0 end as isHere "
    "from TORVEX_ROLES_LOGINS a left outer join TORVEX_ROLES r on r.roleId = a.roleId "
    "left outer join TORVEX_ADVANCED_RIGHTS b on b.roleId = a.roleId and b.advId = ? "
    "where a.loginId = ? order by r.roleName, a.roleId, b.site, b.lang";

/// From the weakest to the strongest.
constexpr std::array<std::string_view, 5> kinds{"nothing", "elsewhere", "otherRights", "outside", "gives"};

std::size_t strengthOf(std::string_view kind) {
    std::size_t at = 0;
    while (kinds.at(at) != kind) ++at;
    return at;
}

void append(std::string& list, std::string_view one) {
    if (!one.empty()) list.append(list.empty() ? "" : ",").append(one);
}

/// Of two things that a role has to do with it the stronger one is told; of two alike both places.
void add(RightReason& reason, std::string_view kind, std::string_view place, std::string_view rights = {}) {
    if (strengthOf(kind) < strengthOf(reason.kind)) return;
    if (kind != reason.kind) {
        reason.places.clear();
        reason.rights.clear();
    }
    reason.kind = kind;
    append(reason.places, place);
    append(reason.rights, rights);
}

/// The reason of the row's role: the last one, or a new one.
RightReason& reasonFor(std::vector<RightReason>& reasons, const db::Rows& row) {
    const int roleId = static_cast<int>(row.number("roleId"));
    if (reasons.empty() || reasons.back().roleId != roleId)
        reasons.push_back({.roleId = roleId, .role = row.text("roleName")});
    return reasons.back();
}

std::string wordsOf(const db::Rows& row) {
    std::string words;
    for (const EditTask task : editTasks)
        if (row.number(wordOf(task)) == 1) append(words, wordOf(task));
    return words;
}

/// The node of the scope by which it reaches the page.
std::string nodeThatReaches(std::string_view scope, std::string_view nodeId) {
    if (isWholeTree(scope)) return std::string(siteOf(nodeId)).append(".").append(langOf(nodeId));
    for (const std::string& node : nodesInScope(scope))
        if (scopeCovers(node, nodeId)) return node;
    return {};
}

void addEditRow(RightReason& reason, const db::Rows& row, EditTask task, std::string_view nodeId) {
    const bool isGiven = row.number(wordOf(task)) == 1;
    if (row.number("isHere") != 1) {
        if (isGiven) add(reason, "elsewhere", row.text("site") + "." + row.text("lang"));
        return;
    }
    const std::string scope(text::trim(row.view("scope")));
    if (!isGiven) {
        const std::string words = wordsOf(row);
        if (!words.empty()) add(reason, "otherRights", {}, words);
    } else if (scopeReaches(scope, nodeId)) {
        add(reason, "gives", nodeThatReaches(scope, nodeId));
    } else {
        add(reason, "outside", scope);
    }
}

std::string placeOf(const db::Rows& row) {
    const std::string site = row.text("site");
    const std::string lang = row.text("lang");
    return lang.empty() ? site : site + "." + lang;
}

void addEntryRow(RightReason& reason, const db::Rows& row, std::string_view flag) {
    const bool view = row.number("viewAccess") == 1;
    const bool edit = row.number("editAccess") == 1;
    const bool isGiven = hasAsked(flag, view, edit);
    if (row.number("isHere") != 1) {
        if (isGiven) add(reason, "elsewhere", placeOf(row));
    } else if (isGiven) {
        add(reason, "gives", placeOf(row));
    } else if (view || edit) {
        add(reason, "otherRights", {}, view ? "view" : "edit");
    }
}

}  // namespace

std::vector<RightReason> whyEdit(db::Connection& connection, int loginId, EditTask task,
                                 std::string_view nodeId) {
    std::vector<RightReason> reasons;
    auto rows = connection.query(selectEditRights, {siteOf(nodeId), langOf(nodeId), loginId});
    while (rows.next()) addEditRow(reasonFor(reasons, rows), rows, task, nodeId);
    return reasons;
}

std::vector<RightReason> whyEntry(db::Connection& connection, int loginId, std::string_view flag, int advId,
                                  std::string_view site, std::string_view lang) {
    std::vector<RightReason> reasons;
    const EntryOffer offer = offerOf(connection, advId);
    if (!offer.has(flag)) return reasons;
    const auto wanted = offer.placeIn(site, lang);
    auto rows = connection.query(selectEntryRights, {wanted.site, wanted.lang, advId, loginId});
    while (rows.next()) addEntryRow(reasonFor(reasons, rows), rows, flag);
    return reasons;
}

}  // namespace torvex
