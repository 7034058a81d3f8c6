#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "platform/db/Connection.h"

namespace torvex::cli {

/// How the rows of a statement are shown. Each call shows one result whole; `names` are its columns.
class RowPrinter {
  public:
    virtual ~RowPrinter() = default;
    virtual void print(const std::vector<std::string>& names, db::Rows& rows) = 0;
};

/// An aligned table with a line of names and the number of rows. Line breaks and the like in a text are
/// shown as "\n"; a null is shown as "null".
std::unique_ptr<RowPrinter> tablePrinter(std::ostream& out);

/// One JSON object a line for each row, with the columns in their order; moments as "2026-06-15T12:00:00".
std::unique_ptr<RowPrinter> jsonPrinter(std::ostream& out);

}  // namespace torvex::cli
