#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The system's rules for text. All text is UTF-8. Comparing, finding and replacing ignore case, beyond ASCII
/// too, by simple case folding: "É" equals "é", "ß" does not equal "ss". Offsets are in bytes; lengths and
/// cuts count characters (code points). Functions are pure and safe from any thread. Malformed UTF-8 is
/// compared byte by byte and never throws.
namespace torvex::text {

inline constexpr std::size_t npos = std::string_view::npos;

/// -1, 0 or 1; orders by folded code points.
int compare(std::string_view a, std::string_view b);
bool equals(std::string_view a, std::string_view b);
bool startsWith(std::string_view text, std::string_view prefix);
bool endsWith(std::string_view text, std::string_view suffix);

/// Where `needle` first occurs at or behind byte `from`, or `npos`. An empty needle is found at `from`.
std::size_t find(std::string_view text, std::string_view needle, std::size_t from = 0);
bool contains(std::string_view text, std::string_view needle);

/// How many bytes of `text` at `at` match `needle` ignoring case, 0 when they don't. Differs from the
/// needle's size where the two cases of a letter differ in length.
std::size_t matchLength(std::string_view text, std::size_t at, std::string_view needle);

/// Replaces occurrences from the start; a negative `count` means all. Text put in is not searched again.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to, int count = -1);

std::string lower(std::string_view text);
std::string upper(std::string_view text);

/// Without the blanks (character 32) at both ends.
std::string_view trim(std::string_view text);
std::string lowerTrim(std::string_view text);

/// Whether the text, blanks around it aside, is a plain decimal number: an optional sign, digits with at most
/// one decimal point and at least one digit.
bool isNumeric(std::string_view text);
/// The value of such a number; 0 for anything else.
double toNumber(std::string_view text);
/// A number without a fraction is written without one; no exponent for values below 1e15.
std::string fromNumber(double number);

/// The number of characters.
std::size_t length(std::string_view text);
/// The first (last) `count` characters; the whole text when it is no longer than that.
std::string_view first(std::string_view text, std::size_t count);
std::string_view last(std::string_view text, std::size_t count);

/// & < > " as entities; everything else stays.
std::string htmlEncode(std::string_view text);
/// Letters and digits of ASCII stay, a blank becomes "+", every other byte "%XX" in upper-case hexadecimal.
std::string urlEncode(std::string_view text);
/// Undoes "%XX" and "+"; a broken escape stays as it stands. The result may be malformed UTF-8.
std::string urlDecode(std::string_view text);

bool isValidUtf8(std::string_view text);
/// The text with every malformed sequence replaced by U+FFFD.
std::string toValidUtf8(std::string_view text);

}  // namespace torvex::text
