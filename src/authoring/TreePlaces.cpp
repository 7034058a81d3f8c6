// cManager: how many pages there are, and where a new one finds a place.

#include <fmt/format.h>

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view countAllLive = "select count(*) as total from TORVEX_PAGES_LIVE";
constexpr std::string_view countAllDesign = "select count(*) as total from TORVEX_PAGES_DESIGN";
constexpr std::string_view countPagesLive =
    "select count(*) as total from TORVEX_PAGES_LIVE where type = 'A' or type = 'P'";
constexpr std::string_view countPagesDesign =
    "select count(*) as total from TORVEX_PAGES_DESIGN where type = 'A' or type = 'P'";

constexpr std::string_view countChildren =
    "select count(*) as total from TORVEX_PAGES_DESIGN where parent = ?";
constexpr std::string_view countLevels =
    "select count(*) as total from TORVEX_PAGES_DESIGN "
    "where parent >= ? and parent < ? and length(parent) <= ?";

constexpr std::string_view selectChildren =
    "select nodeId from TORVEX_PAGES_DESIGN where parent = ? order by nodeId";
constexpr std::string_view selectHighestOrder =
    "select max(orderId) as highest from TORVEX_PAGES_DESIGN where parent = ? and orderId < 99";
constexpr std::string_view selectOrders =
    "select orderId from TORVEX_PAGES_DESIGN where parent = ? order by orderId";

int total(db::Rows rows) {
    return rows.next() ? static_cast<int>(rows.number("total")) : 0;
}

/// How far the rows count from 1 without a gap, and one more. `numberOf` reads a row's number.
template <typename NumberOf>
int firstFreeNumber(db::Rows rows, NumberOf numberOf) {
    int number = 1;
    while (rows.next() && numberOf(rows) == number) ++number;
    return number;
}

}  // namespace

int cManager::getPageCount(const std::string& mode, bool folders) try {
    const bool design = twinOf(mode) == Twin::Design;
    if (folders) return total(connection().query(design ? countAllDesign : countAllLive));
    return total(connection().query(design ? countPagesDesign : countPagesLive));
} catch (...) {
    raiseFrom("getPageCount !");
}

int cManager::countPages(const std::string& parentIdent, int levels) try {
    const PageIdentity parent = identify(connection(), parentIdent);
    if (!parent.isValid() || levels <= 0) return 0;
    if (levels == 1) return total(connection().query(countChildren, {parent.nodeId}));
    const double deepest = static_cast<double>(text::length(parent.nodeId)) +
                           (levels - 1.0) * static_cast<double>(PageIdentity::levelLength);
    return total(connection().query(countLevels, {parent.nodeId, endOfPrefix(parent.nodeId), deepest}));
} catch (...) {
    raiseFrom("countPages !");
}

std::string cManager::getNewChild(const std::string& parentIdent) try {
    const PageIdentity parent = identify(connection(), parentIdent);
    if (!parent.isValid()) return {};
    const int number = firstFreeNumber(
        connection().query(selectChildren, {parent.nodeId}),
        [](const db::Rows& rows) { return text::toNumber(text::last(rows.view("nodeId"), 2)); });
    if (number > systemBranch::highestBelow(parent.nodeId)) return {};
    return fmt::format("{}.{:02}", parent.nodeId, number);
} catch (...) {
    raiseFrom("getNewChild !");
}

int cManager::getNewOrderId(const std::string& pageIdent) try {
    constexpr int none = -1;
    const std::string nodeId = nodeIdFrom(connection(), pageIdent);
    if (nodeId.size() < PageIdentity::rootLength + PageIdentity::levelLength) return none;
    const std::string_view parent = parentOf(nodeId);
    const int highest = systemBranch::highestBelow(parent);
    if (!systemBranch::hasDigits(parent) && systemBranch::isRoot(nodeId)) return systemBranch::number;
    auto last = connection().query(selectHighestOrder, {parent});
    const double behindLast = (last.next() ? last.number("highest") : 0) + 1;
    if (behindLast <= highest) return static_cast<int>(behindLast);
    const int free = firstFreeNumber(connection().query(selectOrders, {parent}),
                                     [](const db::Rows& rows) { return rows.number("orderId"); });
    return free <= highest ? free : none;
} catch (...) {
    raiseFrom("getNewOrderId !");
}

}  // namespace torvex
