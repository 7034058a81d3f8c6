#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "search/catalogue/Translation.h"

namespace torvex::catalogue {

/// Some 300 characters of a text, from where most of the words found stand close together, else from its
/// beginning. White space is made one blank; "…" stands where the text goes on.
std::string abstractOf(std::string_view text, const FoundWords& found);

}  // namespace torvex::catalogue
