#include "search/SearchLog.h"

#include <map>

#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "search/SearchError.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

constexpr std::string_view countWord =
    "insert into TORVEX_SEARCH_LOG (search_pageId, search_word, search_count) values (?, ?, ?) "
    "on conflict (search_pageId, search_word) do update set search_count = TORVEX_SEARCH_LOG.search_count + "
    "excluded.search_count";

constexpr std::size_t longestWord = 250;

/// How often each word was given; in order, so that visitors who search at the same time meet at the rows in
/// one order.
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

}  // namespace

void logSearch(HostContext& host, const SearchParameters& search, const std::string& words) {
    asSearchStep(host, "Error in function logSearch (Search module) !", [&] {
        db::inOwnTransaction(host, [&](db::Connection& own) {
            for (const auto& [word, count] : countedWords(search, words))
                own.execute(countWord, {search.page.pageId, word, count});
            return db::commit(true);
        });
    });
}

}  // namespace torvex
