#pragma once

#include "platform/Value.h"
#include "platform/db/Connection.h"

namespace torvex::db {

/// All rows, in the columns of the statement, as a grid with `spareColumns` more that stay empty; an empty
/// value when there are none.
Value gridOf(Rows rows, std::size_t spareColumns = 0);

}  // namespace torvex::db
