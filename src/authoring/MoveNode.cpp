// cManager: two siblings change places.

#include <optional>

#include "authoring/RunReport.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view operationName = "moveNode";

/// No such place, no such direction.
constexpr std::string_view notMovable = "-1";
/// They stand as they were wanted.
constexpr std::string_view settled;

constexpr std::string_view takeRow = "update TORVEX_PAGES_DESIGN set orderId = orderId where nodeId = ?";
constexpr std::string_view selectOrder = "select orderId from TORVEX_PAGES_DESIGN where nodeId = ?";
constexpr std::string_view updateDesign = "update TORVEX_PAGES_DESIGN set orderId = ? where nodeId = ?";
constexpr std::string_view updateLive =
    "update TORVEX_PAGES_LIVE set orderId = ? "
    "where pageId = (select pageId from TORVEX_PAGES_DESIGN where nodeId = ?)";

/// A root has no siblings, and a system branch keeps its place behind them.
bool hasPlaceAmongSiblings(std::string_view nodeId) {
    if (nodeId.size() < PageIdentity::rootLength + PageIdentity::levelLength) return false;
    return !systemBranch::isRoot(nodeId) || systemBranch::hasDigits(parentOf(nodeId));
}

struct Swap {
    std::string from;
    std::string to;
    bool down = true;
};

std::optional<double> orderOf(db::Connection& connection, std::string_view nodeId) {
    auto rows = connection.query(selectOrder, {nodeId});
    if (!rows.next()) return std::nullopt;
    return rows.number("orderId");
}

/// Both rows are kept from others, always in the same order.
void take(db::Connection& connection, const Swap& swap) {
    const bool inOrder = text::compare(swap.from, swap.to) < 0;
    connection.execute(takeRow, {inOrder ? swap.from : swap.to});
    connection.execute(takeRow, {inOrder ? swap.to : swap.from});
}

void place(db::Connection& connection, std::string_view nodeId, double orderId) {
    connection.execute(updateDesign, {orderId, nodeId});
    connection.execute(updateLive, {orderId, nodeId});
}

/// "" or a code.
db::Outcome<std::string> run(db::Connection& connection, const Swap& swap) {
    take(connection, swap);
    const auto from = orderOf(connection, swap.from);
    const auto to = orderOf(connection, swap.to);
    if (!from || !to) return db::refuse(notMovable);
    if (swap.down ? *from >= *to : *from <= *to) return db::refuse(settled);
    place(connection, swap.from, *to);
    place(connection, swap.to, *from);
    return db::commit(settled);
}

}  // namespace

std::string cManager::moveNode(const std::string& nodeIdentFrom, const std::string& nodeIdentTo,
                               const std::string& direction) try {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const bool down = text::equals(direction, "down");
    const Swap swap{nodeIdFrom(connection(), nodeIdentFrom), nodeIdFrom(connection(), nodeIdentTo), down};
    if (!hasPlaceAmongSiblings(swap.from) || !hasPlaceAmongSiblings(swap.to)) return std::string(notMovable);
    if (!down && !text::equals(direction, "up")) return std::string(notMovable);
    const auto outcome = db::tryInOwnTransaction(host_, runOn(operationName, swap.from), status::failed,
                                                 [&](db::Connection& own) { return run(own, swap); });
    if (outcome.isCommitted) {
        followUp(host_, operationName, swap.from,
                 [&] { addPageLine(pageIdFrom(connection(), swap.from), down ? "move down" : "move up"); });
    }
    return outcome.value;
} catch (...) {
    raiseFrom("moveNode !");
}

}  // namespace torvex
