// registers: the groups of visitors.

#include "records/Groups.h"

#include "accounts/Actor.h"
#include "authoring/StatusCodes.h"
#include "desk/RecordFields.h"
#include "desk/RecordLock.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr PageId noPage = -1;

namespace group {
using namespace recordStatus;
constexpr std::string_view noSuchPage = "-5";
}  // namespace group

/// What a group guards counts once, be it in the design, live, or in both.
constexpr std::string_view selectGroups =
    "select g.groupId, g.name, g.description, g.entryPage, n.title as entryTitle, g.exitPage, "
    "x.title as exitTitle, "
    "(select count(distinct u.userId) from TORVEX_GROUPS_USERS u where u.groupId = g.groupId) as users, "
    "(select count(*) from (select p.pageId from TORVEX_PAGES_GROUPS_DESIGN p where p.groupId = g.groupId "
    "union select l.pageId from TORVEX_PAGES_GROUPS_LIVE l where l.groupId = g.groupId) guarded) as pages, "
    "(select count(*) from TORVEX_FOLDERS_GROUPS f where f.groupId = g.groupId) as folders "
    "from TORVEX_USERGROUPS g left outer join TORVEX_PAGES_DESIGN n on n.pageId = g.entryPage "
    "left outer join TORVEX_PAGES_DESIGN x on x.pageId = g.exitPage "
    "where g.groupId > 1 and g.name <> 'everybody' and g.name <> 'inherited' order by g.name, g.groupId";
constexpr std::string_view selectGroup = "select name from TORVEX_USERGROUPS where groupId = ?";
constexpr std::string_view selectNamesake =
    "select groupId from TORVEX_USERGROUPS where name = ? and groupId <> ? order by groupId desc";
constexpr std::string_view insertGroup =
    "insert into TORVEX_USERGROUPS (name, description, entryPage, exitPage, lock) values (?, ?, ?, ?, '')";
constexpr std::string_view updateGroup =
    "update TORVEX_USERGROUPS set name = ?, description = ?, entryPage = ?, exitPage = ?, lock = '' "
    "where groupId = ?";

using Outcome = db::Outcome<std::string>;

struct GroupChange {
    std::string name;
    std::string description;
    std::string entryPage;
    std::string exitPage;
};

/// By these names lists tell the groups of the system.
bool isReserved(std::string_view name) {
    return text::equals(name, "everybody") || text::equals(name, "inherited");
}

bool hasNamesake(db::Connection& connection, const std::string& name, int groupId) {
    return isReserved(name) || connection.query(selectNamesake, {name, groupId}).next();
}

/// The page of a text, -1 for none; 0 when there is no such page.
PageId pageOf(db::Connection& connection, const std::string& ident) {
    const std::string_view given = text::trim(ident);
    if (given.empty() || given == "-1") return noPage;
    const PageIdentity page = identify(connection, ident);
    return page.isValid() ? page.pageId : 0;
}

Outcome writeGroup(db::Connection& own, const Actor& actor, int groupId, const GroupChange& change) {
    lockRegisters(own);
    if (groupId != 0 && (groupId <= everybodyGroup || !own.query(selectGroup, {groupId}).next()))
        return db::refuse(group::gone);
    if (change.name.empty()) return db::refuse(group::nameMissing);
    if (hasNamesake(own, change.name, groupId)) return db::refuse(group::nameTaken);
    const PageId entry = pageOf(own, change.entryPage);
    const PageId exit = pageOf(own, change.exitPage);
    if (entry == 0 || exit == 0) return db::refuse(group::noSuchPage);
    if (groupId == 0) {
        own.execute(insertGroup, {change.name, change.description, entry, exit});
        auto rows = own.query(selectNamesake, {change.name, 0});
        return db::commit(rows.next() ? rows.text("groupId") : std::string());
    }
    const RecordLock lock(own, actor, "group", groupId);
    if (!lock.isHeld()) return db::refuse(group::openElsewhere);
    own.execute(updateGroup, {change.name, change.description, entry, exit, groupId});
    return db::commit(std::to_string(groupId));
}

}  // namespace

Value registers::getGroups() try { return db::gridOf(connection().query(selectGroups)); } catch (...) {
    raiseFrom("getGroups !");
}

std::string registers::saveGroup(int groupId, const std::string& name, const std::string& description,
                                 const std::string& entryPage, const std::string& exitPage, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const GroupChange change{recordName(name), recordDescription(description), entryPage, exitPage};
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveGroup of " + std::to_string(groupId), status::failed,
                                [&](auto& own) { return writeGroup(own, actor, groupId, change); });
    if (!outcome.isCommitted) return outcome.value;
    if (groupId == 0) {
        recordChange("saveGroup", advId, "new", "New intranet/extranet group \"" + change.name + '"');
    } else {
        recordChange("saveGroup", advId, "save",
                     "Intranet/extranet group \"" + change.name + "\" has been updated");
    }
    return outcome.value;
}

}  // namespace torvex
