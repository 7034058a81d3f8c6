// desk: what there is with some words in it, while they are typed.

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <span>

#include "accounts/Actor.h"
#include "accounts/AdminEntries.h"
#include "accounts/AdvancedRights.h"
#include "accounts/EditReach.h"
#include "desk/FirstRow.h"
#include "desk/FoundPages.h"
#include "desk/desk.h"
#include "media/MediaKind.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "search/catalogue/Words.h"

namespace torvex {

namespace {

constexpr std::size_t findColumns = 10;
constexpr int mostOfAKind = 30;
constexpr std::size_t mostWords = 10;

constexpr std::string_view selectSites = "select site from TORVEX_SITES order by site";

// The conditions on words stand between these two parts, one for each.
constexpr std::string_view selectMedia =
    "select {prefix}_site as site, {prefix}_title as title, {prefix}_filename as filename from {files} "
    "where {prefix}_site in (";
constexpr std::string_view holdsWord =
    " and ({prefix}_title like ? or {prefix}_filename like ? or {prefix}_alt like ?)";
constexpr std::string_view mediaOrder =
    " order by {prefix}_title, {prefix}_site, {prefix}_filename limit ? offset ?";

std::vector<std::string> listOf(std::string_view text) {
    std::vector<std::string> entries;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t comma = std::min(text.find(',', from), text.size());
        if (const auto entry = text::lowerTrim(text.substr(from, comma - from)); !entry.empty())
            entries.push_back(entry);
        from = comma + 1;
    }
    return entries;
}

/// Without a list all are wanted.
bool isWanted(const std::vector<std::string>& kinds, std::string_view kind) {
    return kinds.empty() || std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

/// Of `like`, for words as they were typed: files are looked for by any part of a name. Words are letters and
/// digits, so that no sign of theirs means anything in a pattern.
std::vector<std::string> patternsOf(const std::string& words) {
    std::vector<std::string> patterns;
    for (const catalogue::Word& word : catalogue::wordsOf(words)) {
        if (patterns.size() == mostWords) break;
        patterns.push_back("%" + words.substr(word.begin, word.end - word.begin) + "%");
    }
    return patterns;
}

bool hasTreeOf(const EditReach& reach, const std::string& site) {
    return reach.isEverywhere ||
           std::any_of(reach.nodes.begin(), reach.nodes.end(),
                       [&](const std::string& node) { return text::equals(siteOf(node), site); });
}

/// Where the caller works with pages, or may look at the files.
std::vector<std::string> sitesFor(db::Connection& connection, const Actor& actor, const EditReach& reach,
                                  MediaKind kind, const std::string& wanted) {
    const int entry = kind == MediaKind::Images ? adminEntry::images : adminEntry::documents;
    std::vector<std::string> sites;
    auto rows = connection.query(selectSites);
    while (rows.next()) {
        if (wanted.empty() || text::equals(rows.view("site"), wanted)) sites.push_back(rows.text("site"));
    }
    std::erase_if(sites, [&](const std::string& site) {
        return !hasTreeOf(reach, site) && !mayUseEntry(connection, actor, "view", entry, site);
    });
    return sites;
}

/// Where in the list one begins.
struct MediaSearch {
    std::vector<std::string> patterns;
    std::vector<std::string> sites;
    int from;
};

std::string statementOf(const MediaSearch& search, MediaKind kind) {
    std::string statement(selectMedia);
    for (std::size_t i = 0; i < search.sites.size(); ++i) statement += i == 0 ? "?" : ", ?";
    statement += ")";
    for (std::size_t i = 0; i < search.patterns.size(); ++i) statement += holdsWord;
    return statementFor(kind, statement.append(mediaOrder));
}

void addMedia(ResultGrid& grid, db::Connection& connection, MediaKind kind, const MediaSearch& search) {
    if (search.sites.empty() || search.patterns.empty()) return;
    std::vector<db::Parameter> values;
    for (const std::string& site : search.sites) values.emplace_back(std::string_view(site));
    for (const std::string& pattern : search.patterns)
        values.insert(values.end(), 3, std::string_view(pattern));
    values.insert(values.end(), {mostOfAKind, search.from});
    const std::string_view word = kind == MediaKind::Images ? "image" : "document";
    auto rows = connection.query(statementOf(search, kind), values);
    while (rows.next()) {
        grid.add(
            {word, 0, rows.text("site"), "", "", rows.text("title"), rows.text("filename"), "", true, ""});
    }
}

void addPages(ResultGrid& grid, const std::vector<FoundPage>& pages) {
    for (const FoundPage& page : pages) {
        grid.add({"page", page.pageId, page.site, page.lang, page.nodeId, page.title, page.path, page.state,
                  page.isLive, page.excerpt});
    }
}

}  // namespace

Value desk::find(const std::string& words, const std::string& kinds, const std::string& site,
                 const std::string& lang, const std::string& filters, double from) try {
    const Actor actor = actorOf(host_);
    const auto first = firstRow(from);
    if (!actor.isLoggedIn() || !first) return {};
    const auto wanted = listOf(kinds);
    const auto wantedFilters = listOf(filters);
    const std::string inSite = text::lowerTrim(site);
    const EditReach reach = editReachOf(connection(), actor, editTasks);
    ResultGrid grid(findColumns);
    if (isWanted(wanted, "page")) {
        const PageSearch search{words, inSite, text::lowerTrim(lang), wantedFilters, *first, mostOfAKind};
        addPages(grid, foundPages(connection(), actor, reach, search));
    }
    for (const auto& [kind, word] :
         {std::pair(MediaKind::Images, "image"), std::pair(MediaKind::Documents, "document")}) {
        // Filters are for pages: no file has what they ask for.
        if (!isWanted(wanted, word) || !wantedFilters.empty()) continue;
        addMedia(grid, connection(), kind,
                 {patternsOf(words), sitesFor(connection(), actor, reach, kind, inSite), *first});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("find !");
}

}  // namespace torvex
