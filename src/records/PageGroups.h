#pragma once

#include <string>

#include "records/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

/// The names of the groups that a page itself has, in their order, divided by ", "; "" when it has none. A
/// failure has the line "getPageGroupNames !" in front.
std::string pageGroupNames(db::Connection& connection, PageId pageId, Twin twin);

}  // namespace torvex
