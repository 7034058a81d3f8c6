#pragma once

#include <optional>
#include <string_view>

#include "platform/Value.h"

namespace torvex {
namespace db {
class Connection;
}

// What moderators do with what visitors have written.

/// What waits for a moderator in the forums of a site and language, the oldest first: forum, topic, reaction
/// (0 for a topic), place, title, author, day, text, the forum's name. An empty value when nothing does.
Value waitingPosts(db::Connection& connection, std::string_view site, std::string_view lang);

struct TopicKey {
    int forumId = 0;
    int topicId = 0;
};

// Inside a transaction of the caller's. `places` are those of reactions, divided by commas; without any it is
// the topic itself. The result is how many contributions are another way than before; nothing when there is no
// such topic, or one of the reactions isn't there: what is done by then is to be rolled back.

/// Shows contributions, and all those that they answer: otherwise nobody could see them.
std::optional<int> showPosts(db::Connection& transaction, const TopicKey& topic, std::string_view places);
/// Hides them with all that was answered to them.
std::optional<int> hidePosts(db::Connection& transaction, const TopicKey& topic, std::string_view places);
/// Removes them with all that was answered to them.
std::optional<int> removePosts(db::Connection& transaction, const TopicKey& topic, std::string_view places);

}  // namespace torvex
