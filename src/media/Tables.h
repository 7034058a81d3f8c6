#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// Images and documents. A folder's groups are listed here too: they go with the folder.
std::span<const OwnedTable> mediaTables();

}  // namespace torvex
