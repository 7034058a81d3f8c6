#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {

/// How the words of pages stand in the column `words` of TORVEX_PAGE_WORDS: each once, divided by blanks,
/// folded, behind a letter that says where it stands: "t" in the title, "w" in a body, "s" for the tree in which
/// the page is. A word of any length finds what begins with it.
namespace pageWords {

/// The text of a body, for people: without mark-up.
std::string textOf(std::string_view html);

/// The column's text for a page; `texts` are those of its bodies, without mark-up.
std::string columnOf(std::string_view nodeId, std::string_view title, const std::vector<std::string>& texts);

/// What is looked for.
struct Wanted {
    std::vector<std::string> beginnings;  ///< of words, all of which must be there; folded
    std::vector<std::string> trees;       ///< roots, in one of which the page must be; none: in any
};

/// The query of the engine's index that pages are found by in their title alone, or anywhere.
enum class Place { Title, Anywhere };
std::string sqliteQuery(const Wanted& wanted, Place place);
std::string postgresQuery(const Wanted& wanted, Place place);

}  // namespace pageWords
}  // namespace torvex
