#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// Authors, visitors, and what they may do.
std::span<const OwnedTable> accountTables();

}  // namespace torvex
