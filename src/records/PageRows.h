#pragma once

#include <optional>
#include <string>

#include "records/PageIdentity.h"

namespace torvex {

// What the row of a page says, in either of the twin tables.

bool isPage(db::Connection& connection, PageId pageId, Twin twin);
/// Nothing when there is no such page.
std::optional<std::string> titleOfPage(db::Connection& connection, PageId pageId, Twin twin);
/// As it is stored, without blanks around it; see `PageKind`. "" when there is no such page.
std::string typeOfPage(db::Connection& connection, PageId pageId, Twin twin);

}  // namespace torvex
