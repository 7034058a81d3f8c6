#include "search/SearchColumns.h"

#include <array>
#include <iterator>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "search/SearchError.h"
#include "search/SearchTexts.h"
#include "search/extraction/Reading.h"

namespace torvex {

namespace {

constexpr std::string_view selectTags =
    "select metaData_name from TORVEX_METADATA where metaData_site = ? order by metaData_name";

using catalogue::column::ofDocument;

constexpr std::array<std::string_view, 6> fileColumns = {"filename", "path", "size",
                                                         "write",    "rank", "characterization"};
/// Tags that fill a column of documents.
constexpr std::array<std::string_view, 3> documentTags = {"subject", "author", "keywords"};
/// Keys of an order that stand for a column of documents.
constexpr std::array<std::string_view, 6> shortKeys = {"title",   "keywords", "author",
                                                       "subject", "comments", "company"};

std::string orderKey(const std::string& given, const std::vector<std::string>& extra) {
    const std::string key = isAmong(shortKeys, given) ? "doc" + text::lower(given) : given;
    if (text::startsWith(key, "rank")) return "rank[d]";
    const bool isColumn = isAmong(ofDocument, key) || text::equals(key, "filename") || isAmong(extra, key);
    return isColumn ? key : std::string();
}

}  // namespace

std::vector<std::string> metaTagNames(db::Connection& connection, std::string_view site) {
    std::vector<std::string> names;
    auto rows = connection.query(selectTags, {site});
    while (rows.next()) names.push_back(rows.text("metaData_name"));
    return names;
}

std::vector<std::string> extraColumns(HostContext& host, db::Connection& connection, std::string_view site) {
    return asSearchStep(host, "Error initializing query columns !", [&] {
        std::vector<std::string> columns;
        for (const std::string& tag : metaTagNames(connection, site)) {
            std::string name = text::lower(tag);
            std::erase(name, ' ');
            if (name.empty() || isAmong(documentTags, name) || isAmong(ofDocument, name) ||
                isAmong(fileColumns, name) || isAmong(columns, name))
                continue;
            columns.push_back(name);
        }
        return columns;
    });
}

std::vector<std::string> readColumns(const std::vector<std::string>& extra) {
    std::vector<std::string> columns(std::begin(ofDocument), std::end(ofDocument));
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
