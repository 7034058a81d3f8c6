#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// What visitors search.
std::span<const OwnedTable> searchTables();

}  // namespace torvex
