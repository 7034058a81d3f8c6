#pragma once

#include <string>

#include "search/SearchRun.h"

namespace torvex {

/// The application part of a results template, filled with one page of the results of a search. The session
/// keeps what further pages need, or lets the search go when there are none. Throws `SearchError`.
std::string filledResults(HostContext& host, db::Connection& connection, const SearchRun& run,
                          std::string block);

/// Takes away what shows results.
void removeResults(std::string& html);

}  // namespace torvex
