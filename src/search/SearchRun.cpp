#include "search/SearchRun.h"

#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"
#include "search/SearchColumns.h"
#include "search/SearchError.h"
#include "search/SearchErrors.h"
#include "search/SearchForm.h"
#include "search/SearchLog.h"
#include "search/SearchQuery.h"
#include "search/SearchScopes.h"

namespace torvex {

namespace {

constexpr std::string_view newResults = "Error initializing query object (new recordset) !";
constexpr std::string_view notFound = "Search parameters not found !";

std::unique_ptr<catalogue::Catalogue> openedCatalogue(HostContext& host, const OpenCatalogue& open,
                                                      const SearchParameters& search) {
    return asSearchStep(host, "Error initializing query object (catalog) !", [&] {
        auto catalogue = open(host, search.catalog, search.rootPath);
        if (!catalogue) throw Error("there is no catalogue of that name");
        return catalogue;
    });
}

/// What is asked of the catalogue for the search. Counts its words.
std::shared_ptr<KeptQuery> madeQuery(HostContext& host, db::Connection& connection, SearchParameters search) {
    const auto made = std::make_shared<KeptQuery>();
    made->extraColumns = extraColumns(host, connection, siteOf(search.page.nodeId));
    asSearchStep(host, "Error initializing sort order !",
                 [&] { made->query.sortBy = catalogueOrder(search.sortOrder, made->extraColumns); });
    made->query.columns = readColumns(made->extraColumns);
    made->query.language = langOf(search.page.nodeId);
    asSearchStep(host, "Error in function getQuery (Search module) !", [&] {
        made->soughtWords = soughtWords(search);
        if (made->soughtWords.empty()) throw SearchError(searchErrors::emptyQuery);
        logSearch(host, search, made->soughtWords);
        made->query.text = searchQuery(search, made->soughtWords);
        if (made->query.text.empty()) throw SearchError(searchErrors::emptyQuery);
    });
    made->query.scopes = searchScopes(host, search);
    made->search = std::move(search);
    return made;
}

bool findsNothing(HostContext& host, const catalogue::Results& results) {
    return asSearchStep(host, newResults, [&] { return !results.has(0); });
}

/// Groups may have come to guard something since the search began.
SearchSecurity stricter(const HostContext& host, db::Connection& connection, const SearchParameters& search) {
    if (!search.wantsSecurity) return search.security;
    const SearchSecurity now = securityNow(host, connection);
    return {.forPages = search.security.forPages || now.forPages,
            .forDocuments = search.security.forDocuments || now.forDocuments};
}

}  // namespace

SearchRun beginSearch(HostContext& host, db::Connection& connection, const OpenCatalogue& open,
                      SearchParameters search) {
    SearchRun run;
    run.catalogue = openedCatalogue(host, open, search);
    const auto query = madeQuery(host, connection, std::move(search));
    const auto results = std::make_shared<KeptResults>();
    results->results = resultsOf(host, *run.catalogue, query->query);
    if (findsNothing(host, *results->results)) logNothingFound(host, query->search, query->soughtWords);
    run.search = query->search;
    run.running = {query, results};
    return run;
}

SearchRun resumeSearch(HostContext& host, db::Connection& connection) {
    const SearchSession session(host.session);
    const std::string pageTo = text::lowerTrim(host.request.item(searchField::pageTo));
    auto running = session.resume(pageTo);
    if (!running) throw SearchError(notFound);
    if (!running->results->results) throw SearchError("Error initializing query object (cashed recordset) !");
    SearchRun run;
    run.running = *running;
    run.search = session.values(running->query->search);
    run.search.security = stricter(host, connection, run.search);
    run.page = static_cast<int>(text::toNumber(pageTo));
    run.firstRow = *session.bookmark(pageTo);
    if (!run.results().has(run.firstRow)) throw SearchError("Error recordset positioning !");
    return run;
}

std::shared_ptr<const catalogue::Results> resultsOf(HostContext& host, catalogue::Catalogue& catalogue,
                                                    const catalogue::Query& query) {
    return asSearchStep(host, newResults, [&] {
        try {
            auto results = catalogue.find(query);
            if (!results) throw Error("the catalogue gave no results");
            return results;
        } catch (const catalogue::TooManyError&) {
            throw SearchError(searchErrors::tooMany);
        } catch (const catalogue::QueryError& error) {
            warnOf(host.log, "a search", error);
            throw SearchError("Error initializing query object (query) !");
        }
    });
}

}  // namespace torvex
