#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvex {

/// A visitor's text as HTML: paragraphs at empty lines, line breaks, and web addresses as links that say that
/// the site doesn't vouch for them. Everything else is encoded, so that none of it is markup.
std::string plainTextHtml(std::string_view text);

/// Whether a byte belongs to a word: letters and digits, and whatever is beyond ASCII.
bool isWordCharacter(char c);

/// How many web addresses stand in a text.
std::size_t countLinks(std::string_view text);

/// Without control characters but line ends, which become "\n"; without blanks and empty lines at both ends.
std::string cleanText(std::string_view text);
/// The same on one line.
std::string cleanLine(std::string_view text);

}  // namespace torvex
