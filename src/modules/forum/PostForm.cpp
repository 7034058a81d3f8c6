#include "modules/forum/PostForm.h"

#include <algorithm>

#include "modules/forum/PlainText.h"
#include "platform/net/MailAddress.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

bool standsAlone(std::string_view text, std::size_t at, std::size_t length) {
    const bool opens = at == 0 || !isWordCharacter(text[at - 1]);
    return opens && (at + length >= text.size() || !isWordCharacter(text[at + length]));
}

bool holdsWord(std::string_view text, std::string_view word) {
    for (std::size_t at = text::find(text, word); at != text::npos; at = text::find(text, word, at + 1)) {
        if (standsAlone(text, at, text::matchLength(text, at, word))) return true;
    }
    return false;
}

void checkLength(std::vector<PostFault>& faults, std::string_view text, std::size_t most, PostFault tooLong) {
    if (text::length(text) > most) faults.push_back(tooLong);
}

void checkEmail(std::vector<PostFault>& faults, const std::string& email, Asked asked) {
    if (email.empty()) {
        if (asked == Asked::MustBeGiven) faults.push_back(PostFault::EmailMissing);
    } else if (text::length(email) > postLimits::email || !isMailAddress(email)) {
        faults.push_back(PostFault::EmailMalformed);
    }
}

}  // namespace

PostField fieldOf(PostFault fault) {
    switch (fault) {
        case PostFault::TitleMissing:
        case PostFault::TitleTooLong:
            return PostField::Title;
        case PostFault::TextMissing:
        case PostFault::TextTooLong:
            return PostField::Text;
        case PostFault::AuthorMissing:
        case PostFault::AuthorTooLong:
            return PostField::Author;
        case PostFault::EmailMissing:
        case PostFault::EmailMalformed:
            return PostField::Email;
        default:
            return PostField::Whole;
    }
}

std::vector<PostFault> faultsOf(const PostForm& form, const ForumRecord& forum) {
    std::vector<PostFault> faults;
    if (form.title.empty()) faults.push_back(PostFault::TitleMissing);
    checkLength(faults, form.title, postLimits::title, PostFault::TitleTooLong);
    if (form.text.empty()) faults.push_back(PostFault::TextMissing);
    checkLength(faults, form.text, postLimits::text, PostFault::TextTooLong);
    if (form.author.empty() && forum.visitorName == Asked::MustBeGiven)
        faults.push_back(PostFault::AuthorMissing);
    checkLength(faults, form.author, postLimits::author, PostFault::AuthorTooLong);
    checkEmail(faults, form.email, forum.visitorEmail);
    return faults;
}

bool holdsWordOf(std::string_view list, std::string_view text) {
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(','), list.size());
        const std::string word = cleanLine(list.substr(0, end));
        if (!word.empty() && holdsWord(text, word)) return true;
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return false;
}

bool needsModerator(const PostForm& form, const ForumRecord& forum) {
    if (!forum.showsAtOnce) return true;
    const std::string all = form.title + '\n' + form.author + '\n' + form.text;
    return countLinks(all) > postLimits::links || holdsWordOf(forum.words, all);
}

}  // namespace torvex
