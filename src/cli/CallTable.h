#pragma once

#include <string>

#include "platform/Value.h"

namespace torvex::cli {

/// The rows of a grid for a terminal: columns aligned, two blanks between them, one line for each row. Line
/// breaks within a cell show as blanks.
std::string alignedTable(const ResultGrid& grid);

}  // namespace torvex::cli
