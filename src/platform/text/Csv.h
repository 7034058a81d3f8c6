#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Tables as text: lines of cells that a sign divides. A cell in quotes may hold that sign, line ends, and
/// quotes written twice.
namespace torvex::csv {

struct Line {
    std::size_t number = 0;  ///< in the text, from 1; a line of the table may take several
    std::vector<std::string> cells;
};

struct Table {
    std::vector<Line> lines;  ///< without those that are empty
    /// Of the line in which a quote was opened that nothing closes; 0 when there is none. Its line is left
    /// out, as all that follows is in it.
    std::size_t openQuote = 0;
};

/// The sign that divides the cells of a text: of comma, semicolon and tab the one that its first line has
/// most of, outside of quotes; a comma when it has none.
char dividerOf(std::string_view text);

/// Lines end with "\n", "\r\n" or "\r". Quotes that don't stand at the beginning of a cell are part of it.
Table read(std::string_view text, char divider = ',');

/// The line with its end, "\r\n". Cells are quoted where they must be.
std::string write(const std::vector<std::string>& cells, char divider = ',');

}  // namespace torvex::csv
