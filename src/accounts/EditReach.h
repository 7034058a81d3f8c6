#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/EditRights.h"

namespace torvex {

/// Where somebody may do something to pages, looked up once for many of them: everywhere, or to these nodes
/// and what lies under them.
struct EditReach {
    bool isEverywhere = false;
    std::vector<std::string> nodes;  ///< in small letters, sorted, none of them twice

    bool isNowhere() const { return !isEverywhere && nodes.empty(); }
    bool covers(std::string_view nodeId) const;
};

/// Where the actor may do any of the tasks, in all trees: `mayEditPage` for each page gives the same.
EditReach editReachOf(db::Connection& connection, const Actor& actor, std::span<const EditTask> tasks);

}  // namespace torvex
