#include "modules/forum/PostDesk.h"

#include <fmt/format.h>

#include "modules/forum/PostNotice.h"
#include "platform/HostContext.h"
#include "platform/db/OwnTransaction.h"

namespace torvex {

namespace {

using Result = std::variant<Posted, std::vector<PostFault>>;
using Kept = std::variant<Posted, PostFault>;

std::string purposeOf(int forumId, const PostTarget& target) {
    return fmt::format("{}/{}/{}", forumId, target.topicId, target.reactionId);
}

/// Nothing for a token that is good.
std::vector<PostFault> faultOf(TokenState state) {
    switch (state) {
        case TokenState::Good:
            return {};
        case TokenState::TooOld:
            return {PostFault::FormTooOld};
        case TokenState::TooYoung:
            return {PostFault::FormTooYoung};
        default:
            return {PostFault::FormForeign};
    }
}

}  // namespace

std::string PostDesk::tokenFor(int forumId, const PostTarget& target, const DateTime& now) const {
    return tokens_.make(purposeOf(forumId, target), now);
}

std::vector<PostFault> PostDesk::faultsIn(const ForumRecord& forum, const SentPost& sent,
                                          const DateTime& now) const {
    if (sent.isForeign) return {PostFault::FormForeign};
    auto faults = faultOf(tokens_.check(sent.token, purposeOf(forum.id, sent.target), now));
    if (!faults.empty()) return faults;
    if (sent.isTrapped) return {PostFault::TrapFilled};
    return faultsOf(sent.form, forum);
}

Result PostDesk::take(HostContext& host, db::Connection& connection, const ForumRecord& forum,
                      const SentPost& sent, const ForumAddress& address) {
    const DateTime now = host.clock.now();
    auto faults = faultsIn(forum, sent, now);
    if (!faults.empty()) return faults;
    const auto showing = FormTokens::nameIn(sent.token);
    if (const auto kept = keptPost(connection, forum.id, sent.target, showing)) return *kept;
    if (!rates_.take(sent.address, sent.session)) return std::vector{PostFault::TooMany};
    const auto outcome = db::tryInOwnTransaction(
        host, "a post in forum " + std::to_string(forum.id), Kept(PostFault::Failed),
        [&](db::Connection& own) -> db::Outcome<Kept> {
            Kept kept = keepPost(own, forum, sent.target, sent.form, showing, now);
            const auto* posted = std::get_if<Posted>(&kept);
            if (posted == nullptr) return db::refuse(kept);
            const std::string place = address.topic(forum.id, posted->topicId, posted->reactionId);
            queueNotices(own, forum, sent.form, *posted, {sent.language, place}, now);
            return db::commit(kept);
        });
    if (const auto* posted = std::get_if<Posted>(&outcome.value)) return *posted;
    return std::vector{std::get<PostFault>(outcome.value)};
}

}  // namespace torvex
