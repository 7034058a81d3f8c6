#include "search/MovedSnapshots.h"

#include <fmt/format.h>
#include <string>
#include <vector>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "replication/SharedFiles.h"
#include "search/SnapshotFiles.h"

namespace torvex {

namespace {

constexpr std::string_view selectBranch =
    "select nodeId from TORVEX_PAGES_LIVE where nodeId >= ? and nodeId < ? and type <> 'F' "
    "and nodeId not like '%.99%' order by nodeId";

std::vector<std::string> pagesWithFiles(db::Connection& connection, std::string_view nodeId) {
    std::vector<std::string> nodes;
    auto rows = connection.query(selectBranch, {nodeId, endOfPrefix(nodeId)});
    while (rows.next()) nodes.push_back(rows.text("nodeId"));
    return nodes;
}

}  // namespace

void moveSnapshots(HostContext& host, db::Connection& connection, std::string_view from,
                   std::string_view to) {
    SharedFiles files(host);
    for (const std::string& node : pagesWithFiles(connection, to)) {
        const std::string before = std::string(from) + node.substr(to.size());
        try {
            files.moveFile(snapshotFile(host, before), snapshotFile(host, node));
        } catch (const std::exception& error) {
            host.log.warn(fmt::format("the file of page {} stays at {}: {}", node, before,
                                      text::replaceAll(error.what(), "\r\n", " ")));
        }
    }
    files.replicate();
}

}  // namespace torvex
