#pragma once

#include <string_view>

#include "records/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

// The pages around one whose navigation is computed, by either of the twin tables. In the live tables a page
// that is switched off is no neighbour; online dates aren't looked at.

/// The nearest ancestor that is no folder: its node, and its number as far as the design knows it. As made
/// when all are folders.
PageIdentity pageAbove(db::Connection& connection, std::string_view nodeId, Twin twin);

/// The page of the order just before or behind, among the children of `parent`; -1 for none.
PageId pageBefore(db::Connection& connection, std::string_view parent, double orderId, Twin twin);
/// Keeps out of the system branch, as `pageBefore` by intention does not.
PageId pageBehind(db::Connection& connection, std::string_view parent, double orderId, Twin twin);

}  // namespace torvex
