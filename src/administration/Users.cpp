// cManager: the accounts of visitors.

#include <array>

#include "administration/RecordRemoval.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"
#include "records/Labels.h"

namespace torvex {

namespace {

constexpr std::string_view selectNames = "select lastname, firstname from TORVEX_USERS where userId = ?";

/// A user may be in a group twice.
constexpr std::string_view selectGroups =
    "select groupId, name, case when groupId in (select groupId from TORVEX_GROUPS_USERS where userId = ?) "
    "then 1 else 0 end as member from TORVEX_USERGROUPS "
    "where groupId > 1 and name <> 'everybody' and name <> 'inherited' order by name, groupId";

constexpr std::array<std::string_view, 4> userRows{
    "delete from TORVEX_USER_RECOVERY_CODES where userId = ?",
    "delete from TORVEX_USER_FACTORS where userId = ?",
    "delete from TORVEX_GROUPS_USERS where userId = ?",
    "delete from TORVEX_USERS where userId = ?",
};

}  // namespace

std::string cManager::getUserFullname(double userId) try {
    auto rows = connection().query(selectNames, {userId});
    const std::string both = rows.next() ? rows.text("lastname") + ' ' + rows.text("firstname") : "";
    const std::string_view name = text::trim(both);
    return name.empty() ? bracketedWord(label::unknownLogin) : std::string(name);
} catch (...) {
    raiseFrom("getUserFullname !");
}

Value cManager::getUserGroups(double userId) try {
    return db::gridOf(connection().query(selectGroups, {userId}), 1);
} catch (...) {
    raiseFrom("getUserGroups !");
}

std::string cManager::deleteUser(double userId, int advId) {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    return removeRecord("deleteUser", userId, advId,
                        [&](db::Connection& transaction) -> db::Outcome<std::string> {
                            // One who is gone has a word for a name, and no row to lock.
                            const std::string name = getUserFullname(userId);
                            if (name.empty()) return db::refuse(record::notThere);
                            if (!takeItem(transaction, "user", text::fromNumber(userId), lockSeeker())) {
                                return db::refuse(record::locked);
                            }
                            deleteRows(transaction, userRows, userId);
                            return db::commit("Intranet/extranet user \"" + name + '"');
                        });
}

}  // namespace torvex
