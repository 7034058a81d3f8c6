#include "modules/forum/PostNotice.h"

#include <fmt/format.h>

#include "modules/forum/ForumWords.h"
#include "modules/mail/MailQueue.h"
#include "platform/net/MailAddress.h"

namespace torvex {

namespace {

/// A forum has a handful of moderators; a list beyond that is a mistake that would send mails to a crowd.
constexpr std::size_t mostModerators = 20;

std::string noticeText(const ForumRecord& forum, const PostForm& form, const Posted& posted,
                       const forumWords::NoticeWords& words, std::string_view address) {
    const std::string author = form.author.empty() ? form.email : form.author;
    return fmt::format("{}\n\n{}\n{}\n\n{}\n\n--\n{}: {}\n{}\n", forum.name, form.title, author, form.text,
                       words.newPost, posted.isShown ? words.isShown : words.waits, address);
}

}  // namespace

void queueNotices(db::Connection& transaction, const ForumRecord& forum, const PostForm& form,
                  const Posted& posted, const NoticePlace& place, const DateTime& now) {
    if (!forum.sendsMail || posted.isRepeated) return;
    const auto moderators = mailAddressesIn(forum.mailTo.empty() ? forum.mailFrom : forum.mailTo);
    if (moderators.empty()) return;
    const auto words = forumWords::noticeWords(transaction, place.language);
    Mail mail{.from = isMailAddress(forum.mailFrom) ? forum.mailFrom : std::string(),
              .to = {},
              .subject = forum.mailSubject.empty() ? words.newPost + ": " + forum.name : forum.mailSubject,
              .text = noticeText(forum, form, posted, words, place.address)};
    for (std::size_t i = 0; i < moderators.size() && i < mostModerators; ++i) {
        mail.to = moderators[i];
        queueMail(transaction, mail, now);
    }
}

}  // namespace torvex
