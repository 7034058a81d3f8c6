#pragma once

#include <string>
#include <vector>

#include "platform/Value.h"

namespace torvex::test {

/// A list's rows, their cells divided by "|", "-" for an empty one; none for a list without rows.
inline std::vector<std::string> linesOf(const Value& list) {
    std::vector<std::string> lines;
    if (!list.isGrid()) return lines;
    const ResultGrid& grid = list.grid();
    for (std::size_t row = 0; row < grid.rows(); ++row) {
        std::string line;
        for (std::size_t column = 0; column < grid.columns(); ++column) {
            const Value& cell = grid.at(column, row);
            line += (column == 0 ? "" : "|") + (cell.isEmpty() ? "-" : cell.toText());
        }
        lines.push_back(line);
    }
    return lines;
}

}  // namespace torvex::test
