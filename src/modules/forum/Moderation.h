#pragma once

#include <string_view>

#include "platform/Value.h"

namespace torvex {
namespace db {
class Connection;
}

// What moderators do with what visitors have written. Places are those of reactions; "" is the topic itself.

/// What waits for a moderator in the forums of a site and language, the oldest first: forum, topic, reaction
/// (0 for a topic), place, title, author, day, text, the forum's name. An empty value when nothing does.
Value waitingPosts(db::Connection& connection, std::string_view site, std::string_view lang);

// Inside a transaction of the caller's; false when there is no such topic or reaction.

/// Shows a contribution, and all those that it answers: otherwise nobody could see it.
bool showPost(db::Connection& transaction, int forumId, int topicId, std::string_view place);
/// Hides a contribution with all that was answered to it.
bool hidePost(db::Connection& transaction, int forumId, int topicId, std::string_view place);
/// Removes it with all that was answered to it.
bool removePost(db::Connection& transaction, int forumId, int topicId, std::string_view place);

}  // namespace torvex
