#pragma once

#include <string>
#include <string_view>

#include "records/PageIdentity.h"

namespace torvex {

struct HostContext;

/// The trail from the root to a node by either of the twin tables, as HTML; in the design every page counts
/// as switched on.
std::string breadcrumbTrail(HostContext& host, db::Connection& connection, std::string_view nodeId,
                            Twin twin);

}  // namespace torvex
