#include "administration/SearchProperties.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectProperties =
    "select a.search_pageId, a.search_properties from TORVEX_SEARCH a "
    "inner join TORVEX_PAGES_DESIGN b on b.pageId = a.search_pageId where b.nodeId >= ? and b.nodeId < ?";
constexpr std::string_view updateProperties =
    "update TORVEX_SEARCH set search_properties = ? where search_pageId = ?";

constexpr std::array<std::string_view, 8> reserved{
    "ALL", "- template defined -", "CONTENTS", "Author", "Filename", "Keywords", "Subject", "Title"};

bool isReserved(std::string_view name) {
    return std::ranges::any_of(reserved,
                               [name](std::string_view other) { return text::equals(name, other); });
}

std::string betweenCommas(std::string_view name) {
    return "," + std::string(name) + ",";
}

using Settings = std::vector<std::pair<PageId, std::string>>;

Settings settingsWith(db::Connection& connection, std::string_view site, std::string_view name) {
    Settings found;
    auto rows = connection.query(selectProperties, {site, endOfPrefix(site)});
    while (rows.next()) {
        const std::string before = rows.text("search_properties");
        std::string after = withoutSearchProperty(before, name);
        if (after != before) found.emplace_back(rows.number("search_pageId"), std::move(after));
    }
    return found;
}

}  // namespace

std::string withoutSearchProperty(std::string_view properties, std::string_view name) {
    // Each name between commas of its own, so that neighbours are found as well.
    const std::string list = betweenCommas(text::replaceAll(text::trim(properties), ",", ",,"));
    const std::string wanted = betweenCommas(name);
    if (isReserved(name) || !text::contains(list, wanted)) return std::string(properties);
    const std::string rest = text::replaceAll(text::replaceAll(list, wanted, ""), ",,", ",");
    return rest.size() < 2 ? std::string() : rest.substr(1, rest.size() - 2);
}

void removeSearchProperty(db::Connection& transaction, std::string_view site, std::string_view name) {
    for (const auto& [pageId, properties] : settingsWith(transaction, site, name)) {
        transaction.execute(updateProperties, {properties, pageId});
    }
}

}  // namespace torvex
