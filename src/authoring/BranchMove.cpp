#include "authoring/BranchMove.h"

#include <algorithm>
#include <vector>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view takeBranch =
    "update TORVEX_PAGES_DESIGN set approveStatus = approveStatus where nodeId >= ? and nodeId < ?";

// The first page first: only it gets another place among its siblings. Those below it begin with its node and
// a point.
constexpr std::string_view moveFirstDesign =
    "update TORVEX_PAGES_DESIGN set nodeId = ?, parent = ?, orderId = ?, title = ? where nodeId = ?";
constexpr std::string_view moveFirstLive =
    "update TORVEX_PAGES_LIVE set nodeId = ?, parent = ?, orderId = ?, title = ? where nodeId = ?";
constexpr std::string_view moveBelowDesign =
    "update TORVEX_PAGES_DESIGN set nodeId = ? || substr(nodeId, cast(? as integer)), "
    "parent = ? || substr(nodeId, cast(? as integer), length(nodeId) - cast(? as integer) - 2) "
    "where nodeId >= ? and nodeId < ?";
constexpr std::string_view moveBelowLive =
    "update TORVEX_PAGES_LIVE set nodeId = ? || substr(nodeId, cast(? as integer)), "
    "parent = ? || substr(nodeId, cast(? as integer), length(nodeId) - cast(? as integer) - 2) "
    "where nodeId >= ? and nodeId < ?";

// No page was at the new place: hits there are of one that is gone, written late.
constexpr std::string_view clearHits = "delete from TORVEX_LOGGING where nodeId >= ? and nodeId < ?";
constexpr std::string_view moveHits =
    "update TORVEX_LOGGING set nodeId = ? || substr(nodeId, cast(? as integer)) "
    "where nodeId >= ? and nodeId < ?";

constexpr std::string_view selectSearchScopes =
    "select distinct search_pageScopes as scope from TORVEX_SEARCH where search_pageScopes <> ''";
constexpr std::string_view updateSearchScopes =
    "update TORVEX_SEARCH set search_pageScopes = ? where search_pageScopes = ?";
constexpr std::string_view selectRightScopes =
    "select distinct scope from TORVEX_EDIT_RIGHTS where scope <> ''";
constexpr std::string_view updateRightScopes = "update TORVEX_EDIT_RIGHTS set scope = ? where scope = ?";

void movePages(db::Connection& connection, const MoveOrder& order) {
    const std::string& from = order.source.nodeId;
    const std::string& to = order.place.nodeId;
    const int behind = static_cast<int>(text::length(from)) + 1;
    const std::string below = from + ".";
    for (const std::string_view statement : {moveFirstDesign, moveFirstLive}) {
        connection.execute(statement, {to, parentOf(to), order.place.orderId, order.title, from});
    }
    for (const std::string_view statement : {moveBelowDesign, moveBelowLive}) {
        connection.execute(statement, {to, behind, to, behind, behind, below, endOfPrefix(below)});
    }
}

void moveHitsOf(db::Connection& connection, const std::string& from, const std::string& to) {
    connection.execute(clearHits, {to, endOfPrefix(to)});
    const int behind = static_cast<int>(text::length(from)) + 1;
    connection.execute(moveHits, {to, behind, from, endOfPrefix(from)});
}

/// Equal values change together: they are rows of a table that may hold them more than once.
void moveScopes(db::Connection& connection, const MoveOrder& order, std::string_view select,
                std::string_view update) {
    std::vector<std::string> scopes;
    auto rows = connection.query(select);
    while (rows.next()) scopes.push_back(rows.text("scope"));
    for (const std::string& scope : scopes) {
        const std::string moved = movedScope(scope, order.source.nodeId, order.place.nodeId);
        if (moved != scope) connection.execute(update, {moved, scope});
    }
}

/// Whether the text at `at` is `node`, and not the beginning of something longer that lies elsewhere.
bool isNodeAt(std::string_view scope, std::size_t at, std::string_view node) {
    const std::size_t length = text::matchLength(scope, at, node);
    if (length == 0) return false;
    const std::string_view rest = scope.substr(at + length);
    return rest.empty() || std::string_view(".,+ ").find(rest.front()) != std::string_view::npos;
}

}  // namespace

void holdBranch(db::Connection& connection, std::string_view nodeId) {
    connection.execute(takeBranch, {nodeId, endOfPrefix(nodeId)});
}

void moveBranch(db::Connection& connection, const MoveOrder& order) {
    movePages(connection, order);
    moveScopes(connection, order, selectSearchScopes, updateSearchScopes);
    moveScopes(connection, order, selectRightScopes, updateRightScopes);
    // Last, as on the embedded store it keeps hits from being written until the end.
    moveHitsOf(connection, order.source.nodeId, order.place.nodeId);
}

std::string movedScope(std::string_view scope, std::string_view from, std::string_view to) {
    std::string moved;
    std::size_t at = 0;
    while (at < scope.size()) {
        if (isNodeAt(scope, at, from)) {
            moved.append(to);
            at += text::matchLength(scope, at, from);
        }
        // On to where the next entry begins.
        std::size_t next = std::min(scope.find_first_of(", ", at), scope.size());
        next = std::min(scope.find_first_not_of(", ", next), scope.size());
        moved.append(scope.substr(at, next - at));
        at = next;
    }
    return moved;
}

}  // namespace torvex
