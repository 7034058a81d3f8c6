#include "authoring/FreePlaces.h"

#include <fmt/format.h>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view takeRow =
    "update TORVEX_PAGES_DESIGN set approveStatus = approveStatus where pageId = ? and nodeId = ?";

constexpr std::string_view selectChildren =
    "select nodeId from TORVEX_PAGES_DESIGN where parent = ? order by nodeId";
constexpr std::string_view selectHighestOrder =
    "select max(orderId) as highest from TORVEX_PAGES_DESIGN where parent = ? and orderId < 99";
constexpr std::string_view selectOrders =
    "select orderId from TORVEX_PAGES_DESIGN where parent = ? order by orderId";

constexpr std::string_view selectTitledLive =
    "select pageId from TORVEX_PAGES_LIVE where parent = ? and title = ?";
constexpr std::string_view selectTitledDesign =
    "select pageId from TORVEX_PAGES_DESIGN where parent = ? and title = ?";

constexpr std::string_view selectOthersTitledLive =
    "select pageId from TORVEX_PAGES_LIVE where parent = ? and title = ? and pageId <> ?";
constexpr std::string_view selectOthersTitledDesign =
    "select pageId from TORVEX_PAGES_DESIGN where parent = ? and title = ? and pageId <> ?";

/// With the word behind it, of four letters, in brackets, a title of this length has the most that one may.
constexpr std::size_t longestToExtend = 43;

/// How far the rows count from 1 without a gap, and one more. `numberOf` reads a row's number.
template <typename NumberOf>
int firstFreeNumber(db::Rows rows, NumberOf numberOf) {
    int number = 1;
    while (rows.next() && numberOf(rows) == number) ++number;
    return number;
}

std::optional<FreePlace> placeAt(db::Connection& connection, std::string nodeId) {
    if (nodeId.empty()) return std::nullopt;
    const int orderId = newOrderOf(connection, nodeId);
    if (orderId < 0) return std::nullopt;
    return FreePlace{std::move(nodeId), orderId};
}

}  // namespace

bool holdPage(db::Connection& connection, const PageIdentity& page) {
    return connection.execute(takeRow, {page.pageId, page.nodeId}) > 0;
}

std::string newChildOf(db::Connection& connection, std::string_view parent) {
    const int number = firstFreeNumber(connection.query(selectChildren, {parent}), [](const db::Rows& rows) {
        return text::toNumber(text::last(rows.view("nodeId"), 2));
    });
    if (number > systemBranch::highestBelow(parent)) return {};
    return fmt::format("{}.{:02}", parent, number);
}

int newOrderOf(db::Connection& connection, std::string_view nodeId) {
    constexpr int none = -1;
    if (nodeId.size() < PageIdentity::rootLength + PageIdentity::levelLength) return none;
    const std::string_view parent = parentOf(nodeId);
    const int highest = systemBranch::highestBelow(parent);
    if (!systemBranch::hasDigits(parent) && systemBranch::isRoot(nodeId)) return systemBranch::number;
    auto last = connection.query(selectHighestOrder, {parent});
    const double behindLast = (last.next() ? last.number("highest") : 0) + 1;
    if (behindLast <= highest) return static_cast<int>(behindLast);
    const int free = firstFreeNumber(connection.query(selectOrders, {parent}),
                                     [](const db::Rows& rows) { return rows.number("orderId"); });
    return free <= highest ? free : none;
}

std::optional<FreePlace> placeForChild(db::Connection& connection, std::string_view parent) {
    return placeAt(connection, newChildOf(connection, parent));
}

std::optional<FreePlace> placeForSystemBranch(db::Connection& connection, std::string_view parent) {
    return placeAt(connection, systemBranch::below(parent));
}

bool isTitled(db::Connection& connection, std::string_view parent, std::string_view title, Twin twin,
              std::optional<PageId> except) {
    const bool design = twin == Twin::Design;
    if (!except)
        return connection.query(design ? selectTitledDesign : selectTitledLive, {parent, title}).next();
    const auto statement = design ? selectOthersTitledDesign : selectOthersTitledLive;
    return connection.query(statement, {parent, title, *except}).next();
}

std::optional<std::string> freeTitle(db::Connection& connection, std::string_view parent, std::string title,
                                     std::string_view word) {
    while (isTitled(connection, parent, title, Twin::Live) ||
           isTitled(connection, parent, title, Twin::Design)) {
        if (text::length(title) > longestToExtend) return std::nullopt;
        title.append(" (").append(word).append(")");
    }
    return title;
}

}  // namespace torvex
