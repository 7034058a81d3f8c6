#include "cli/CallTable.h"

#include <algorithm>
#include <vector>

#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

using Cells = std::vector<std::string>;

std::string shown(const Value& value) {
    std::string cell = value.isGrid() ? "(grid)" : value.toText();
    std::replace_if(
        cell.begin(), cell.end(), [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
    return cell;
}

Cells cellsOfRow(const ResultGrid& grid, std::size_t row) {
    Cells cells;
    for (std::size_t column = 0; column < grid.columns(); ++column)
        cells.push_back(shown(grid.at(column, row)));
    return cells;
}

std::string line(const Cells& cells, const std::vector<std::size_t>& widths) {
    std::string out;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        out += cells[column];
        out.append(widths[column] - text::length(cells[column]) + 2, ' ');
    }
    out.erase(out.find_last_not_of(' ') + 1);
    return out + '\n';
}

}  // namespace

std::string alignedTable(const ResultGrid& grid) {
    std::vector<Cells> rows;
    std::vector<std::size_t> widths(grid.columns());
    for (std::size_t row = 0; row < grid.rows(); ++row) {
        rows.push_back(cellsOfRow(grid, row));
        for (std::size_t column = 0; column < widths.size(); ++column) {
            widths[column] = std::max(widths[column], text::length(rows[row][column]));
        }
    }
    std::string table;
    for (const auto& cells : rows) table += line(cells, widths);
    return table;
}

}  // namespace torvex::cli
