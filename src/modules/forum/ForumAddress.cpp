#include "modules/forum/ForumAddress.h"

#include <fmt/format.h>

#include "platform/text/Text.h"

namespace torvex {

ForumAddress::ForumAddress(PageId page) : page_("?pageId=" + text::fromNumber(page)) {}

std::string ForumAddress::forums() const {
    return folder + page_;
}

std::string ForumAddress::topics(int forumId, int page, bool isArchive) const {
    std::string address = fmt::format("{}topics.asp{}&forumId={}", folder, page_, forumId);
    if (isArchive) address += "&archive=1";
    if (page > 1) address += "&pageTo=" + std::to_string(page);
    return address;
}

std::string ForumAddress::topic(int forumId, int topicId, int reactionId) const {
    std::string address =
        fmt::format("{}reactions.asp{}&forumId={}&topicId={}", folder, page_, forumId, topicId);
    if (reactionId != 0) address += fmt::format("&reactionId={}#reaction-{}", reactionId, reactionId);
    return address;
}

std::string ForumAddress::form(int forumId, int topicId, int reactionId) const {
    std::string address = fmt::format("{}reaction.asp{}&forumId={}", folder, page_, forumId);
    if (topicId != 0) address += fmt::format("&topicId={}", topicId);
    if (reactionId != 0) address += fmt::format("&reactionId={}", reactionId);
    return address;
}

}  // namespace torvex
