#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// Hits, feeds, and the types of files.
std::span<const OwnedTable> deliveryTables();

}  // namespace torvex
