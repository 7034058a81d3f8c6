#include "accounts/AdminEntries.h"
#include "modules/forum/Forum.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"

namespace torvex::operations {

ClassEntry forumOperations() {
    return describe<Forum>(
        "Forum", "The discussion forums of a site.",
        {
            reads(
                "getForumList", &Forum::getForumList,
                {argument("site"), argument("lang"), argument("mode", "L")},
                "The forums of a site and language by name, from the design; mode \"D\" tells which of them "
                "wait for their removal.",
                viewAccess(adminEntry::forum, "site", "lang"))
                .lists({{"forum_id", Number}, {"forum_name", Text}, {"forum_deleted", Number}}),
            reads(
                "getReactionTree", &Forum::getReactionTree,
                {argument("forumId"), argument("topicId"), argument("reactionId", 0), argument("mode", "L")},
                "A topic and the reactions that are shown, as HTML; empty text when there are none.",
                accessAtForum("view", "forumId")),
            reads("getScript", &Forum::getScript, {},
                  "The client script of the page that moderates a topic, with places to fill.", anyLogin()),
            writes("publish", &Forum::publish, {argument("forumId"), argument("site"), argument("lang")},
                   "Brings a forum to visitors, or for number 0 all of the site and language, and removes "
                   "those that wait for it with all that was written in them.",
                   accessAtForum("edit", "forumId", "site", "lang"))
                .codes({code("", "It is published."), refusal("-2", "There is no such forum.", label::gone),
                        failed()}),
            reads("getWaiting", &Forum::getWaiting, {argument("site"), argument("lang")},
                  "What visitors have written and nobody sees yet, the oldest first; reaction 0 is a topic.",
                  viewAccess(adminEntry::forum, "site", "lang"))
                .lists({{"forum_id", Number},
                        {"topic_id", Number},
                        {"reaction_id", Number},
                        {"reaction_reference", Text},
                        {"title", Text},
                        {"author", Text},
                        {"day", Text},
                        {"text", Text},
                        {"forum_name", Text}}),
            writes(
                "setOnOff", &Forum::setOnOff,
                {argument("forumId"), argument("topicId"), argument("references"), argument("on"),
                 argument("advId", 0)},
                "Shows reactions with those that they answer, or hides them with what answers them; without "
                "any, the topic itself.",
                accessAtForum("edit", "forumId"))
                .codes({code("", "It is done."),
                        refusal("-2", "There is no such topic or reaction.", label::gone), failed()}),
            writes("deleteReactions", &Forum::deleteReactions,
                   {argument("forumId"), argument("topicId"), argument("references"), argument("advId", 0)},
                   "Removes reactions with all that answers them; without any, the topic itself.",
                   accessAtForum("edit", "forumId"))
                .codes({code("", "They are gone."),
                        refusal("-2", "There is no such topic or reaction.", label::gone), failed()}),
        });
}

}  // namespace torvex::operations
