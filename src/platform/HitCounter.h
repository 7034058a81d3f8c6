#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// Where page views are counted, one count for each node and day. Implementations are safe to share between
/// threads.
class HitCounter {
  public:
    virtual ~HitCounter() = default;

    /// Counts one view of `nodeId` (of at least 5 characters) on `day` (yyyymmdd). The first view of a node
    /// on a day is always a unique one; a later one only when `unique` says that this visitor is new to the
    /// node. Returns whether the view was counted as a unique one. Throws `Error` when it can't be stored.
    virtual bool count(std::string_view nodeId, std::string_view day, bool unique) = 0;
};

}  // namespace torvex
