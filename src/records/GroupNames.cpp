#include "records/GroupNames.h"

#include "platform/Errors.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectGroupId =
    "select groupId from TORVEX_USERGROUPS where name = ? order by groupId";

}  // namespace

int getGroupIdByName(db::Connection& connection, std::string_view name) try {
    constexpr int unknown = -1;
    auto rows = connection.query(selectGroupId, {name});
    return rows.next() ? static_cast<int>(rows.number("groupId")) : unknown;
} catch (...) {
    raiseFrom("getGroupIdByName !");
}

}  // namespace torvex
