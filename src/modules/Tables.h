#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// The modules.
std::span<const OwnedTable> moduleTables();

}  // namespace torvex
