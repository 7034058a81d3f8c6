// registers: what roles give, and to whom.

#include "accounts/RoleRights.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>

#include "accounts/Actor.h"
#include "accounts/Administrators.h"
#include "accounts/AdvancedRights.h"
#include "accounts/EditScope.h"
#include "accounts/Logins.h"
#include "authoring/StatusCodes.h"
#include "desk/RecordLock.h"
#include "desk/RoleStatus.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/Existence.h"
#include "records/PageIdentity.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

/// More nodes than anybody draws; as texts they stay far from what a row may hold.
constexpr std::size_t mostNodes = 200;

constexpr std::size_t editColumns = 8;
constexpr std::size_t entryColumns = 5;

constexpr std::string_view selectLogin = "select loginId from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view selectHolding =
    "select roleId from TORVEX_ROLES_LOGINS where roleId = ? and loginId = ?";
constexpr std::string_view insertHolding = "insert into TORVEX_ROLES_LOGINS (roleId, loginId) values (?, ?)";
constexpr std::string_view deleteHolding = "delete from TORVEX_ROLES_LOGINS where roleId = ? and loginId = ?";

using Outcome = db::Outcome<std::string>;

/// A change of a record that the session may have, with a way back of its lock.
template <typename Change>
Outcome whileHeld(db::Connection& own, const Actor& actor, std::string_view item, int id, Change change) {
    RecordLock lock(own, actor, item, id);
    if (!lock.isHeld()) return db::refuse(roleStatus::openElsewhere);
    const Outcome outcome = change();
    lock.giveBack();
    return outcome;
}

/// The nodes as they are kept: in small letters, none below another one. Nothing when one of them is no page of
/// the tree.
std::optional<std::string> cleanScope(db::Connection& connection, const std::string& root,
                                      std::string_view scope) {
    if (isWholeTree(scope)) return std::string();
    std::vector<std::string> nodes = nodesInScope(scope);
    std::erase(nodes, std::string());
    if (nodes.empty() || nodes.size() > mostNodes) return std::nullopt;
    std::ranges::sort(nodes);
    for (const std::string& node : nodes) {
        if (node != root && !node.starts_with(root + ".")) return std::nullopt;
        if (node.size() > PageIdentity::longestNode || pageIdOf(connection, node) <= 0) return std::nullopt;
        if (node == root) return std::string();
    }
    return fmt::format("{}", fmt::join(outermost(std::move(nodes)), ","));
}

/// "may move, edit in bg.en below bg.en.03"
std::string told(const EditGrant& grant) {
    std::string words;
    for (const EditTask task : editTasks)
        if (grant.rights.has(task)) words.append(words.empty() ? "" : ", ").append(wordOf(task));
    const std::string where = grant.site + "." + grant.lang;
    if (words.empty()) return "may do nothing in " + where;
    return fmt::format("may {} in {}{}", words, where,
                       grant.scope.empty() ? std::string() : " below " + grant.scope);
}

std::string told(const EntryGrant& grant) {
    std::string words = grant.view ? "view" : "";
    if (grant.edit) words.append(words.empty() ? "" : ", ").append("edit");
    const std::string place =
        grant.site.empty() && grant.lang.empty() ? std::string() : " in " + grant.site + "." + grant.lang;
    return fmt::format("may {} entry {}{}", words.empty() ? "not use" : words, grant.entry, place);
}

Outcome writeRights(db::Connection& own, const Actor& actor, int roleId, EditGrant& grant) {
    lockRegisters(own);
    if (!roleNameOf(own, roleId)) return db::refuse(roleStatus::gone);
    if (!siteExists(own, grant.site) || !languageExists(own, grant.lang))
        return db::refuse(roleStatus::noSuchPlace);
    const auto scope = cleanScope(own, grant.site + "." + grant.lang, grant.scope);
    if (!scope && !grant.isNothing()) return db::refuse(roleStatus::noSuchRight);
    grant.scope = scope.value_or("");
    return whileHeld(own, actor, "role", roleId, [&]() -> Outcome {
        if (!mayGive(own, actor, grant, editGrantsOf(own, roleId, grant.site, grant.lang)))
            return db::refuse(roleStatus::moreThanOwn);
        writeEditGrant(own, roleId, grant);
        return db::commit(status::done);
    });
}

/// Whether the entry can be given so: what it offers, in a place of its level that is there.
bool isGivable(db::Connection& connection, const EntryOffer& offer, const EntryGrant& grant) {
    if ((grant.view && !offer.view) || (grant.edit && !offer.edit)) return false;
    if (!grant.site.empty() && (offer.level < 1 || !siteExists(connection, grant.site))) return false;
    return grant.lang.empty() || (offer.level >= 2 && languageExists(connection, grant.lang));
}

Outcome writeEntry(db::Connection& own, const Actor& actor, int roleId, const EntryGrant& grant) {
    lockRegisters(own);
    if (!roleNameOf(own, roleId)) return db::refuse(roleStatus::gone);
    const EntryOffer offer = offerOf(own, grant.entry);
    if (!offer.isThere) return db::refuse(roleStatus::noSuchEntry);
    if (!grant.isNothing() && !isGivable(own, offer, grant)) return db::refuse(roleStatus::noSuchRight);
    return whileHeld(own, actor, "role", roleId, [&]() -> Outcome {
        if (!mayGive(own, actor, grant, entryGrantOf(own, roleId, grant.entry, grant.site, grant.lang)))
            return db::refuse(roleStatus::moreThanOwn);
        const bool before = someoneAdministers(own, actor.now);
        writeEntryGrant(own, roleId, grant);
        if (tookLastAdministrator(own, actor, before)) return db::refuse(roleStatus::lastAdministrator);
        return db::commit(status::done);
    });
}

struct Membership {
    int loginId;
    int roleId;
    bool has;
};

Outcome writeHolding(db::Connection& own, const Actor& actor, const Membership& wanted) {
    lockRegisters(own);
    if (!own.query(selectLogin, {wanted.loginId}).next() || !roleNameOf(own, wanted.roleId))
        return db::refuse(roleStatus::gone);
    const bool has = own.query(selectHolding, {wanted.roleId, wanted.loginId}).next();
    if (wanted.has && !has && !mayGiveRole(own, actor, wanted.roleId))
        return db::refuse(roleStatus::moreThanOwn);
    return whileHeld(own, actor, "login", wanted.loginId, [&]() -> Outcome {
        const bool before = someoneAdministers(own, actor.now);
        if (!wanted.has) own.execute(deleteHolding, {wanted.roleId, wanted.loginId});
        if (wanted.has && !has) own.execute(insertHolding, {wanted.roleId, wanted.loginId});
        if (tookLastAdministrator(own, actor, before)) return db::refuse(roleStatus::lastAdministrator);
        return db::commit(status::done);
    });
}

std::string quoted(const std::string& name) {
    return '"' + name + '"';
}

}  // namespace

Value registers::getEditRights(int roleId) try {
    ResultGrid grid(editColumns);
    for (const EditGrant& grant : editGrantsOf(connection(), roleId)) {
        const auto flag = [&](EditTask task) { return grant.rights.has(task) ? 1 : 0; };
        grid.add({grant.site, grant.lang, flag(EditTask::OnOff), flag(EditTask::Move),
                  flag(EditTask::Publish), flag(EditTask::Approve), flag(EditTask::Edit), grant.scope});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getEditRights !");
}

Value registers::getAdvancedRights(int roleId) try {
    ResultGrid grid(entryColumns);
    for (const EntryGrant& grant : entryGrantsOf(connection(), roleId))
        grid.add({grant.entry, grant.site, grant.lang, grant.view ? 1 : 0, grant.edit ? 1 : 0});
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getAdvancedRights !");
}

std::string registers::setEditRights(int roleId, const std::string& site, const std::string& lang,
                                     const std::string& rights, const std::string& scope, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const auto given = editRightsFrom(text::trim(rights));
    if (!given) return std::string(roleStatus::noSuchRight);
    EditGrant grant{text::lowerTrim(site), text::lowerTrim(lang), *given, scope};
    const auto outcome =
        db::tryInOwnTransaction(host_, "setEditRights of " + std::to_string(roleId), status::failed,
                                [&](auto& own) { return writeRights(own, actor, roleId, grant); });
    if (outcome.isCommitted)
        recordChange("setEditRights", advId, "save",
                     "Role " + quoted(roleNameOf(connection(), roleId).value_or("")) + " " + told(grant));
    return outcome.value;
}

std::string registers::setAdvancedRight(int roleId, int entry, const std::string& site,
                                        const std::string& lang, bool view, bool edit, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const EntryGrant grant{entry, text::lowerTrim(site), text::lowerTrim(lang), view, edit};
    const auto outcome =
        db::tryInOwnTransaction(host_, "setAdvancedRight of " + std::to_string(roleId), status::failed,
                                [&](auto& own) { return writeEntry(own, actor, roleId, grant); });
    if (outcome.isCommitted)
        recordChange("setAdvancedRight", advId, "save",
                     "Role " + quoted(roleNameOf(connection(), roleId).value_or("")) + " " + told(grant));
    return outcome.value;
}

std::string registers::setLoginRole(int loginId, int roleId, bool has, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const auto outcome = db::tryInOwnTransaction(host_, "setLoginRole of " + std::to_string(loginId),
                                                 status::failed, [&](auto& own) {
                                                     return writeHolding(own, actor, {loginId, roleId, has});
                                                 });
    if (outcome.isCommitted)
        recordChange("setLoginRole", advId, "save",
                     "Login " + quoted(fullnameOf(connection(), loginId)) +
                         (has ? " has the role " : " no longer has the role ") +
                         quoted(roleNameOf(connection(), roleId).value_or("")));
    return outcome.value;
}

}  // namespace torvex
