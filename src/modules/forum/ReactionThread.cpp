#include "modules/forum/ReactionThread.h"

#include "modules/forum/Places.h"
#include "modules/forum/PlainText.h"
#include "modules/forum/TemplateParts.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

TemplateParts partsOf(const Contribution& reaction, const ThreadPlace& place) {
    const bool isShown = reaction.id == place.shownReaction && place.shownReaction != 0;
    TemplateParts parts;
    parts.text("reaction_id", std::to_string(reaction.id))
        .text("reaction_title", reaction.title)
        .text("reaction_author", reaction.author)
        .html("reaction_text", plainTextHtml(reaction.text))
        .text("reaction_URL", place.address.topic(place.forumId, place.topicId, reaction.id))
        .text("reaction_reactURL", place.address.form(place.forumId, place.topicId, reaction.id))
        .day("reaction", reaction.day)
        .block("reaction_hasAuthor", !reaction.author.empty())
        .block("reaction_hasText", !reaction.text.empty())
        .block("reaction_withoutText", reaction.text.empty())
        .block("reaction_new", text::compare(reaction.day, place.hotDay) >= 0)
        .block("reaction_shown", isShown);
    return parts;
}

/// Opens and closes the lists around the entries.
class Lists {
  public:
    explicit Lists(std::string& html) : html_(html) {}

    void begin(const Contribution& reaction) {
        bool isFirstOfList = true;
        while (!open_.empty() && !forumPlace::isBelow(reaction.reference, open_.back())) {
            if (!isFirstOfList) html_ += "</ol>";
            html_ += "</li>\n";
            open_.pop_back();
            isFirstOfList = false;
        }
        if (isFirstOfList) html_ += html_.empty() ? "<ol class=\"forum_thread\">\n" : "<ol>\n";
        html_ += "<li id=\"reaction-" + std::to_string(reaction.id) + "\">";
        open_.push_back(reaction.reference);
    }
    void end() {
        for (; !open_.empty(); open_.pop_back()) html_ += "</li></ol>\n";
    }

  private:
    std::string& html_;
    std::vector<std::string_view> open_;  ///< the places of the entries around
};

}  // namespace

std::string reactionThread(const RowTemplate& row, const std::vector<Contribution>& reactions,
                           const ThreadPlace& place) {
    std::string html;
    Lists lists(html);
    for (const Contribution& reaction : reactions) {
        lists.begin(reaction);
        row.append(html, partsOf(reaction, place));
    }
    lists.end();
    return html;
}

}  // namespace torvex
