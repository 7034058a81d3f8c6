#pragma once

#include <string_view>

#include "records/PageIdentity.h"

namespace torvex {

/// The login page that guards a page, by the groups of one of the twin tables; -1 for none.
PageId guardingPage(db::Connection& connection, PageIdentity page, Twin twin);

/// The hits of a live page, or of a folder and all under it.
double viewsOf(db::Connection& connection, std::string_view nodeId);

}  // namespace torvex
