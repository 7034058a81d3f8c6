#pragma once

#include <array>
#include <string>
#include <utility>

#include "operations/register/Binding.h"

/// What the rows of the registers of templates, base templates and stylesheets share, which are alike. Only
/// for the sources that hold these rows.
namespace torvex::operations::assets {

inline constexpr auto checked =
    "Whether an entry may use a name and a file: \"0\" yes, \"1\" the name is taken, \"2\" the file is.";
inline constexpr auto filled = "Reads an entry into the properties; false when there is none.";
inline constexpr auto numbered = "The number of the entry of a name, or -1.";
inline constexpr auto listed = "The entries of a site and language, by name.";
inline constexpr auto fileInForce =
    "The file in force for a page, its own or an ancestor's; mode \"D\" asks the design.";
inline constexpr auto nameInForce =
    "The name in force for a page, its own or an ancestor's; mode \"D\" asks the design.";
inline constexpr auto nodeOfPage = "The node of a page number; empty text when there is no such page.";
inline constexpr auto pageOfNode = "The page number of a node; -1 when there is no such page.";

inline std::array<NamedArgument, 5> checkArguments(std::string id) {
    return {argument("site"), argument("lang"), argument(std::move(id)), argument("name"), argument("file")};
}

inline std::array<NamedArgument, 3> nameArguments() {
    return {argument("name"), argument("site"), argument("lang")};
}

inline std::array<NamedArgument, 2> pageArguments() {
    return {argument("pageIdent"), argument("mode", "L")};
}

}  // namespace torvex::operations::assets
