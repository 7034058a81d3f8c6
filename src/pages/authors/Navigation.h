#pragma once

#include <string>
#include <string_view>

namespace torvex {
struct HostContext;

// What browsers say of why they ask. Those of before 2023, and all over plain http to other machines, say
// nothing.

/// Whether somebody follows an address in a window of her own: no script, no frame and no picture asks.
/// True when the browser says nothing of it.
bool isNavigation(const HostContext& host);
/// Whether a frame asks.
bool isForFrame(const HostContext& host);

/// "https://www.site.test:8443", as this request names its place.
std::string originOf(const HostContext& host);
/// Answers with the way to the door, which leads back to the address that was asked.
void leadToDoor(HostContext& host);

/// `target` when it is an address below "/torvex/" of this server, or else that one itself: what comes in a
/// request must not lead anywhere else.
std::string safeTarget(std::string_view target);

}  // namespace torvex
