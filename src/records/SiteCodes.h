#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// The two characters of a site in the form in which they are kept: in small letters, without blanks around
/// them, and one alone with a "0" in front.
std::string siteCode(std::string_view given);

/// Whether a text can be the code of a site or a language: two characters.
bool hasCodeLength(std::string_view code);
/// Whether a text can name a folder, as codes do, and leads nowhere else.
bool isSafeCode(std::string_view code);
/// Both: what a site or a language is made, and removed, by.
bool isCode(std::string_view code);

}  // namespace torvex
