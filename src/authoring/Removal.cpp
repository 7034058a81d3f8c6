#include "authoring/Removal.h"

#include "authoring/OwnedRows.h"
#include "platform/db/Connection.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

/// Nobody may publish, check out or move any of them any more until this is over.
constexpr std::string_view takeBranch =
    "update TORVEX_PAGES_DESIGN set approveStatus = approveStatus where nodeId >= ? and nodeId < ?";

}  // namespace

void removeBranch(db::Connection& connection, std::string_view nodeId) {
    connection.execute(takeBranch, {nodeId, endOfPrefix(nodeId)});
    removeRowsOfBranch(connection, nodeId);
}

}  // namespace torvex
