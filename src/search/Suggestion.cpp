#include "search/Suggestion.h"

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "records/PageIdentity.h"
#include "search/ResultList.h"
#include "search/SearchQuery.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

/// Of the files that hold a word, so many are looked at for one that may be seen.
constexpr std::size_t mostTested = 256;

bool isWordShown(HostContext& host, db::Connection& connection, const SearchRun& run,
                 const std::string& word) {
    SearchParameters search = run.search;
    search.words = word;
    search.match = SearchMatch::AllWords;
    search.derivation = SearchDerivation::None;
    const std::string sought = soughtWords(search);
    if (sought.empty()) return false;
    catalogue::Query query = run.running.query->query;
    query.text = searchQuery(search, sought);
    const auto results = run.catalogue->find(query);
    return results && hasVisibleResult(host, connection, search, *results, mostTested);
}

std::string checkedSuggestion(HostContext& host, db::Connection& connection, const SearchRun& run) {
    const std::vector<std::string> sought = splitWords(run.running.query->soughtWords);
    const std::string corrected =
        plainWords(run.catalogue->corrected(run.running.query->soughtWords, langOf(run.search.page.nodeId)));
    bool differs = false;
    for (const std::string& word : splitWords(corrected)) {
        if (isAmong(sought, word)) continue;
        differs = true;
        if (!isWordShown(host, connection, run, word)) return {};
    }
    return differs ? corrected : std::string();
}

}  // namespace

std::string suggestedWords(HostContext& host, db::Connection& connection, const SearchRun& run) {
    if (!run.catalogue) return {};
    try {
        return checkedSuggestion(host, connection, run);
    } catch (const std::exception& error) {
        // A search without a suggestion is as good as it was.
        warnOf(host.log, "the suggestion for a search", error);
        return {};
    }
}

}  // namespace torvex
