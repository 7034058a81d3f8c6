#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "modules/forum/PostForm.h"
#include "platform/DateTime.h"

namespace torvex {
namespace db {
class Connection;
}

/// Where a post goes.
struct PostTarget {
    int topicId = 0;     ///< 0 begins a topic
    int reactionId = 0;  ///< the reaction that is answered; 0 the topic itself
};

/// What has become of a post.
struct Posted {
    int topicId = 0;
    int reactionId = 0;       ///< 0 for a topic
    bool isShown = false;     ///< others see it already
    bool isRepeated = false;  ///< it had been sent before, and was kept then
};

/// A topic with more would be a page of many megabytes.
inline constexpr int mostReactionsOfTopic = 5000;

/// Keeps a post, which has passed all tests. `showing` names the form that it came with: what is sent twice is
/// kept once. Posts of the same moment wait for each other, so that each gets a place of its own. Inside a
/// transaction of the caller's; a fault has changed nothing that matters and should be rolled back.
std::variant<Posted, PostFault> keepPost(db::Connection& transaction, const ForumRecord& forum,
                                         const PostTarget& target, const PostForm& form,
                                         std::string_view showing, const DateTime& now);

/// What was kept already of a form that comes again; nothing when it comes for the first time.
std::optional<Posted> keptPost(db::Connection& connection, int forumId, const PostTarget& target,
                               std::string_view showing);

}  // namespace torvex
