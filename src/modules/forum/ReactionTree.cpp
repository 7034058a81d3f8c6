#include "modules/forum/ReactionTree.h"

#include <optional>
#include <vector>

#include "media/Image.h"
#include "modules/forum/ForumDates.h"
#include "modules/forum/TreeLines.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/TrimmedText.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectHotPeriodLive =
    "select forum_hotPeriod from TORVEX_FORUM_LIVE where forum_id = ?";
constexpr std::string_view selectHotPeriodDesign =
    "select forum_hotPeriod from TORVEX_FORUM_DESIGN where forum_id = ?";
constexpr std::string_view selectTopic =
    "select topic_title, topic_dateCreation from TORVEX_FORUM_TOPICS "
    "where topic_forumId = ? and topic_id = ?";
constexpr std::string_view selectReactions =
    "select reaction_id, reaction_reference, reaction_title, reaction_date from TORVEX_FORUM_REACTIONS "
    "where reaction_forumId = ? and reaction_topicId = ? and reaction_online = 1 "
    "order by reaction_reference";

/// The size of the pictures, as attributes hold it.
struct IconSize {
    std::string width = "0";
    std::string height = "0";
};

IconSize iconSize(HostContext& host) {
    Image picture(host);
    picture.setFilename(host.application.text(applicationKey::rootPath) +
                        "torvex_forum/images/tree_blank.gif");
    return {text::fromNumber(picture.width()), text::fromNumber(picture.height())};
}

std::string_view fileOf(TreeLine line) {
    switch (line) {
        case TreeLine::Blank:
            return "tree_blank.gif";
        case TreeLine::Vertical:
            return "tree_vertline.gif";
        case TreeLine::Node:
            return "tree_node.gif";
        case TreeLine::LastNode:
            return "tree_lastnode.gif";
    }
    return {};
}

struct Reaction {
    std::string id;
    std::string reference;
    std::string title;
    std::string day;
};

/// Writes the rows. What is new is told by the day of the contribution.
class TreeWriter {
  public:
    TreeWriter(const TreeRequest& asked, IconSize icons, std::string hotDay)
        : topic_(std::to_string(asked.forumId) + "," + std::to_string(asked.topicId)),
          shown_(asked.shownReaction == 0 ? std::string() : std::to_string(asked.shownReaction)),
          icons_(std::move(icons)),
          hotDay_(std::move(hotDay)) {}

    std::string topicRow(std::string_view title, std::string_view day) const {
        std::string row = R"(<table cellpadding="0" cellspacing="0" border="0"><tr><td colspan="2" nowrap>)"
                          R"(<a href="javascript:view()";
        row.append(topic_).append(",0)\" class=\"forum_topicTitle\"");
        appendLabel(row, title, day, "forum_topicDate");
        return row;
    }
    std::string reactionRow(const Reaction& reaction) {
        const std::string_view mark = reaction.id == shown_ ? "_hl" : "";
        std::string row = R"(<table cellpadding="0" cellspacing="0" border="0"><tr><td nowrap>)";
        for (const TreeLine line : lines_.before(reaction.reference)) appendPicture(row, line);
        row.append(R"(</td><td width="100%" nowrap>&nbsp;<a href="javascript:view()");
        row.append(topic_).append(",").append(reaction.id);
        row.append(")\" class=\"forum_reactionTitle").append(mark).append("\"");
        appendLabel(row, reaction.title, reaction.day, "forum_reactionDate" + std::string(mark));
        return row;
    }

  private:
    void appendPicture(std::string& row, TreeLine line) const {
        row.append("<img src='images/").append(fileOf(line));
        row.append("' width='").append(icons_.width);
        row.append("' height='").append(icons_.height).append("'>");
    }
    void appendLabel(std::string& row, std::string_view title, std::string_view day,
                     std::string_view dateClass) const {
        row.append(R"( onmouseover="status='';return true" nowrap>)").append(text::htmlEncode(title));
        row.append("</a><span class=\"").append(dateClass).append("\"> - ");
        row.append(text::htmlEncode(shownDay(day))).append(" </span>");
        if (text::compare(day, hotDay_) >= 0) row.append("&nbsp;<img src=\"images/new.gif\">");
        row.append("</td></tr></table>");
    }

    std::string topic_;  ///< the numbers of the forum and the topic
    std::string shown_;
    IconSize icons_;
    std::string hotDay_;
    TreeLines lines_;
};

/// The first day that counts as new; nothing when there is no such forum.
std::optional<std::string> hotDayOf(HostContext& host, db::Connection& connection, const TreeRequest& asked) {
    db::Rows rows = connection.query(asked.twin == Twin::Live ? selectHotPeriodLive : selectHotPeriodDesign,
                                     {asked.forumId});
    if (!rows.next()) return std::nullopt;
    return dayBefore(host.clock.now(), rows.number("forum_hotPeriod"));
}

std::vector<Reaction> reactionsOf(db::Connection& connection, const TreeRequest& asked) {
    std::vector<Reaction> reactions;
    db::Rows rows = connection.query(selectReactions, {asked.forumId, asked.topicId});
    while (rows.next()) {
        reactions.push_back({rows.text("reaction_id"), trimmed(rows, "reaction_reference"),
                             trimmed(rows, "reaction_title"), trimmed(rows, "reaction_date")});
    }
    return reactions;
}

/// Drawn from the last row to the first, and put together from the first to the last.
std::string rowsOf(TreeWriter& writer, const std::vector<Reaction>& reactions) {
    std::vector<std::string> rows;
    rows.reserve(reactions.size());
    for (auto reaction = reactions.rbegin(); reaction != reactions.rend(); ++reaction) {
        rows.push_back(writer.reactionRow(*reaction));
    }
    std::string html;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) html += *row;
    return html;
}

}  // namespace

std::string drawReactionTree(HostContext& host, db::Connection& connection, const TreeRequest& asked) {
    IconSize icons = iconSize(host);
    auto hotDay = hotDayOf(host, connection, asked);
    if (!hotDay) return {};
    TreeWriter writer(asked, std::move(icons), std::move(*hotDay));
    std::string topic;
    {
        db::Rows rows = connection.query(selectTopic, {asked.forumId, asked.topicId});
        if (!rows.next()) return {};
        topic = writer.topicRow(trimmed(rows, "topic_title"), trimmed(rows, "topic_dateCreation"));
    }
    const auto reactions = reactionsOf(connection, asked);
    if (reactions.empty()) return {};
    return R"(<table class="forum_bgcolor" cellpadding="0" cellspacing="0" border="0" width="100%"><tr><td>)" +
           topic + rowsOf(writer, reactions) + "</td></tr></table>";
}

}  // namespace torvex
