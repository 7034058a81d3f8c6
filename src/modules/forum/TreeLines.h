#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace torvex {

/// The level of a reaction by its place in the topic: 1 for "01", 2 for "01.02".
std::size_t levelOf(std::string_view reference);

/// The pictures in front of one row of a tree, from left to right.
enum class TreeLine { Blank, Vertical, Node, LastNode };

/// Tells which lines stand in front of each row of a tree. The rows are asked about from the last to the
/// first, which is how a row can know whether a sibling follows it.
class TreeLines {
  public:
    /// One picture for each level. A place may skip levels.
    std::vector<TreeLine> before(std::string_view reference);

  private:
    /// By level: whether a later sibling was seen.
    std::vector<bool> levels_;
};

}  // namespace torvex
