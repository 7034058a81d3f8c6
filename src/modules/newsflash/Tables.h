#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// Newsflashes.
std::span<const OwnedTable> newsflashTables();

}  // namespace torvex
