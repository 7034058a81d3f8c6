#pragma once

#include <array>
#include <string>
#include <utility>

#include "operations/register/Binding.h"

/// What the rows of the registers of templates, base templates and stylesheets share, which are alike. Only
/// for the sources that hold these rows.
namespace torvex::operations::assets {

inline constexpr auto checked = "Whether an entry may use a name and a file.";
inline constexpr auto filled = "Reads an entry into the properties.";
inline constexpr auto numbered = "The number of the entry of a name.";
inline constexpr auto listed = "The entries of a site and language, by name.";
inline constexpr auto fileInForce =
    "The file in force for a page, its own or an ancestor's; mode \"D\" asks the design.";
inline constexpr auto nameInForce =
    "The name in force for a page, its own or an ancestor's; mode \"D\" asks the design.";
inline constexpr auto nodeOfPage = "The node of a page number; empty text when there is no such page.";
inline constexpr auto pageOfNode = "The page number of a node.";

inline std::array<NamedArgument, 5> checkArguments(std::string id) {
    return {argument("site"), argument("lang"), argument(std::move(id)), argument("name"), argument("file")};
}

inline std::vector<StatusCode> checkCodes() {
    return {code("0", "They are free."), code("1", "The name is taken."), code("2", "The file is taken.")};
}

inline std::vector<StatusCode> noEntry(const Value& answer) {
    return {code(answer, "There is no such entry.")};
}

/// Of a removal: `locked` is told last, after what else may use the entry.
inline std::vector<StatusCode> removalCodes(std::vector<StatusCode> others, const char* locked) {
    std::vector<StatusCode> all{code("0", "It is removed."),
                                refusal("2", "There is no such entry.", label::gone),
                                refusal("3", "A page uses it, in the design or live.", label::usedByPages)};
    all.insert(all.end(), others.begin(), others.end());
    all.push_back(refusal(locked, "Another login has it open.", label::openElsewhere));
    all.push_back(refusal("-1", "It failed; nothing was changed.", label::failed));
    return all;
}

inline std::vector<StatusCode> noPage() {
    return {code(-1, "There is no such page.")};
}

inline std::array<NamedArgument, 3> nameArguments() {
    return {argument("name"), argument("site"), argument("lang")};
}

inline std::array<NamedArgument, 2> pageArguments() {
    return {argument("pageIdent"), argument("mode", "L")};
}

}  // namespace torvex::operations::assets
