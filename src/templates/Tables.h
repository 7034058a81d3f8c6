#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// The registers of the design.
std::span<const OwnedTable> templateTables();

}  // namespace torvex
