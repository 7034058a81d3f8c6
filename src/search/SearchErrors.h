#pragma once

#include <string_view>

/// The errors of a search that are told from others; the text is what `search_error` says.
namespace torvex::searchErrors {

inline constexpr std::string_view noWords = "Search string is empty !";
inline constexpr std::string_view emptyQuery = "Empty query string !";
inline constexpr std::string_view tooMany = "Too many words are like that, write more of them !";

}  // namespace torvex::searchErrors
