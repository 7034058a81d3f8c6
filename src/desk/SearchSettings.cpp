// registers: what the search pages of a website decide, and what was searched from them.

#include <algorithm>
#include <array>

#include "authoring/StatusCodes.h"
#include "desk/ModuleFields.h"
#include "desk/ModuleStatus.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/HitCounter.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageId.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::size_t longestList = 2000;
/// "As many as there are", for the results on a page.
constexpr int allResults = -1;

constexpr std::string_view selectSettings =
    "select s.search_pageId, p.nodeId, p.title, s.search_catalogName, s.search_catalogLocation, "
    "s.search_serverName, s.search_webshare, s.search_includePages, s.search_includeDocuments, "
    "s.search_pageScopes, s.search_documentScopes, s.search_includeDocumentTypes, s.search_documentTypes, "
    "s.search_properties, s.search_sortOrder, s.search_maxResults, s.search_resultsPerPage, "
    "s.search_wordLength, s.search_match, s.search_derivation, s.search_security "
    "from TORVEX_SEARCH s inner join TORVEX_PAGES_DESIGN p on p.pageId = s.search_pageId "
    "where p.site = ? and p.lang = ? order by p.nodeId";
constexpr std::string_view selectWords =
    "select search_word, search_count from TORVEX_SEARCH_LOG where search_pageId = ? "
    "order by search_count desc, search_word limit ?";
constexpr std::string_view selectPage = "select title from TORVEX_PAGES_DESIGN where pageId = ?";
constexpr std::string_view selectSearch = "select search_pageId from TORVEX_SEARCH where search_pageId = ?";
constexpr std::string_view insertSearch = "insert into TORVEX_SEARCH (search_pageId) values (?)";
constexpr std::string_view updateSearch =
    "update TORVEX_SEARCH set search_catalogName = ?, search_catalogLocation = ?, search_serverName = ?, "
    "search_webshare = ?, search_includePages = ?, search_includeDocuments = ?, search_pageScopes = ?, "
    "search_documentScopes = ?, search_includeDocumentTypes = ?, search_documentTypes = ?, "
    "search_properties = ?, search_sortOrder = ?, search_maxResults = ?, search_resultsPerPage = ?, "
    "search_wordLength = ?, search_match = ?, search_derivation = ?, search_security = ? "
    "where search_pageId = ?";

using Outcome = db::Outcome<std::string>;

struct Settings {
    std::string catalog;
    int location;
    std::string server;
    std::string share;
    int pages;
    int documents;
    std::string pageScopes;
    std::string documentScopes;
    int types;
    std::string documentTypes;
    std::string properties;
    int order;
    int most;
    int onPage;
    int wordLength;
    int match;
    int derivation;
    int security;
};

/// Each is one of its column's choices, of which 0 leaves it to the form.
bool areChoices(const Settings& given) {
    struct Choice {
        int value;
        int most;
    };
    const std::array<Choice, 8> choices{{{given.location, 1},
                                         {given.pages, 4},
                                         {given.documents, 4},
                                         {given.types, 2},
                                         {given.order, 2},
                                         {given.match, 3},
                                         {given.derivation, 3},
                                         {given.security, 2}}};
    return std::ranges::all_of(choices, [](const Choice& one) { return isOneOf(one.value, one.most); });
}

/// A list without blanks around its items, and without empty ones.
std::string cleanList(std::string_view list) {
    std::string clean;
    const std::string given = cleanField(list, longestList);
    for (std::string_view rest = given; !rest.empty();) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        const std::string_view one = text::trim(rest.substr(0, end));
        if (!one.empty()) clean.append(clean.empty() ? "" : ",").append(one);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return clean;
}

Outcome writeSettings(db::Connection& own, PageId pageId, const Settings& given, std::string& title) {
    lockRegisters(own);
    {
        auto page = own.query(selectPage, {pageId});
        if (!page.next()) return db::refuse(moduleStatus::gone);
        title = page.text("title");
    }
    if (given.catalog.empty()) return db::refuse(moduleStatus::nameMissing);
    if (!areChoices(given)) return db::refuse(moduleStatus::noSuchChoice);
    if (given.location == 1 && (given.server.empty() || given.share.empty()))
        return db::refuse(moduleStatus::noAddress);
    if (!own.query(selectSearch, {pageId}).next()) own.execute(insertSearch, {pageId});
    own.execute(updateSearch, {given.catalog, given.location, given.server, given.share, given.pages,
                               given.documents, given.pageScopes, given.documentScopes, given.types,
                               given.documentTypes, given.properties, given.order, given.most, given.onPage,
                               given.wordLength, given.match, given.derivation, given.security, pageId});
    return db::commit(status::done);
}

}  // namespace

Value registers::getSearches(const std::string& site, const std::string& lang) try {
    const ModulePlace place = placeFrom(site, lang);
    return db::gridOf(connection().query(selectSettings, {place.site, place.lang}));
} catch (...) {
    raiseFrom("getSearches !");
}

Value registers::getSearchWords(double pageId) try {
    host_.hits.flush();
    return db::gridOf(connection().query(selectWords, {pageId, listedAtOnce}));
} catch (...) {
    raiseFrom("getSearchWords !");
}

std::string registers::saveSearch(double pageId, const std::string& catalogName, int catalogLocation,
                                  const std::string& serverName, const std::string& webshare,
                                  int includePages, int includeDocuments, const std::string& pageScopes,
                                  const std::string& documentScopes, int includeDocumentTypes,
                                  const std::string& documentTypes, const std::string& properties,
                                  int sortOrder, int maxResults, int resultsPerPage, int wordLength,
                                  int match, int derivation, int security, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const Settings given{.catalog = cleanField(catalogName, longestModuleName),
                         .location = catalogLocation,
                         .server = cleanField(serverName, longestModuleName),
                         .share = cleanField(webshare, longestModuleText),
                         .pages = includePages,
                         .documents = includeDocuments,
                         .pageScopes = cleanList(pageScopes),
                         .documentScopes = cleanList(documentScopes),
                         .types = includeDocumentTypes,
                         .documentTypes = cleanList(documentTypes),
                         .properties = cleanList(properties),
                         .order = sortOrder,
                         .most = shortNumber(maxResults),
                         .onPage = shortNumber(resultsPerPage, allResults),
                         .wordLength = shortNumber(wordLength),
                         .match = match,
                         .derivation = derivation,
                         .security = security};
    std::string title;
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveSearch of page " + text::fromNumber(pageId), status::failed,
                                [&](auto& own) { return writeSettings(own, pageId, given, title); });
    if (outcome.isCommitted)
        recordModule("saveSearch", advId, false, false, "Search of the page \"" + title + '"');
    return outcome.value;
}

}  // namespace torvex
