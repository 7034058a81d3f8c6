#include "platform/db/Grid.h"

namespace torvex::db {

Value gridOf(Rows rows, std::size_t spareColumns) {
    ResultGrid grid(rows.columns() + spareColumns);
    while (rows.next()) {
        std::vector<Value> cells;
        cells.reserve(grid.columns());
        for (std::size_t column = 0; column < rows.columns(); ++column) cells.push_back(rows.value(column));
        grid.add(std::move(cells));
    }
    return gridOrEmpty(std::move(grid));
}

}  // namespace torvex::db
