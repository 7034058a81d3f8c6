#pragma once

#include <string_view>

namespace torvex {
struct HostContext;

// Each in one transaction of its own; a failure takes its changes back and is thrown.

/// The live menus of a site and language become what their design says.
void publishMenus(HostContext& host, std::string_view site, std::string_view lang);
/// Removes the menus, in both twins, whose page or template is gone.
void removeOrphanMenus(HostContext& host);

}  // namespace torvex
