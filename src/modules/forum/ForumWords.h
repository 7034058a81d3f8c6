#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "modules/forum/PostForm.h"

namespace torvex {
namespace db {
class Connection;
}

/// What the forum says to visitors, in the language of a page; in English where that has no word.
namespace forumWords {

/// The sentences to faults, in their order.
std::vector<std::string> sentencesFor(db::Connection& connection, std::string_view language,
                                      const std::vector<PostFault>& faults);

/// The words of a notice.
struct NoticeWords {
    std::string newPost;
    std::string waits;
    std::string isShown;
};
NoticeWords noticeWords(db::Connection& connection, std::string_view language);

}  // namespace forumWords
}  // namespace torvex
