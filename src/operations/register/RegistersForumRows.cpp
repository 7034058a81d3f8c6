#include "accounts/AdminEntries.h"
#include "operations/register/ModuleLabels.h"
#include "operations/register/RegistersRows.h"

namespace torvex::operations {

namespace {

StatusCode contributionGone() {
    return refusal(-1, "The topic or one of the reactions is gone.", label::contributionGone);
}

std::vector<Row<registers>> definitions() {
    return {
        reads("getForums", &registers::getForums, {argument("site"), argument("lang")},
              "The forums of a website by name, with all that their definitions say in the design, and how "
              "much was written in them.",
              viewAccess(adminEntry::forum, "site", "lang"))
            .lists({{"forum_id", Number},
                    {"forum_name", Text},
                    {"forum_desc", Text},
                    {"forum_hotPeriod", Number},
                    {"forum_reactionsOnline", Number},
                    {"forum_archiveAfter", Number},
                    {"forum_archiveVisible", Number},
                    {"forum_sendEmail", Number},
                    {"forum_emailFrom", Text},
                    {"forum_emailTo", Text},
                    {"forum_emailSubject", Text},
                    {"forum_pageSize", Number},
                    {"forum_askName", Number},
                    {"forum_askEmail", Number},
                    {"forum_words", Text},
                    {"forum_deleted", Number},
                    {"forum_modified", Number},
                    {"isLive", Number},
                    {"topics", Number},
                    {"hidden", Number}}),
        writes(
            "saveForum", &registers::saveForum,
            {argument("forumId"), argument("site"), argument("lang"), argument("name"),
             argument("description"), argument("hotPeriod"), argument("reactionsOnline"),
             argument("archiveAfter"), argument("archiveVisible"), argument("sendEmail"),
             argument("emailFrom"), argument("emailTo"), argument("emailSubject"), argument("pageSize"),
             argument("askName"), argument("askEmail"), argument("words"), argument("marked", false),
             argument("advId", 0)},
            "Saves a forum's definition in the design, or adds one for 0, and gives its number; one that is "
            "marked goes with the next publishing.",
            accessAtForum("edit", "forumId", "site", "lang"))
            .codes({recordGone(), noWebsite(), nameIsMissing(),
                    refusal(-4, "What visitors are asked for is 0, 1 or 2.", label::noSuchChoice),
                    refusal(-6, "An address is none, or there is none to send from.", label::noMailAddress),
                    notLoggedIn(), failed()}),
    };
}

std::vector<Row<registers>> posts() {
    return {
        reads("getTopics", &registers::getTopics, {argument("forumId"), argument("from", 0.0)},
              "The topics of a forum, the liveliest first, 500 at once, also those that nobody sees.",
              accessAtForum("view", "forumId"))
            .lists({{"topic_id", Number},
                    {"topic_title", Text},
                    {"topic_author", Text},
                    {"topic_dateCreation", Text},
                    {"lastDay", Text},
                    {"topic_online", Number},
                    {"reactions", Number},
                    {"hidden", Number}}),
        reads("getReactions", &registers::getReactions,
              {argument("forumId"), argument("topicId"), argument("from", 0.0)},
              "A topic, as reaction 0, and all its reactions, the newest first, 500 at once.",
              accessAtForum("view", "forumId"))
            .lists({{"reaction_id", Number},
                    {"reaction_reference", Text},
                    {"reaction_title", Text},
                    {"reaction_author", Text},
                    {"reaction_email", Text},
                    {"reaction_date", Text},
                    {"reaction_online", Number},
                    {"reaction_text", Text}}),
        writes("saveReaction", &registers::saveReaction,
               {argument("forumId"), argument("topicId"), argument("reactionId"), argument("title"),
                argument("text"), argument("advId", 0)},
               "Saves title and text of a reaction, or of the topic itself for 0.",
               accessAtForum("edit", "forumId"))
            .codes({code(0, "It is saved."), contributionGone(), nameIsMissing(), notLoggedIn(), failed()}),
        writes("setReactions", &registers::setReactions,
               {argument("forumId"), argument("topicId"), argument("references"), argument("on"),
                argument("advId", 0)},
               "Shows reactions with those that they answer, or hides them with what answers them; without "
               "any, the topic itself. Gives how many contributions are another way than before.",
               accessAtForum("edit", "forumId"))
            .codes({contributionGone(), notLoggedIn(), failed()}),
        writes("deleteReactions", &registers::deleteReactions,
               {argument("forumId"), argument("topicId"), argument("references"), argument("advId", 0)},
               "Removes reactions with all that answers them; without any, the topic itself. Gives how many "
               "contributions are gone.",
               accessAtForum("edit", "forumId"))
            .codes({contributionGone(), notLoggedIn(), failed()}),
    };
}

}  // namespace

std::vector<Row<registers>> registersForumRows() {
    return joined({definitions(), posts()});
}

}  // namespace torvex::operations
