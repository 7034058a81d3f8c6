#pragma once

#include <string>
#include <variant>
#include <vector>

#include "modules/forum/FormToken.h"
#include "modules/forum/ForumAddress.h"
#include "modules/forum/PostRates.h"
#include "modules/forum/Posting.h"

namespace torvex {

struct HostContext;

/// A form as it was sent.
struct SentPost {
    PostTarget target;
    PostForm form;  ///< cleaned
    std::string token;
    bool isTrapped;  ///< the field that people leave empty isn't
    bool isForeign;  ///< the browser says that another site sent it
    std::string address;
    std::string session;
    std::string language;
};

/// Takes the posts of all visitors, and holds off programs by what it can tell itself: whether its own form
/// was shown, how long ago, whether a field out of sight was filled in, and how often an address or a session
/// posts. Safe to share between threads.
class PostDesk {
  public:
    explicit PostDesk(PostRates::Options rates = {}) : rates_(rates) {}

    std::string tokenFor(int forumId, const PostTarget& target, const DateTime& now) const;

    /// Keeps the post and queues its notices, both or none; or says what is in the way. A form that comes a
    /// second time is the same post.
    std::variant<Posted, std::vector<PostFault>> take(HostContext& host, db::Connection& connection,
                                                      const ForumRecord& forum, const SentPost& sent,
                                                      const ForumAddress& address);

  private:
    std::vector<PostFault> faultsIn(const ForumRecord& forum, const SentPost& sent,
                                    const DateTime& now) const;

    FormTokens tokens_;
    PostRates rates_;
};

}  // namespace torvex
