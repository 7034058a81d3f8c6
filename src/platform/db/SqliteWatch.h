#pragma once

#include <memory>
#include <string>

#include "platform/db/TableStates.h"

namespace torvex::db {

/// Looks at the content of a store by what all who have it open share in memory of its log, which takes no lock while nothing
/// is committed. Throws `DatabaseError` when the store can't be opened.
std::unique_ptr<ContentWatch> watchSqliteStore(const std::string& folder);

}  // namespace torvex::db
