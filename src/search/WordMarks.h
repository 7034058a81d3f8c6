#pragma once

#include <set>
#include <string>
#include <string_view>
#include <xapian.h>

#include "search/SearchParameters.h"

namespace torvex {

/// Marks the words of a search where they stand in a text, by the rules by which they were found: without their
/// case and accents, as beginnings, or in all their forms.
class WordMarks {
  public:
    /// `words` as the query had them.
    WordMarks(std::string_view words, SearchDerivation derivation, std::string_view lang);

    /// The text for HTML, encoded, with the words in `mark` elements.
    std::string marked(std::string_view text) const;

  private:
    bool isSought(const std::string& folded) const;

    std::set<std::string, std::less<>> words_;
    SearchDerivation derivation_;
    Xapian::Stem stem_;
};

}  // namespace torvex
