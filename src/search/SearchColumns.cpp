#include "search/SearchColumns.h"

#include <algorithm>
#include <array>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "search/SearchError.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

constexpr std::string_view selectTags =
    "select metaData_name from TORVEX_METADATA where metaData_site = ? order by metaData_name";

constexpr std::array<std::string_view, 6> documentColumns = {"doctitle",   "dockeywords", "docauthor",
                                                             "docsubject", "doccomments", "doccompany"};
constexpr std::array<std::string_view, 6> fileColumns = {"filename", "path", "size",
                                                         "write",    "rank", "characterization"};
/// Tags that fill a column of documents.
constexpr std::array<std::string_view, 3> documentTags = {"subject", "author", "keywords"};
/// Keys of an order that stand for a column of documents.
constexpr std::array<std::string_view, 6> shortKeys = {"title",   "keywords", "author",
                                                       "subject", "comments", "company"};

template <typename Names>
bool isAmong(const Names& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [name](const auto& other) { return text::equals(other, name); });
}

std::string orderKey(const std::string& given, const std::vector<std::string>& extra) {
    const std::string key = isAmong(shortKeys, given) ? "doc" + text::lower(given) : given;
    if (text::startsWith(key, "rank")) return "rank[d]";
    const bool isColumn =
        isAmong(documentColumns, key) || text::equals(key, "filename") || isAmong(extra, key);
    return isColumn ? key : std::string();
}

}  // namespace

std::vector<std::string> extraColumns(HostContext& host, db::Connection& connection, std::string_view site) {
    return asSearchStep(host, "Error initializing query columns !", [&] {
        std::vector<std::string> columns;
        auto rows = connection.query(selectTags, {site});
        while (rows.next()) {
            std::string name = text::lower(rows.text("metaData_name"));
            std::erase(name, ' ');
            if (name.empty() || isAmong(documentTags, name) || isAmong(documentColumns, name) ||
                isAmong(fileColumns, name) || isAmong(columns, name))
                continue;
            columns.push_back(name);
        }
        return columns;
    });
}

std::vector<std::string> readColumns(const std::vector<std::string>& extra) {
    std::vector<std::string> columns(documentColumns.begin(), documentColumns.end());
    columns.insert(columns.end(), extra.begin(), extra.end());
    return columns;
}

std::string catalogueOrder(const std::string& sortOrder, const std::vector<std::string>& extra) {
    std::vector<std::string> keys;
    for (const std::string& given : listItems(sortOrder)) {
        const std::string key = orderKey(given, extra);
        if (!key.empty()) keys.push_back(key);
    }
    return joinedList(keys);
}

}  // namespace torvex
