#pragma once

#include <string>
#include <vector>

#include "search/SearchParameters.h"

namespace torvex {

/// The words that a search looks for, as the query gets them: in small letters, without signs and (but in a
/// phrase) words that mean something to the catalogue, and without those that are too short. "" when none is
/// left.
std::string soughtWords(const SearchParameters& search);

/// The query for `words`, in the catalogue's language: words in each of the properties, within the pages and
/// the types of documents that the search includes.
std::string searchQuery(const SearchParameters& search, const std::string& words);

}  // namespace torvex
