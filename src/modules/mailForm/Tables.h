#pragma once

#include <span>

#include "installation/OwnedTable.h"

namespace torvex {

/// Mail forms: they belong to the page that shows them.
std::span<const OwnedTable> mailFormTables();

}  // namespace torvex
