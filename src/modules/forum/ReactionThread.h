#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "modules/forum/ForumAddress.h"
#include "modules/forum/Topics.h"

namespace torvex {

class RowTemplate;

/// Where a thread stands, and what is marked in it.
struct ThreadPlace {
    const ForumAddress& address;
    int forumId;
    int topicId;
    int shownReaction;        ///< 0 none
    std::string_view hotDay;  ///< the first day that counts as new
};

/// The reactions, which come in the order of the tree, as lists in lists: one below the nearest that is shown
/// of those that it answers. Each entry has the anchor "reaction-N" and is the template, filled.
std::string reactionThread(const RowTemplate& row, const std::vector<Contribution>& reactions,
                           const ThreadPlace& place);

}  // namespace torvex
