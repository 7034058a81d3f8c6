#pragma once

namespace torvex {

struct HostContext;

/// Whether the browser says that this server's own pages sent the request. A request that says nothing of its
/// origin is let through: programs send none, and browsers always do with a post.
bool comesFromOwnPages(const HostContext& host);

}  // namespace torvex
