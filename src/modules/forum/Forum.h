#pragma once

#include <string>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

struct HostContext;

/// The discussion forums. Their definitions have a design and a live twin; topics and reactions are what
/// visitors write, and have none. An object lives for one request and is used by one thread. Failures are
/// `Error` with the operation's line in front, but for `publish`, which answers a code.
class Forum {
  public:
    explicit Forum(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // For authors
    /// The forums of a site and language by name, from the design whatever the mode: number and name, and in
    /// mode "D" whether it waits for its removal. An empty value when there are none.
    Value getForumList(const std::string& site, const std::string& lang, const std::string& mode = "L");
    /// The client script of the page that moderates a topic, with places for the template engine to fill.
    std::string getScript();
    /// Brings one forum (or, for 0, all of a site and language) to visitors, and removes those that wait for
    /// it with all that was written in them. "" when it is done; "-2" no such forum, "-99" failed.
    std::string publish(int forumId, const std::string& site, const std::string& lang);

    // For visitors
    /// The topic and the reactions that are shown, drawn as a tree with pictures for the lines; `reactionId`
    /// is marked as the one that is read now. "" without a forum, a topic or any reaction.
    std::string getReactionTree(int forumId, int topicId, int reactionId = 0, const std::string& mode = "L");

  private:
    db::Connection& connection() { return connection_.use(host_); }

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
