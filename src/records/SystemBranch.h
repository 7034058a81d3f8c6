#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// The system branch of a tree: the child ".99" of its root, with pages that aren't for the public
/// navigation.
///
/// Which pages count as lying in it is asked in two ways. They differ where the two digits stand in the code
/// of a site or a language, or across what is no level; callers know each operation by its own answer, so
/// neither stands for the other.
namespace systemBranch {

/// As the last level of a node, and as the place among the siblings.
inline constexpr int number = 99;

/// The node of the system branch, or of a folder of the system, below a parent.
std::string below(std::string_view parent);

/// Whether the node itself ends in the number.
bool isRoot(std::string_view nodeId);

/// Whether a part of the node behind the first one begins with the number (".99").
bool hasNumber(std::string_view nodeId);
/// Whether the two digits ("99") stand anywhere in the node. In statements: `nodeId like '%99%'`.
bool hasDigits(std::string_view nodeId);

/// The highest number and the highest place that a child of the node may have: the one of the system branch
/// is kept for it, but not below a node that has its digits.
int highestBelow(std::string_view nodeId);

}  // namespace systemBranch
}  // namespace torvex
