#include "search/SearchRecords.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "platform/db/ValueList.h"
#include "platform/text/Text.h"
#include "records/PageId.h"
#include "records/PageIdentity.h"
#include "search/SearchColumns.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

constexpr std::string_view everyProperty =
    "- template defined -,ALL,CONTENTS,Author,Comments,Company,Filename,Keywords,Subject,Title";

constexpr std::string_view deleteWords =
    "delete from TORVEX_SEARCH_LOG where search_pageId not in (select pageId from TORVEX_PAGES_LIVE)";
constexpr std::string_view deleteWordsOfDays =
    "delete from TORVEX_SEARCH_DAYS where search_pageId not in (select pageId from TORVEX_PAGES_LIVE)";
constexpr std::string_view deleteSettings =
    "delete from TORVEX_SEARCH where search_pageId not in (select pageId from TORVEX_PAGES_LIVE)";
constexpr std::string_view selectSettings =
    "select search_pageId, search_pageScopes, search_documentScopes from TORVEX_SEARCH "
    "order by search_pageId";
constexpr std::string_view selectNodes = "select nodeId from TORVEX_PAGES_DESIGN where nodeId";
constexpr std::string_view selectFolders =
    "select fld_site, fld_id from TORVEX_DOCUMENTS_FOLDERS where fld_id";
constexpr std::string_view updatePageScopes =
    "update TORVEX_SEARCH set search_pageScopes = ? where search_pageId = ?";
constexpr std::string_view updateDocumentScopes =
    "update TORVEX_SEARCH set search_documentScopes = ? where search_pageId = ?";
constexpr std::string_view includeNoPages =
    "update TORVEX_SEARCH set search_includePages = 1 where search_pageId = ?";
constexpr std::string_view includeNoDocuments =
    "update TORVEX_SEARCH set search_includeDocuments = 1 where search_pageId = ?";

constexpr std::size_t siteLength = 2;

using Folder = std::pair<std::string, std::string>;  ///< site and id

struct ScopeLists {
    PageId pageId = 0;
    std::string pages;
    std::string documents;
};

std::string withoutSigns(std::string scope) {
    while (scope.ends_with('+')) scope.pop_back();
    return text::lowerTrim(scope);
}

Folder folderOf(const std::string& scope) {
    std::string path = withoutSigns(scope);
    std::erase_if(path, [](char c) { return c == '/' || c == '\\'; });
    const std::size_t site = std::min(siteLength, path.size());
    return {path.substr(0, site), path.substr(site)};
}

std::vector<ScopeLists> storedLists(db::Connection& connection) {
    std::vector<ScopeLists> lists;
    auto rows = connection.query(selectSettings);
    while (rows.next()) {
        lists.push_back({rows.number("search_pageId"), rows.text("search_pageScopes"),
                         rows.text("search_documentScopes")});
    }
    return lists;
}

std::set<std::string> nodesThere(db::Connection& connection, const std::vector<ScopeLists>& lists) {
    static const std::string statement = db::withList(selectNodes);
    std::set<std::string> wanted;
    for (const ScopeLists& list : lists) {
        for (const std::string& scope : listItems(list.pages)) wanted.insert(withoutSigns(scope));
    }
    std::set<std::string> there;
    const std::vector<db::Parameter> values(wanted.begin(), wanted.end());
    db::forEachRow(connection, statement, values,
                   [&](const db::Rows& rows) { there.insert(text::lowerTrim(rows.view("nodeId"))); });
    return there;
}

std::set<Folder> foldersThere(db::Connection& connection, const std::vector<ScopeLists>& lists) {
    static const std::string statement = db::withList(selectFolders);
    std::set<std::string> wanted;
    for (const ScopeLists& list : lists) {
        for (const std::string& scope : listItems(list.documents)) wanted.insert(folderOf(scope).second);
    }
    std::set<Folder> there;
    const std::vector<db::Parameter> values(wanted.begin(), wanted.end());
    db::forEachRow(connection, statement, values, [&](const db::Rows& rows) {
        there.emplace(text::lowerTrim(rows.view("fld_site")), text::lowerTrim(rows.view("fld_id")));
    });
    return there;
}

std::string kept(const std::string& list, const std::function<bool(const std::string&)>& isThere) {
    std::vector<std::string> items = listItems(list);
    std::erase_if(items, [&](const std::string& scope) { return !isThere(scope); });
    return joinedList(items);
}

/// The statements that store a list, and that include nothing of its kind.
struct ScopeStatements {
    std::string_view store;
    std::string_view includeNone;
};

void replaceList(db::Connection& connection, PageId pageId, const std::string& before,
                 const std::string& after, const ScopeStatements& statements) {
    if (after == before) return;
    connection.execute(statements.store, {after, pageId});
    if (after.empty()) connection.execute(statements.includeNone, {pageId});
}

}  // namespace

std::string allSearchProperties(db::Connection& connection, std::string_view site) {
    std::string list = "," + std::string(everyProperty) + ",";
    for (const std::string& name : metaTagNames(connection, site)) {
        if (!text::contains(list, "," + name + ",")) list.append(name).append(",");
    }
    return list.substr(1, list.size() - 2);
}

void cleanSearchRecords(db::Connection& connection) {
    connection.execute(deleteWords);
    connection.execute(deleteWordsOfDays);
    connection.execute(deleteSettings);
    const auto lists = storedLists(connection);
    const auto nodes = nodesThere(connection, lists);
    const auto folders = foldersThere(connection, lists);
    for (const auto& [pageId, pages, documents] : lists) {
        const std::string keptPages =
            kept(pages, [&](const std::string& scope) { return nodes.contains(withoutSigns(scope)); });
        const std::string keptDocuments =
            kept(documents, [&](const std::string& scope) { return folders.contains(folderOf(scope)); });
        replaceList(connection, pageId, pages, keptPages, {updatePageScopes, includeNoPages});
        replaceList(connection, pageId, documents, keptDocuments, {updateDocumentScopes, includeNoDocuments});
    }
}

}  // namespace torvex
