#include "search/SearchLog.h"

#include "platform/DateTime.h"
#include "platform/HitCounter.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "search/SearchError.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

constexpr std::string_view failure = "Error in function logSearch (Search module) !";

constexpr std::size_t longestWord = 250;

/// How often each word was given.
std::map<std::string, int> countedWords(const SearchParameters& search, const std::string& words) {
    std::map<std::string, int> counts;
    const bool isPhrase = search.match == SearchMatch::Phrase;
    const auto given = isPhrase ? std::vector<std::string>{words} : splitWords(words);
    for (const std::string& word : given) {
        const std::string key(text::first(text::lowerTrim(word), longestWord));
        if (!key.empty()) ++counts[key];
    }
    return counts;
}

SearchedWords searchedWords(const HostContext& host, const SearchParameters& search,
                            const std::string& words) {
    return {.pageId = search.page.pageId,
            .nodeId = search.page.nodeId,
            .day = host.clock.today(),
            .words = countedWords(search, words)};
}

}  // namespace

void logSearch(HostContext& host, const SearchParameters& search, const std::string& words) {
    asSearchStep(host, failure, [&] { host.hits.countSearch(searchedWords(host, search, words)); });
}

void logNothingFound(HostContext& host, const SearchParameters& search, const std::string& words) {
    asSearchStep(host, failure, [&] { host.hits.countNothingFound(searchedWords(host, search, words)); });
}

}  // namespace torvex
