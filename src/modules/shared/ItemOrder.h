#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// Whether the number stands for an order of items: 1 to 6.
bool isItemOrder(int order);

/// What items are ordered by, to stand behind "order by": 1 and 2 the date (latest, oldest first), 3 and 4
/// the title (A, Z first), 5 and 6 the number (highest, lowest first); any other is the number. Items that
/// are alike stay in one order, so that none shows on two pages. `table` is "" or the table's name and a
/// point.
std::string itemOrder(int order, std::string_view table);

}  // namespace torvex
