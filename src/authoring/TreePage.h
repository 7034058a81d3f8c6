#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {

/// What a tree is there to pick.
enum class TreeKind { Pages, Images, Documents };

/// By the word that callers know: "pages", "pictures" or "images", "other". Nothing for any other.
std::optional<TreeKind> treeKindOf(std::string_view word);

/// The page of a picker, as a template: a script that draws a tree from calls, one for each node, which the
/// blocks "folder" and "item" are the patterns of. Without a kind a page that draws nothing. The page is
/// shown in a frame of a window whose `top` has the frame "preview" and the address of the icons, `localDir`;
/// what is picked goes to `top.opener`.
std::string treePage(std::optional<TreeKind> kind);

/// The text as it may stand in a string of the page's script.
std::string inTreeScript(std::string_view text);
/// The name of a variable there: signs that a name can't have are written by their codes.
std::string treeVariable(std::string_view name);

}  // namespace torvex
