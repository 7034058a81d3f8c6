#pragma once

#include <string_view>

#include "records/PageId.h"

namespace torvex {

namespace db {
class Connection;
}

/// The search page for who names none: the first one that is on line in the tree of `nearNode`, else in any;
/// -1 without one.
PageId searchPageNear(db::Connection& connection, std::string_view nearNode);

}  // namespace torvex
