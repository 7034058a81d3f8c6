#pragma once

#include <string>

#include "records/PageId.h"

namespace torvex {

/// Where the forum is for visitors: the application's folder, and the addresses in it. They are plain text
/// with "&", to be encoded where they stand in HTML. Which page of the site the forum stands on is always part
/// of them.
class ForumAddress {
  public:
    static constexpr const char* folder = "/torvex_forum/";

    explicit ForumAddress(PageId page);

    std::string forums() const;
    std::string topics(int forumId, int page = 1, bool isArchive = false) const;
    /// With its reactions; a reaction is led to.
    std::string topic(int forumId, int topicId, int reactionId = 0) const;
    /// The form for a topic (0 begins a new one) or for an answer to a reaction.
    std::string form(int forumId, int topicId = 0, int reactionId = 0) const;

  private:
    std::string page_;
};

}  // namespace torvex
