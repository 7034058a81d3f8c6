// cManager: the groups of visitors.

#include <array>

#include "administration/RecordRemoval.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "records/ItemLocks.h"

namespace torvex {

namespace {

constexpr std::string_view selectName = "select name from TORVEX_USERGROUPS where groupId = ?";
constexpr std::string_view selectDescription = "select description from TORVEX_USERGROUPS where groupId = ?";
constexpr std::string_view selectEntryPage = "select entryPage from TORVEX_USERGROUPS where groupId = ?";
constexpr std::string_view selectExitPage = "select exitPage from TORVEX_USERGROUPS where groupId = ?";
constexpr std::string_view selectGroupId =
    "select groupId from TORVEX_USERGROUPS where name = ? order by groupId";

constexpr std::array<std::string_view, 5> groupRows{
    "delete from TORVEX_PAGES_GROUPS_DESIGN where groupId = ?",
    "delete from TORVEX_PAGES_GROUPS_LIVE where groupId = ?",
    "delete from TORVEX_FOLDERS_GROUPS where groupId = ?",
    "delete from TORVEX_GROUPS_USERS where groupId = ?",
    "delete from TORVEX_USERGROUPS where groupId = ?",
};

constexpr PageId noPage = -1;

std::string firstText(db::Rows rows, std::string_view column) {
    return rows.next() ? rows.text(column) : std::string();
}

PageId firstPage(db::Rows rows, std::string_view column) {
    return rows.next() ? rows.number(column, noPage) : 0;
}

/// The codes of this removal are all of its own.
namespace group {
constexpr const char* removed = "0";
constexpr const char* notLoggedIn = "1";
constexpr const char* locked = "2";
constexpr const char* failed = "99";
}  // namespace group

std::string groupCode(std::string_view code) {
    if (code.empty()) return group::removed;
    return code == record::locked ? group::locked : group::failed;
}

}  // namespace

std::string cManager::getGroupName(int groupId) try {
    return firstText(connection().query(selectName, {groupId}), "name");
} catch (...) {
    raiseFrom("getGroupName !");
}

std::string cManager::getGroupDescription(int groupId) try {
    return firstText(connection().query(selectDescription, {groupId}), "description");
} catch (...) {
    raiseFrom("getGroupDescription !");
}

int cManager::getGroupId(const std::string& groupName) try {
    auto rows = connection().query(selectGroupId, {groupName});
    return rows.next() ? static_cast<int>(rows.number("groupId")) : 0;
} catch (...) {
    raiseFrom("getGroupId !");
}

PageId cManager::getGroupEntryPage(int groupId) try {
    return firstPage(connection().query(selectEntryPage, {groupId}), "entryPage");
} catch (...) {
    raiseFrom("getGroupEntryPage !");
}

PageId cManager::getGroupExitPage(int groupId) try {
    return firstPage(connection().query(selectExitPage, {groupId}), "exitPage");
} catch (...) {
    raiseFrom("getGroupExitPage !");
}

std::string cManager::deleteGroup(int groupId, int advId) {
    if (!author_.isLoggedIn()) return group::notLoggedIn;
    return groupCode(removeRecord(
        "deleteGroup", groupId, advId, [&](db::Connection& transaction) -> db::Outcome<std::string> {
            if (!takeItem(transaction, "group", std::to_string(groupId), lockSeeker())) {
                return db::refuse(record::locked);
            }
            const std::string name = firstText(transaction.query(selectName, {groupId}), "name");
            deleteRows(transaction, groupRows, groupId);
            return db::commit("Intranet/extranet group \"" + name + '"');
        }));
}

}  // namespace torvex
