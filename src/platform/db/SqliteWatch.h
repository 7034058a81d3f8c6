#pragma once

#include <memory>
#include <string>

#include "platform/db/TableStates.h"

namespace torvex::db {

/// Looks at the content of a store by the count that its file keeps of its changes, some two microseconds a look. Throws
/// `DatabaseError` when the store can't be opened.
std::unique_ptr<ContentWatch> watchSqliteStore(const std::string& folder);

}  // namespace torvex::db
