#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// What waits to be sent by mail. It belongs to nobody: what was to be told is told, whatever goes meanwhile.
std::span<const OwnedTable> mailTables();

}  // namespace torvex
