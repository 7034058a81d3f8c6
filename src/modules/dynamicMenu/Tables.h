#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// Dynamic menus: they belong to the page that shows them.
std::span<const OwnedTable> dynamicMenuTables();

}  // namespace torvex
