#pragma once

#include <string_view>

namespace torvex {
class ApplicationValues;
struct HostContext;

/// Counts a view of a page by the session's visitor, unless their address is filtered out or the node is
/// none.
void countView(HostContext& host, std::string_view nodeId);

/// Whether views from an address are counted: the site's own staff can be kept out of the figures.
bool areViewsCounted(const ApplicationValues& application, std::string_view address);

}  // namespace torvex
