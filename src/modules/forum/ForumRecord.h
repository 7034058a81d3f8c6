#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {
struct PageIdentity;
namespace db {
class Connection;
class Rows;
}  // namespace db

/// Whether a forum asks its visitors for something.
enum class Asked { No, MayBeGiven, MustBeGiven };

/// The definition of a forum, as visitors meet it.
struct ForumRecord {
    int id = 0;
    std::string name;
    std::string description;
    double hotPeriod = 0;      ///< days for which a contribution counts as new
    bool showsAtOnce = false;  ///< posts needn't wait for a moderator
    double archiveAfter = 0;   ///< days behind which a topic without a new post is history; 0 never
    bool isArchiveVisible = false;
    bool sendsMail = false;
    std::string mailFrom;
    std::string mailTo;  ///< who is told, divided by commas; "" the sender
    std::string mailSubject;
    int pageSize = 0;  ///< topics on a page; 0 all that a page may hold
    Asked visitorName = Asked::MustBeGiven;
    Asked visitorEmail = Asked::No;
    std::string words;  ///< what sends a post to the moderators, divided by commas
};

/// What a list of forums says of one.
struct ForumSummary {
    ForumRecord record;
    double topics = 0;
    std::string lastDay;  ///< of the last contribution; "" for none
};

/// The live forums that a page of the application shows, by name: those that its parameters name
/// ("forumId=2,forumId=3"), or all of its site and language but those that another page names: that one may
/// be guarded.
std::vector<ForumSummary> forumsOfPage(db::Connection& connection, const PageIdentity& page,
                                       std::string_view parameters);

/// One of them; nothing when the page doesn't show it.
std::optional<ForumRecord> forumOfPage(db::Connection& connection, const PageIdentity& page,
                                       std::string_view parameters, int forumId);

}  // namespace torvex
