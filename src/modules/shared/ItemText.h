#pragma once

#include <string>
#include <string_view>

/// What authors write into the modules' records, as HTML. Nothing of it is ever read as a marker of a
/// template: neither here nor by the page that it is put in.
namespace torvex {

/// An item's text. Unless HTML is allowed, all of it is encoded but for line breaks, bold, underlined and
/// italic words.
std::string itemText(std::string_view text, bool isHtmlAllowed);

/// The words of a link; unless HTML is allowed, encoded but for line breaks.
std::string linkWords(std::string_view words, bool isHtmlAllowed);

/// The text up to the first blank at or behind the character `length`, counted from 1, with "..." when that
/// leaves something out. 0 leaves nothing, a negative length everything.
std::string cutText(std::string_view text, int length);

/// What a link's address becomes in the notation of stored links: "page(12)" for a number, "file(name)" for
/// a file; an address of the web stays. `link` is trimmed and in small letters. The result goes into an
/// attribute between double quotes.
std::string linkNotationOf(std::string_view link);

}  // namespace torvex
