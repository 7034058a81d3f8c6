#pragma once

#include <string>

#include "search/SearchParameters.h"

namespace torvex {

struct HostContext;

/// Counts the words that are searched for on a page; a phrase counts as one. A server stores them behind the answer.
/// Throws `SearchError`.
void logSearch(HostContext& host, const SearchParameters& search, const std::string& words);
/// Counts them as words that nothing was found for.
void logNothingFound(HostContext& host, const SearchParameters& search, const std::string& words);

}  // namespace torvex
