#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// Pages, what is said of them, and what every class looks up.
std::span<const OwnedTable> recordTables();

}  // namespace torvex
