#pragma once

#include <string_view>

namespace torvex {
struct HostContext;

/// Counts a view of a page by the session's visitor, unless their address is filtered out or the node is
/// none.
void countView(HostContext& host, std::string_view nodeId);

}  // namespace torvex
