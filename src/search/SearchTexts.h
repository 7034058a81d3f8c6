#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text/Text.h"

namespace torvex {

/// Lists of a search divide their items by commas. The items without blanks around them; empty ones are left
/// out.
std::vector<std::string> listItems(std::string_view list);
std::string joinedList(const std::vector<std::string>& items);

/// Whether a name is one of these, in either case.
template <typename Names>
bool isAmong(const Names& names, std::string_view wanted) {
    return std::any_of(std::begin(names), std::end(names),
                       [wanted](const auto& name) { return text::equals(name, wanted); });
}

/// Words divided by single blanks: white space of any kind, control characters and the given signs become
/// blanks.
std::string plainWords(std::string_view words, std::string_view signs = {});
std::vector<std::string> splitWords(std::string_view words);

/// What a visitor typed, without the signs that mean something to the catalogue.
std::string neutralWords(std::string_view words);

/// A list that a visitor sent, in small letters, without blanks and without the signs that mean something to
/// the catalogue, wild cards among them.
std::string neutralList(std::string_view list);

}  // namespace torvex
