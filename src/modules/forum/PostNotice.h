#pragma once

#include <string_view>

#include "modules/forum/Posting.h"

namespace torvex {

/// What a notice tells besides the post.
struct NoticePlace {
    std::string_view language;
    std::string_view address;  ///< where the post can be read, without the server's name
};

/// Puts a notice for each moderator into the queue of mails, on the connection that keeps the post: where the
/// forum wants none, or nobody is named, nothing happens.
void queueNotices(db::Connection& transaction, const ForumRecord& forum, const PostForm& form,
                  const Posted& posted, const NoticePlace& place, const DateTime& now);

}  // namespace torvex
