#pragma once

#include <string>

#include "search/SearchParameters.h"

namespace torvex {

struct HostContext;

/// Counts the words that were searched for on a page; a phrase counts as one. On a connection of its own,
/// since it writes where the request otherwise only reads. Throws `SearchError`.
void logSearch(HostContext& host, const SearchParameters& search, const std::string& words);

}  // namespace torvex
