#pragma once

#include <string>
#include <string_view>

namespace torvex {
struct Actor;
struct HostContext;

/// A line of the audit trail in the actor's name, of no page; `advId` is the entry of the administration menu
/// that called, or 0.
void writeActorLine(HostContext& host, const Actor& actor, int advId, std::string_view action,
                    const std::string& description);

}  // namespace torvex
