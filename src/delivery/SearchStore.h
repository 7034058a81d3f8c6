#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <string>

#include "records/PageId.h"

namespace torvex {

struct SearchedWords;
namespace db {
class Connection;
}

/// What is counted for each word and day.
struct SearchCounts {
    std::int64_t searches = 0;
    std::int64_t withoutResult = 0;

    SearchCounts& operator+=(const SearchCounts& other) {
        searches += other.searches;
        withoutResult += other.withoutResult;
        return *this;
    }
};
/// A word that was searched for from a page. In the order of the rows, so that who writes at the same time meets at
/// them in one order.
struct SearchKey {
    PageId pageId = 0;
    std::string word;
    std::string day;  ///< yyyymmdd
    std::string nodeId;

    auto operator<=>(const SearchKey&) const = default;
};
using SearchBatch = std::map<SearchKey, SearchCounts>;

/// The words of a search, each as often as it was given.
SearchBatch searchesOf(const SearchedWords& searched);
/// The same of one that found nothing, and that is counted as a search apart.
SearchBatch emptySearchesOf(const SearchedWords& searched);

/// Adds to the counts of words, in all and by day; rows are made where there are none. To be called within a
/// transaction, and safe beside other writers.
void addSearches(db::Connection& connection, const SearchBatch& batch);

}  // namespace torvex
