#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "modules/forum/ForumRecord.h"
#include "platform/DateTime.h"

namespace torvex {

/// A topic, or a reaction, as visitors see it.
struct Contribution {
    int id = 0;
    std::string reference;  ///< a reaction's place in its topic
    std::string title;
    std::string text;
    std::string author;
    std::string day;  ///< "yyyymmdd"
};

struct TopicSummary {
    Contribution topic;
    double reactions = 0;  ///< those that are shown
    std::string lastDay;
};

/// One page of a forum's topics, the liveliest first.
struct TopicPage {
    std::vector<TopicSummary> topics;
    int page = 1;
    int pages = 1;  ///< at least one
};

/// Those without a new post for longer than the forum's archive age, or those that aren't so old.
enum class TopicAge { Current, Archived };

/// `page` counts from 1; one that there isn't leads to the nearest that is there.
TopicPage topicsOf(db::Connection& connection, const ForumRecord& forum, TopicAge age, double page,
                   const DateTime& now);
bool hasArchive(db::Connection& connection, const ForumRecord& forum, const DateTime& now);

/// Nothing when it isn't there or isn't shown, or lies in an archive that nobody may see.
std::optional<Contribution> topicOf(db::Connection& connection, const ForumRecord& forum, int topicId,
                                    const DateTime& now);

/// The reactions that are shown, in the order of the tree. A long topic has the text of the reaction `shown`
/// alone, so that its page stays of a size that can be read.
std::vector<Contribution> reactionsOf(db::Connection& connection, int forumId, int topicId, int shown);
/// Nothing when it isn't there or isn't shown.
std::optional<Contribution> reactionOf(db::Connection& connection, int forumId, int topicId, int reactionId);

/// With more reactions than that, or with so many characters in them, the texts are shown one at a time.
inline constexpr std::size_t mostTextsOfTopic = 200;
inline constexpr double mostLettersOfTopic = 300'000;

/// Topics on a page where the forum says nothing, and the most of them.
inline constexpr int mostTopicsOnPage = 100;

}  // namespace torvex
