#pragma once

#include <string>
#include <vector>

#include "modules/forum/ForumAddress.h"
#include "modules/forum/PostForm.h"
#include "modules/forum/Posting.h"
#include "modules/forum/Topics.h"

namespace torvex {

class HTMLTemplate;
struct DateTime;

// What visitors see of the forum, put into the places of a page's template. docs/forum.md lists the places.

/// What has just become of the visitor's post.
enum class PostNews { None, Shown, Waits };

struct ForumsView {
    std::vector<ForumSummary> forums;
    bool isGone = false;  ///< what was asked for isn't there
};
void fillForums(HTMLTemplate& page, const ForumsView& view, const ForumAddress& address, const DateTime& now);

struct TopicsView {
    ForumRecord forum;
    TopicPage topics;
    TopicAge age = TopicAge::Current;
    bool hasArchive = false;
    bool isGone = false;
    PostNews news = PostNews::None;
};
void fillTopics(HTMLTemplate& page, const TopicsView& view, const ForumAddress& address, const DateTime& now);

struct TopicView {
    ForumRecord forum;
    Contribution topic;
    std::vector<Contribution> reactions;
    int shownReaction = 0;
    bool isGone = false;
    PostNews news = PostNews::None;
};
void fillTopic(HTMLTemplate& page, const TopicView& view, const ForumAddress& address, const DateTime& now);

struct FormView {
    ForumRecord forum;
    PostTarget target;
    PostForm typed{};
    std::vector<PostFault> faults{};
    std::vector<std::string> sentences{};  ///< to the faults
    std::string topicTitle{};              ///< "" for a new topic
    Contribution answered{};               ///< the topic or the reaction that is answered
    std::string token{};
};
void fillForm(HTMLTemplate& page, const FormView& view, const ForumAddress& address);

/// The names of the form's fields. People leave the trap empty: it is out of their sight.
namespace formField {
inline constexpr const char* title = "forum_title";
inline constexpr const char* text = "forum_text";
inline constexpr const char* author = "forum_author";
inline constexpr const char* email = "forum_email";
inline constexpr const char* trap = "forum_homepage";
inline constexpr const char* token = "forum_token";
}  // namespace formField

}  // namespace torvex
