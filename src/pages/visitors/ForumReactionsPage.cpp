#include "modules/forum/Forum.h"
#include "modules/forum/ForumViews.h"
#include "pages/Pages.h"
#include "pages/visitors/ForumVisit.h"
#include "pages/visitors/PostNews.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

/// The tree as the class draws it, for templates that want it.
constexpr auto treeTag = "forum_tree";

void fillTree(HostContext& host, db::Connection& connection, HTMLTemplate& page, const TopicView& view) {
    if (!page.tagExists(treeTag)) return;
    Forum forum(host);
    forum.connect(connection);
    page.replaceTag(treeTag, forum.getReactionTree(view.forum.id, view.topic.id, view.shownReaction));
}

}  // namespace

void forumReactionsPage(HostContext& host, const PolicyReports& reports) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::ReadScope oneState(*connection);
    ForumVisit visit(host, *connection, reports);
    if (!visit.begin()) return;
    const auto forum = visit.forum();
    if (!forum) return showForums(host, visit, true);
    const auto topic = topicOf(*connection, *forum, visit.number("topicId"), host.clock.now());
    if (!topic) return showTopics(host, *connection, visit, *forum, true);
    const int shown = visit.number("reactionId");
    const TopicView view{.forum = *forum,
                         .topic = *topic,
                         .reactions = reactionsOf(*connection, forum->id, topic->id, shown),
                         .shownReaction = shown,
                         .news = takeNews(host)};
    visit.show("reactions", [&](HTMLTemplate& page) {
        fillTree(host, *connection, page, view);
        fillTopic(page, view, visit.address(), host.clock.now());
    });
}

}  // namespace torvex
