#pragma once

#include <string>

#include "records/PageIdentity.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// What is drawn.
struct TreeRequest {
    int forumId;
    int topicId;
    int shownReaction;  ///< the reaction that is read now; 0 none
    Twin twin;          ///< of the forum's definition
};

/// A topic and those of its reactions that are shown, as HTML: a row each, with pictures for the lines of the
/// tree. "" without a forum, a topic or any reaction.
std::string drawReactionTree(HostContext& host, db::Connection& connection, const TreeRequest& asked);

}  // namespace torvex
