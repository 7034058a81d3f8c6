#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// The message board.
std::span<const OwnedTable> messageBoardTables();

}  // namespace torvex
