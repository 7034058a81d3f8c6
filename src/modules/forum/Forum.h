#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

struct HostContext;
struct TopicKey;

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

    // For moderators
    /// What visitors have written in the live forums of a site and language and nobody sees yet.
    Value getWaiting(const std::string& site, const std::string& lang);
    /// Shows the reactions of a list of places, divided by commas, with those that they answer; or hides them
    /// with what answers them. An empty list is the topic itself. "" when it is done; "-2" no such topic or
    /// reaction, "-99" failed.
    std::string setOnOff(int forumId, int topicId, const std::string& references, bool on, int advId = 0);
    /// Removes them with all that answers them.
    std::string deleteReactions(int forumId, int topicId, const std::string& references, int advId = 0);

    // For visitors
    /// The topic and the reactions that are shown, drawn as a tree with pictures for the lines; `reactionId`
    /// is marked as the one that is read now. "" without a forum, a topic or any reaction.
    std::string getReactionTree(int forumId, int topicId, int reactionId = 0, const std::string& mode = "L");

  private:
    using Change = std::optional<int> (*)(db::Connection&, const TopicKey&, std::string_view places);

    db::Connection& connection() { return connection_.use(host_); }
    std::string changePosts(const std::string& operation, Change change, int forumId, int topicId,
                            const std::string& references);
    void recordChange(int advId, std::string_view action, const std::string& description);

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
