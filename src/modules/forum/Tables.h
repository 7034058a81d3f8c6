#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// The forum.
std::span<const OwnedTable> forumTables();

}  // namespace torvex
