#include "modules/forum/ForumViews.h"

#include "modules/forum/ForumDates.h"
#include "modules/forum/PlainText.h"
#include "modules/forum/ReactionThread.h"
#include "modules/forum/TemplateParts.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr auto reactionBlock = "reaction_row";

std::string numberText(double number) {
    return text::fromNumber(number);
}

bool isNew(std::string_view day, const ForumRecord& forum, const DateTime& now) {
    return !day.empty() && text::compare(day, dayBefore(now, forum.hotPeriod)) >= 0;
}

/// What all pages inside a forum have.
void addForum(TemplateParts& parts, const ForumRecord& forum, const ForumAddress& address) {
    parts.text("forum_name", forum.name)
        .html("forum_desc", plainTextHtml(forum.description))
        .text("forum_homeURL", address.forums())
        .text("forum_URL", address.topics(forum.id))
        .text("forum_newTopicURL", address.form(forum.id))
        .block("forum_moderated", !forum.showsAtOnce);
}

void addNews(TemplateParts& parts, PostNews news, bool isGone) {
    parts.block("forum_posted", news == PostNews::Shown)
        .block("forum_waiting", news == PostNews::Waits)
        .block("forum_gone", isGone);
}

/// Fills the block once for each entry and puts the rows in its place.
template <typename Entries, typename PartsOf>
void fillRows(HTMLTemplate& page, const char* name, const Entries& entries, PartsOf partsOf) {
    if (!page.blockExists(name)) return;
    const RowTemplate row(page.extractBlock(name));
    std::string rows;
    for (const auto& entry : entries) row.append(rows, partsOf(entry));
    page.replaceAllBlocks(name, rows);
}

TemplateParts forumRow(const ForumSummary& forum, const ForumAddress& address, const DateTime& now) {
    TemplateParts parts;
    parts.text("forum_name", forum.record.name)
        .html("forum_desc", plainTextHtml(forum.record.description))
        .text("forum_URL", address.topics(forum.record.id))
        .text("forum_topics", numberText(forum.topics))
        .day("forum_last", forum.lastDay)
        .block("forum_active", !forum.lastDay.empty())
        .block("forum_new", isNew(forum.lastDay, forum.record, now));
    return parts;
}

TemplateParts topicRow(const TopicSummary& summary, const ForumRecord& forum, const ForumAddress& address,
                       const DateTime& now) {
    TemplateParts parts;
    parts.text("topic_title", summary.topic.title)
        .text("topic_URL", address.topic(forum.id, summary.topic.id))
        .text("topic_author", summary.topic.author)
        .text("topic_reactions", numberText(summary.reactions))
        .day("topic", summary.topic.day)
        .day("topic_last", summary.lastDay)
        .block("topic_hasAuthor", !summary.topic.author.empty())
        .block("topic_new", isNew(summary.lastDay, forum, now));
    return parts;
}

void addPaging(TemplateParts& parts, const TopicsView& view, const ForumAddress& address) {
    const bool isArchive = view.age == TopicAge::Archived;
    const int page = view.topics.page;
    const int pages = view.topics.pages;
    const auto addressOf = [&](int number) { return address.topics(view.forum.id, number, isArchive); };
    parts.block("forum_paging", pages > 1)
        .block("forum_previous", page > 1)
        .block("forum_next", page < pages)
        .text("forum_previousURL", addressOf(page - 1))
        .text("forum_nextURL", addressOf(page + 1))
        .text("forum_page", std::to_string(page))
        .text("forum_pages", std::to_string(pages));
    parts.block("forum_archive", view.hasArchive && !isArchive)
        .block("forum_current", isArchive)
        .text("forum_archiveURL", address.topics(view.forum.id, 1, true))
        .text("forum_currentURL", address.topics(view.forum.id));
}

void addTopic(TemplateParts& parts, const TopicView& view, const ForumAddress& address, const DateTime& now) {
    parts.text("topic_title", view.topic.title)
        .html("topic_text", plainTextHtml(view.topic.text))
        .text("topic_author", view.topic.author)
        .text("topic_URL", address.topic(view.forum.id, view.topic.id))
        .text("topic_reactURL", address.form(view.forum.id, view.topic.id))
        .text("topic_reactions", std::to_string(view.reactions.size()))
        .day("topic", view.topic.day)
        .block("topic_hasAuthor", !view.topic.author.empty())
        .block("topic_new", isNew(view.topic.day, view.forum, now))
        .block("reaction_none", view.reactions.empty());
}

std::string stateOf(const FormView& view, PostField field) {
    for (const PostFault fault : view.faults) {
        if (fieldOf(fault) == field) return R"( aria-invalid="true" aria-describedby="forum_faults")";
    }
    return {};
}

const char* targetOf(PostFault fault) {
    switch (fieldOf(fault)) {
        case PostField::Title:
            return formField::title;
        case PostField::Author:
            return formField::author;
        case PostField::Email:
            return formField::email;
        default:
            return formField::text;
    }
}

void addFields(TemplateParts& parts, const FormView& view) {
    parts.text("form_token", view.token)
        .text("form_title", view.typed.title)
        .text("form_text", view.typed.text)
        .text("form_author", view.typed.author)
        .text("form_email", view.typed.email)
        .html("form_titleState", stateOf(view, PostField::Title))
        .html("form_textState", stateOf(view, PostField::Text))
        .html("form_authorState", stateOf(view, PostField::Author))
        .html("form_emailState", stateOf(view, PostField::Email));
    parts.block("form_askAuthor", view.forum.visitorName != Asked::No)
        .block("form_authorMust", view.forum.visitorName == Asked::MustBeGiven)
        .block("form_authorMay", view.forum.visitorName == Asked::MayBeGiven)
        .block("form_askEmail", view.forum.visitorEmail != Asked::No)
        .block("form_emailMust", view.forum.visitorEmail == Asked::MustBeGiven)
        .block("form_emailMay", view.forum.visitorEmail == Asked::MayBeGiven);
}

struct FaultRow {
    PostFault fault;
    const std::string& sentence;
};

std::vector<FaultRow> faultRows(const FormView& view) {
    std::vector<FaultRow> rows;
    for (std::size_t i = 0; i < view.faults.size(); ++i)
        rows.push_back({view.faults[i], view.sentences.at(i)});
    return rows;
}

}  // namespace

void fillForums(HTMLTemplate& page, const ForumsView& view, const ForumAddress& address,
                const DateTime& now) {
    fillRows(page, "forum_row", view.forums,
             [&](const ForumSummary& forum) { return forumRow(forum, address, now); });
    TemplateParts parts;
    parts.block("forum_none", view.forums.empty()).text("forum_homeURL", address.forums());
    addNews(parts, PostNews::None, view.isGone);
    parts.fill(page);
}

void fillTopics(HTMLTemplate& page, const TopicsView& view, const ForumAddress& address,
                const DateTime& now) {
    fillRows(page, "topic_row", view.topics.topics,
             [&](const TopicSummary& topic) { return topicRow(topic, view.forum, address, now); });
    TemplateParts parts;
    parts.block("topic_none", view.topics.topics.empty());
    addForum(parts, view.forum, address);
    addPaging(parts, view, address);
    addNews(parts, view.news, view.isGone);
    parts.fill(page);
}

/// The thread comes last: it may be long, and what is filled in is searched for the next place.
void fillTopic(HTMLTemplate& page, const TopicView& view, const ForumAddress& address, const DateTime& now) {
    const RowTemplate row(page.blockExists(reactionBlock) ? page.extractBlock(reactionBlock) : std::string());
    TemplateParts parts;
    addForum(parts, view.forum, address);
    addTopic(parts, view, address, now);
    addNews(parts, view.news, view.isGone);
    parts.fill(page);
    const std::string hotDay = dayBefore(now, view.forum.hotPeriod);
    page.replaceAllBlocks(
        reactionBlock, reactionThread(row, view.reactions,
                                      {address, view.forum.id, view.topic.id, view.shownReaction, hotDay}));
}

void fillForm(HTMLTemplate& page, const FormView& view, const ForumAddress& address) {
    fillRows(page, "form_fault", faultRows(view), [](const FaultRow& row) {
        TemplateParts parts;
        parts.text("fault_text", row.sentence).text("fault_field", targetOf(row.fault));
        return parts;
    });
    TemplateParts parts;
    addForum(parts, view.forum, address);
    addFields(parts, view);
    const bool isTopic = view.target.topicId == 0;
    parts.text("form_action", address.form(view.forum.id, view.target.topicId, view.target.reactionId))
        .text("form_backURL", isTopic
                                  ? address.topics(view.forum.id)
                                  : address.topic(view.forum.id, view.target.topicId, view.target.reactionId))
        .text("topic_title", view.topicTitle)
        .text("answered_title", view.answered.title)
        .text("answered_author", view.answered.author)
        .html("answered_text", plainTextHtml(view.answered.text))
        .block("answered_hasAuthor", !view.answered.author.empty())
        .block("form_newTopic", isTopic)
        .block("form_newReaction", !isTopic)
        .block("form_faults", !view.faults.empty());
    parts.fill(page);
}

}  // namespace torvex
