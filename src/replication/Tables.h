#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// The other servers.
std::span<const OwnedTable> replicationTables();

}  // namespace torvex
