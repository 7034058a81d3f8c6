#include "delivery/SearchStore.h"

#include <utility>

#include "platform/HitCounter.h"
#include "platform/db/Connection.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view addToWord =
    "insert into TORVEX_SEARCH_LOG (search_pageId, search_word, search_count) values (?, ?, ?) "
    "on conflict (search_pageId, search_word) do update set search_count = TORVEX_SEARCH_LOG.search_count + "
    "excluded.search_count";
constexpr std::string_view addToDay =
    "insert into TORVEX_SEARCH_DAYS "
    "(search_pageId, search_word, yyyymmdd, site, lang, searches, withoutResult) "
    "values (?, ?, ?, ?, ?, ?, ?) on conflict (search_pageId, search_word, yyyymmdd) do update set "
    "searches = TORVEX_SEARCH_DAYS.searches + excluded.searches, "
    "withoutResult = TORVEX_SEARCH_DAYS.withoutResult + excluded.withoutResult";

SearchBatch batchOf(const SearchedWords& searched, const SearchCounts& each) {
    SearchBatch batch;
    for (const auto& [word, times] : searched.words) {
        batch[{searched.pageId, word, searched.day, searched.nodeId}] +=
            {each.searches * times, each.withoutResult * times};
    }
    return batch;
}

/// Of all days together.
std::map<std::pair<PageId, std::string>, std::int64_t> wordsOf(const SearchBatch& batch) {
    std::map<std::pair<PageId, std::string>, std::int64_t> words;
    for (const auto& [key, counts] : batch) {
        if (counts.searches > 0) words[{key.pageId, key.word}] += counts.searches;
    }
    return words;
}

}  // namespace

SearchBatch searchesOf(const SearchedWords& searched) {
    return batchOf(searched, {1, 0});
}

SearchBatch emptySearchesOf(const SearchedWords& searched) {
    return batchOf(searched, {0, 1});
}

void addSearches(db::Connection& connection, const SearchBatch& batch) {
    for (const auto& [key, count] : wordsOf(batch))
        connection.execute(addToWord, {key.first, std::string_view(key.second), count});
    for (const auto& [key, counts] : batch) {
        connection.execute(
            addToDay, {key.pageId, std::string_view(key.word), std::string_view(key.day), siteOf(key.nodeId),
                       langOf(key.nodeId), counts.searches, counts.withoutResult});
    }
}

}  // namespace torvex
