#pragma once

#include <string>

#include "search/SearchRun.h"

namespace torvex {

/// The words of a new search as they were probably meant; "" when nothing speaks for others. Only of what this
/// visitor may see: each word that differs stands in something that is shown to her.
std::string suggestedWords(HostContext& host, db::Connection& connection, const SearchRun& run);

}  // namespace torvex
