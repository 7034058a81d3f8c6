#include "accounts/RoleRights.h"

#include <algorithm>

#include "accounts/Actor.h"
#include "accounts/AdvancedRights.h"
#include "accounts/EditScope.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectName = "select roleName from TORVEX_ROLES where roleId = ?";

constexpr std::string_view selectEditGrants =
    "select site, lang, onOff, move, publish, approve, edit, scope from TORVEX_EDIT_RIGHTS "
    "where roleId = ? order by site, lang";
constexpr std::string_view selectEditGrantsThere =
    "select site, lang, onOff, move, publish, approve, edit, scope from TORVEX_EDIT_RIGHTS "
    "where roleId = ? and site = ? and lang = ?";
constexpr std::string_view deleteEditGrants =
    "delete from TORVEX_EDIT_RIGHTS where roleId = ? and site = ? and lang = ?";
constexpr std::string_view insertEditGrant =
    "insert into TORVEX_EDIT_RIGHTS (roleId, site, lang, onOff, move, publish, approve, edit, scope) "
    "values (?, ?, ?, ?, ?, ?, ?, ?, ?)";

constexpr std::string_view selectEntryGrants =
    "select advId, coalesce(site, '') as site, coalesce(lang, '') as lang, "
    "max(coalesce(viewAccess, 0)) as viewing, max(coalesce(editAccess, 0)) as editing "
    "from TORVEX_ADVANCED_RIGHTS where roleId = ? group by advId, coalesce(site, ''), coalesce(lang, '') "
    "order by 1, 2, 3";
constexpr std::string_view selectEntryGrant =
    "select max(coalesce(viewAccess, 0)) as viewing, max(coalesce(editAccess, 0)) as editing "
    "from TORVEX_ADVANCED_RIGHTS where roleId = ? and advId = ? and site = ? and lang = ?";
constexpr std::string_view deleteEntryGrant =
    "delete from TORVEX_ADVANCED_RIGHTS where roleId = ? and advId = ? and site = ? and lang = ?";
constexpr std::string_view insertEntryGrant =
    "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) "
    "values (?, ?, ?, ?, ?, ?)";

EditGrant editGrantIn(const db::Rows& row) {
    EditGrant grant{text::lowerTrim(row.text("site")), text::lowerTrim(row.text("lang")), {}, {}};
    for (const EditTask task : editTasks)
        if (row.number(wordOf(task)) == 1) grant.rights.give(task);
    if (!isWholeTree(row.view("scope"))) grant.scope = text::trim(row.view("scope"));
    return grant;
}

std::vector<EditGrant> editGrantsIn(db::Rows rows) {
    std::vector<EditGrant> grants;
    while (rows.next()) grants.push_back(editGrantIn(rows));
    return grants;
}

int flagOf(const EditGrant& grant, EditTask task) {
    return grant.rights.has(task) ? 1 : 0;
}

std::vector<std::string> reachOf(const EditGrant& grant) {
    if (isWholeTree(grant.scope)) return {grant.site + "." + grant.lang};
    return nodesInScope(grant.scope);
}

bool gives(const std::vector<EditGrant>& grants, EditTask task, std::string_view nodeId) {
    return std::ranges::any_of(grants, [&](const EditGrant& grant) {
        return grant.rights.has(task) && scopeReaches(grant.scope, nodeId);
    });
}

}  // namespace

bool EditGrant::isNothing() const {
    return rights.text() == EditRights().text();
}

std::optional<std::string> roleNameOf(db::Connection& connection, int roleId) {
    auto rows = connection.query(selectName, {roleId});
    if (!rows.next()) return std::nullopt;
    return rows.text("roleName");
}

std::optional<EditRights> editRightsFrom(std::string_view flags) {
    if (flags.size() != editTasks.size() || flags.find_first_not_of("01") != std::string_view::npos)
        return std::nullopt;
    EditRights rights;
    for (const EditTask task : editTasks)
        if (flags[static_cast<std::size_t>(task)] == '1') rights.give(task);
    return rights;
}

std::vector<EditGrant> editGrantsOf(db::Connection& connection, int roleId) {
    return editGrantsIn(connection.query(selectEditGrants, {roleId}));
}

std::vector<EditGrant> editGrantsOf(db::Connection& connection, int roleId, std::string_view site,
                                    std::string_view lang) {
    return editGrantsIn(connection.query(selectEditGrantsThere, {roleId, site, lang}));
}

std::vector<EntryGrant> entryGrantsOf(db::Connection& connection, int roleId) {
    std::vector<EntryGrant> grants;
    auto rows = connection.query(selectEntryGrants, {roleId});
    while (rows.next())
        grants.push_back({static_cast<int>(rows.number("advId")), rows.text("site"), rows.text("lang"),
                          rows.number("viewing") == 1, rows.number("editing") == 1});
    return grants;
}

EntryGrant entryGrantOf(db::Connection& connection, int roleId, int entry, std::string_view site,
                        std::string_view lang) {
    EntryGrant grant{entry, std::string(site), std::string(lang), false, false};
    auto rows = connection.query(selectEntryGrant, {roleId, entry, site, lang});
    if (!rows.next()) return grant;
    grant.view = rows.number("viewing") == 1;
    grant.edit = rows.number("editing") == 1;
    return grant;
}

void writeEditGrant(db::Connection& transaction, int roleId, const EditGrant& grant) {
    transaction.execute(deleteEditGrants, {roleId, grant.site, grant.lang});
    if (grant.isNothing()) return;
    transaction.execute(insertEditGrant,
                        {roleId, grant.site, grant.lang, flagOf(grant, EditTask::OnOff),
                         flagOf(grant, EditTask::Move), flagOf(grant, EditTask::Publish),
                         flagOf(grant, EditTask::Approve), flagOf(grant, EditTask::Edit), grant.scope});
}

void writeEntryGrant(db::Connection& transaction, int roleId, const EntryGrant& grant) {
    transaction.execute(deleteEntryGrant, {roleId, grant.entry, grant.site, grant.lang});
    if (grant.isNothing()) return;
    transaction.execute(insertEntryGrant, {roleId, grant.entry, grant.site, grant.lang, grant.view ? 1 : 0,
                                           grant.edit ? 1 : 0});
}

bool mayGive(db::Connection& connection, const Actor& actor, const EditGrant& grant,
             const std::vector<EditGrant>& had) {
    if (actor.isAdministrator()) return true;
    for (const std::string& node : reachOf(grant)) {
        const EditRights own = editRightsOf(connection, actor.loginId, grant.site, grant.lang, node);
        for (const EditTask task : editTasks)
            if (grant.rights.has(task) && !own.has(task) && !gives(had, task, node)) return false;
    }
    return true;
}

bool mayGive(db::Connection& connection, const Actor& actor, const EntryGrant& grant, const EntryGrant& had) {
    const auto has = [&](std::string_view flag) {
        return mayUseEntry(connection, actor, flag, grant.entry, grant.site, grant.lang);
    };
    return (!grant.view || had.view || has("view")) && (!grant.edit || had.edit || has("edit"));
}

bool mayGiveRole(db::Connection& connection, const Actor& actor, int roleId) {
    if (actor.isAdministrator()) return true;
    for (const EditGrant& grant : editGrantsOf(connection, roleId))
        if (!mayGive(connection, actor, grant, {})) return false;
    for (EntryGrant grant : entryGrantsOf(connection, roleId)) {
        // What an entry doesn't offer opens nothing.
        const EntryOffer offer = offerOf(connection, grant.entry);
        grant.view &= offer.view;
        grant.edit &= offer.edit;
        if (!mayGive(connection, actor, grant, {})) return false;
    }
    return true;
}

}  // namespace torvex
