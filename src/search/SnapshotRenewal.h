#pragma once

#include <string_view>
#include <vector>

#include "platform/db/ConnectionSource.h"
#include "records/PageId.h"

namespace torvex {

/// Renews the snapshots of these pages, as far as they are live. What fails is told to operators and does no
/// harm.
void renewSnapshots(HostContext& host, const db::ConnectionSource& connection,
                    const std::vector<PageId>& pages);

/// Tells operators that a snapshot, or those of several pages, are as they were.
void warnOfSnapshot(HostContext& host, std::string_view subject, std::string_view reason);

}  // namespace torvex
