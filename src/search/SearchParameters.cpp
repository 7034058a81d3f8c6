#include "search/SearchParameters.h"

#include <algorithm>
#include <array>

#include "delivery/Access.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/ShortInteger.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "search/SearchError.h"
#include "search/SearchErrors.h"
#include "search/SearchForm.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

constexpr std::string_view selectSettings = "select * from TORVEX_SEARCH where search_pageId = ?";
constexpr std::string_view countGroups = "select count(*) as total from TORVEX_USERGROUPS";
constexpr std::string_view selectGuardedPage =
    "select groupId from TORVEX_PAGES_GROUPS_LIVE where groupId > 1 limit 1";
constexpr std::string_view selectGuardedFolder =
    "select groupId from TORVEX_FOLDERS_GROUPS where fld_type = 'doc' and groupId > 1 limit 1";

constexpr std::string_view templateDefined = "- template defined -";
constexpr std::string_view searchScript = "search.asp";

constexpr int defaultMaxResults = 100;
constexpr int defaultResultsPerPage = 20;

/// The codes of the settings. Any other leaves the choice to the form.
namespace code {
constexpr int remoteCatalogue = 1;
constexpr int perPageAll = -1;
constexpr int securityOn = 1, securityOff = 2;
constexpr int someWords = 1, allWords = 2, phrase = 3;
constexpr int noDerivation = 1, prefix = 2, stemming = 3;
constexpr int byRank = 1, byTitle = 2;
constexpr int noScope = 1, allSites = 2, currentSite = 3, listedScopes = 4;
constexpr int allTypes = 1, listedTypes = 2;
}  // namespace code

/// Properties that the catalogue knows with "doc" in front alone.
constexpr std::array<std::string_view, 4> documentProperties = {"title", "keywords", "author", "subject"};

constexpr std::string_view byRankAndTitle = "rank,title";

/// A settings row of a search page beside what the form said.
class Settings {
  public:
    Settings(db::Rows& row, const SearchForm& form) : row_(row), form_(form) {}

    void locate(const HostContext& host, SearchParameters& search) const;
    int maxResults() const { return limit(searchField::maxResults, defaultMaxResults); }
    int resultsPerPage(int maxResults) const;
    bool wantsSecurity() const;
    std::string wordLength() const;
    SearchMatch match() const;
    SearchDerivation derivation() const;
    std::string sortOrder() const;
    std::string properties() const;
    std::string scopes(std::string_view include, std::string_view field) const;
    std::string documentTypes() const;

  private:
    int number(std::string_view column) const { return shortInteger(row_.number(column)).value_or(0); }
    int limit(std::string_view field, int ifBad) const;

    db::Rows& row_;
    const SearchForm& form_;
};

std::string backslashed(std::string_view path) {
    return text::replaceAll(path, "/", "\\");
}

void Settings::locate(const HostContext& host, SearchParameters& search) const {
    search.isRemote = number("search_catalogLocation") == code::remoteCatalogue;
    if (!search.isRemote) {
        search.rootPath = backslashed(host.application.text(applicationKey::installPath));
        return;
    }
    const std::string server = text::lowerTrim(row_.text("search_serverName"));
    std::string share = backslashed(text::lowerTrim(row_.text("search_webshare")));
    if (server.empty() || share.empty()) throw SearchError("Missing servername and/or webshare !");
    if (!share.starts_with("\\\\")) share.insert(0, "\\\\");
    if (!share.ends_with('\\')) share += '\\';
    search.catalog = "query://" + server + "/" + search.catalog;
    search.rootPath = share;
}

/// The form's value of a limit.
int Settings::limit(std::string_view field, int ifBad) const {
    if (const int stored = number(field); stored > 0) return stored;
    const std::string given = form_.choice(field);
    const int value = text::isNumeric(given) ? shortInteger(text::toNumber(given)).value_or(0) : 0;
    return value > 0 ? value : ifBad;
}

int Settings::resultsPerPage(int maxResults) const {
    const int stored = number(searchField::resultsPerPage);
    if (stored == code::perPageAll) return maxResults;
    if (stored <= 0 && form_.choice(searchField::resultsPerPage) == "all") return maxResults;
    return limit(searchField::resultsPerPage, defaultResultsPerPage);
}

bool Settings::wantsSecurity() const {
    switch (number(searchField::security)) {
        case code::securityOn:
            return true;
        case code::securityOff:
            return false;
        default:
            return form_.choice(searchField::security) != "false";
    }
}

std::string Settings::wordLength() const {
    if (const int stored = number(searchField::wordLength); stored > 0) return std::to_string(stored);
    const std::string given = form_.choice(searchField::wordLength);
    return text::isNumeric(given) && text::toNumber(given) >= 1 ? given : "1";
}

SearchMatch Settings::match() const {
    switch (number(searchField::match)) {
        case code::someWords:
            return SearchMatch::SomeWords;
        case code::allWords:
            return SearchMatch::AllWords;
        case code::phrase:
            return SearchMatch::Phrase;
        default:
            break;
    }
    const std::string given = form_.choice(searchField::match);
    if (text::contains(given, "some")) return SearchMatch::SomeWords;
    if (text::contains(given, "all")) return SearchMatch::AllWords;
    return text::contains(given, "phrase") ? SearchMatch::Phrase : SearchMatch::SomeWords;
}

SearchDerivation Settings::derivation() const {
    switch (number(searchField::derivation)) {
        case code::noDerivation:
            return SearchDerivation::None;
        case code::prefix:
            return SearchDerivation::Prefix;
        case code::stemming:
            return SearchDerivation::Stemming;
        default:
            break;
    }
    const std::string given = form_.choice(searchField::derivation);
    if (text::contains(given, "none")) return SearchDerivation::None;
    if (text::contains(given, "prefix")) return SearchDerivation::Prefix;
    return text::contains(given, "stemming") ? SearchDerivation::Stemming : SearchDerivation::None;
}

std::string Settings::sortOrder() const {
    switch (number(searchField::sortOrder)) {
        case code::byRank:
            return std::string(byRankAndTitle);
        case code::byTitle:
            return "title";
        default:
            break;
    }
    std::string given = form_.choice(searchField::sortOrder);
    std::replace(given.begin(), given.end(), ';', ',');
    return given.empty() ? std::string(byRankAndTitle) : given;
}

/// The properties as the catalogue names them.
std::string catalogueProperties(const std::string& list) {
    const std::vector<std::string> given = listItems(list);
    std::vector<std::string> items;
    for (const std::string& item : given) {
        if (isAmong(documentProperties, item)) {
            items.push_back("doc" + text::lower(item));
            continue;
        }
        items.push_back(item);
        if (text::equals(item, "comments")) items.emplace_back("doccomments");
        if (text::equals(item, "company")) items.emplace_back("doccompany");
        if (text::equals(item, "all") && !isAmong(given, "filename")) items.emplace_back("filename");
    }
    return items.empty() ? "all,filename" : joinedList(items);
}

std::string Settings::properties() const {
    const std::string stored = row_.text(searchField::properties);
    const bool isForms = text::equals(text::trim(stored), templateDefined);
    return catalogueProperties(isForms ? form_.list(searchField::properties) : stored);
}

/// `include` and `field` are the columns that say which, for pages or for documents.
std::string Settings::scopes(std::string_view include, std::string_view field) const {
    switch (number(include)) {
        case code::noScope:
            return std::string(searchScope::none);
        case code::allSites:
            return std::string(searchScope::allSites);
        case code::currentSite:
            return std::string(searchScope::currentSite);
        case code::listedScopes:
            return backslashed(joinedList(listItems(row_.text(field))));
        default:
            break;
    }
    const std::string given = joinedList(listItems(form_.list(field)));
    if (text::contains(given, "none")) return std::string(searchScope::none);
    if (given.empty() || text::contains(given, "all")) return std::string(searchScope::allSites);
    if (text::contains(given, "current")) return std::string(searchScope::currentSite);
    return backslashed(given);
}

std::string Settings::documentTypes() const {
    const int stored = number("search_includeDocumentTypes");
    if (stored == code::allTypes) return std::string(allDocumentTypes);
    std::string types = stored == code::listedTypes ? row_.text(searchField::documentTypes)
                                                    : form_.list(searchField::documentTypes);
    std::erase_if(types, [](char sign) { return sign == ' ' || sign == '.'; });
    const bool isAll = text::contains(types, allDocumentTypes) || listItems(types).empty();
    return isAll ? std::string(allDocumentTypes) : types;
}

std::string searchedWords(const SearchForm& form) {
    std::string words = form.words();
    std::replace(words.begin(), words.end(), ',', ' ');
    return plainWords(words);
}

SearchParameters resolved(HostContext& host, db::Connection& connection, const PageIdentity& page,
                          const SearchForm& form) {
    auto row = connection.query(selectSettings, {page.pageId});
    if (!row.next()) throw SearchError("Search parameters not found !");
    SearchParameters search;
    search.page = page;
    search.catalog = text::lowerTrim(row.text("search_catalogName"));
    if (search.catalog.empty()) throw SearchError("Missing catalog name !");
    const Settings settings(row, form);
    settings.locate(host, search);
    search.words = searchedWords(form);
    if (search.words.empty()) throw SearchError(searchErrors::noWords);
    search.maxResults = settings.maxResults();
    search.resultsPerPage = settings.resultsPerPage(search.maxResults);
    search.wantsSecurity = settings.wantsSecurity();
    search.wordLength = settings.wordLength();
    search.match = settings.match();
    search.derivation = settings.derivation();
    search.sortOrder = settings.sortOrder();
    search.properties = settings.properties();
    search.pageScopes = settings.scopes("search_includePages", searchField::pageScopes);
    search.documentScopes = settings.scopes("search_includeDocuments", searchField::documentScopes);
    const bool hasDocuments = search.documentScopes != searchScope::none;
    if (!hasDocuments && search.pageScopes == searchScope::none) throw SearchError("Missing search scopes !");
    if (hasDocuments) search.documentTypes = settings.documentTypes();
    return search;
}

bool findsRow(db::Connection& connection, std::string_view statement) {
    return connection.query(statement).next();
}

}  // namespace

bool isNewSearch(const HostContext& host) {
    return !text::contains(host.request.serverVariable("http_referer"), searchScript) ||
           text::trim(host.request.item(searchField::pageTo)).empty();
}

std::string askedWords(const HostContext& host) {
    return searchedWords(SearchForm(host));
}

SearchParameters searchParameters(HostContext& host, db::Connection& connection, const PageIdentity& page,
                                  bool isPreview) {
    const SearchForm form(host);
    struct UsedUp {
        HostContext& host;
        ~UsedUp() { forgetSearchForm(host); }
    } const formIsUsedUp{host};
    SearchParameters search = resolved(host, connection, page, form);
    search.isPreview = isPreview;
    if (isPreview) search.wantsSecurity = false;
    if (search.wantsSecurity) search.security = securityNow(host, connection);
    return search;
}

SearchSecurity securityNow(const HostContext& host, db::Connection& connection) {
    if (!hasExtranet(host)) return {};
    auto groups = connection.query(countGroups);
    if (!groups.next() || groups.number("total") <= 0) return {};
    return {.forPages = findsRow(connection, selectGuardedPage),
            .forDocuments = host.application.isTrue(applicationKey::documentSecurity) &&
                            findsRow(connection, selectGuardedFolder)};
}

}  // namespace torvex
