#pragma once

#include <map>
#include <string>
#include <string_view>

namespace torvex {

/// The words of one search, as they are counted.
struct SearchedWords {
    double pageId = 0;  ///< of the search page
    std::string nodeId;
    std::string day;                   ///< yyyymmdd
    std::map<std::string, int> words;  ///< with how often each was given
};

/// Where page views are counted, one count for each node and day, and the words that visitors search for.
/// Implementations are safe to share between threads.
class HitCounter {
  public:
    virtual ~HitCounter() = default;

    /// Counts one view of `nodeId` (of at least 5 characters) on `day` (yyyymmdd). The first view of a node
    /// on a day is always a unique one; a later one only when `unique` says that this visitor is new to the
    /// node. Returns whether the view was counted as a unique one. Throws `Error` when it can't be stored.
    virtual bool count(std::string_view nodeId, std::string_view day, bool unique) = 0;

    /// Leaves a view to who knows the visitor better; true when that one counts it later.
    virtual bool deferView(std::string_view /*nodeId*/) { return false; }
    /// Whether `count` would return at once, without waiting for the database.
    virtual bool isReadyFor(std::string_view /*nodeId*/, std::string_view /*day*/) { return true; }

    /// Counts the words of a search that begins. Throws `Error` when they can't be stored.
    virtual void countSearch(const SearchedWords& searched) = 0;
    /// Counts them as words that nothing was found for, besides.
    virtual void countNothingFound(const SearchedWords& searched) = 0;

    /// Stores what has been counted so far before it returns: for who reads it. False when that failed.
    virtual bool flush() = 0;
};

}  // namespace torvex
