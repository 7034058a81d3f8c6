#include "modules/forum/FormToken.h"
#include "modules/forum/ForumViews.h"
#include "modules/forum/ForumWords.h"
#include "modules/forum/PlainText.h"
#include "modules/forum/PostDesk.h"
#include "pages/Pages.h"
#include "pages/Posted.h"
#include "pages/SameSite.h"
#include "pages/visitors/ForumVisit.h"
#include "pages/visitors/PostNews.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

PostForm typedIn(const HostContext& host) {
    return {.title = cleanLine(host.request.formField(formField::title)),
            .text = cleanText(host.request.formField(formField::text)),
            .author = cleanLine(host.request.formField(formField::author)),
            .email = cleanLine(host.request.formField(formField::email))};
}

SentPost sentIn(const HostContext& host, const ForumVisit& visit, const PostTarget& target) {
    return {.target = target,
            .form = typedIn(host),
            .token = host.request.formField(formField::token),
            .isTrapped = !host.request.formField(formField::trap).empty(),
            .isForeign = !comesFromOwnPages(host),
            .address = host.request.serverVariable("remote_addr"),
            .session = host.session.id(),
            .language = visit.language()};
}

/// The form, with what was typed.
void showForm(HostContext& host, db::Connection& connection, ForumVisit& visit, const PostDesk& desk,
              FormView view) {
    const db::ReadScope oneState(connection);
    const DateTime now = host.clock.now();
    if (view.target.topicId != 0) {
        const auto topic = topicOf(connection, view.forum, view.target.topicId, now);
        if (!topic) return showTopics(host, connection, visit, view.forum, true);
        view.topicTitle = topic->title;
        const auto answered =
            reactionOf(connection, view.forum.id, view.target.topicId, view.target.reactionId);
        view.answered = answered ? *answered : *topic;
        if (!answered) view.target.reactionId = 0;
    }
    view.token = desk.tokenFor(view.forum.id, view.target, now);
    view.sentences = forumWords::sentencesFor(connection, visit.language(), view.faults);
    visit.show("reaction", [&](HTMLTemplate& page) { fillForm(page, view, visit.address()); });
}

/// What can't be answered any more begins a topic of its own, or answers what is left.
PostTarget targetLeft(PostTarget target, const std::vector<PostFault>& faults) {
    for (const PostFault fault : faults) {
        if (fault == PostFault::TopicGone || fault == PostFault::NoPlaceLeft) return {};
        if (fault == PostFault::ReactionGone) target.reactionId = 0;
    }
    return target;
}

void leadToPost(HostContext& host, const ForumVisit& visit, const ForumRecord& forum, const Posted& posted,
                const PostTarget& target) {
    noteNews(host, posted.isShown ? PostNews::Shown : PostNews::Waits);
    const bool hasPage = posted.isShown || target.topicId != 0;
    const int shownReaction = posted.isShown ? posted.reactionId : target.reactionId;
    host.response.redirect(hasPage ? visit.address().topic(forum.id, posted.topicId, shownReaction)
                                   : visit.address().topics(forum.id));
}

void take(HostContext& host, db::Connection& connection, ForumVisit& visit, PostDesk& desk,
          const ForumRecord& forum, const PostTarget& target) {
    SentPost sent = sentIn(host, visit, target);
    const auto outcome = desk.take(host, connection, forum, sent, visit.address());
    if (const auto* posted = std::get_if<Posted>(&outcome))
        return leadToPost(host, visit, forum, *posted, target);
    const auto& faults = std::get<std::vector<PostFault>>(outcome);
    showForm(host, connection, visit, desk,
             {.forum = forum,
              .target = targetLeft(target, faults),
              .typed = std::move(sent.form),
              .faults = faults});
}

}  // namespace

void forumReactionPage(HostContext& host, const PolicyReports& reports, PostDesk& desk) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    ForumVisit visit(host, *connection, reports);
    if (!visit.begin()) return;
    const auto forum = visit.forum();
    if (!forum) return showForums(host, visit, true);
    const PostTarget target{visit.number("topicId"), visit.number("reactionId")};
    if (isPosted(host)) return take(host, *connection, visit, desk, *forum, target);
    showForm(host, *connection, visit, desk, {.forum = *forum, .target = target});
}

}  // namespace torvex
