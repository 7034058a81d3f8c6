#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "modules/forum/ForumRecord.h"

namespace torvex {

/// What a visitor has typed, cleaned.
struct PostForm {
    std::string title;
    std::string text;
    std::string author;
    std::string email;
};

/// Characters that a field takes.
namespace postLimits {
inline constexpr std::size_t title = 120;
inline constexpr std::size_t text = 8000;
inline constexpr std::size_t author = 60;
inline constexpr std::size_t email = 254;
/// With more web addresses than that a moderator looks first.
inline constexpr std::size_t links = 3;
}  // namespace postLimits

/// The fields of the form, by which a refusal leads to what is to be changed.
enum class PostField { Title, Text, Author, Email, Whole };

enum class PostFault {
    TitleMissing,
    TitleTooLong,
    TextMissing,
    TextTooLong,
    AuthorMissing,
    AuthorTooLong,
    EmailMissing,
    EmailMalformed,
    TrapFilled,   ///< the field that people leave empty isn't
    FormForeign,  ///< the form isn't this server's
    FormTooOld,
    FormTooYoung,  ///< it was sent faster than anybody types
    TooMany,       ///< from this address or session, lately
    ForumGone,
    TopicGone,
    ReactionGone,
    Failed,      ///< the database
    NoPlaceLeft  ///< the forum, the topic or the branch is full
};

PostField fieldOf(PostFault fault);

/// What is wrong with the words themselves; empty when nothing is.
std::vector<PostFault> faultsOf(const PostForm& form, const ForumRecord& forum);

/// Whether a moderator has to look at the post before others see it.
bool needsModerator(const PostForm& form, const ForumRecord& forum);

/// Whether a word of the list, which is divided by commas, stands in the text as a word of its own.
bool holdsWordOf(std::string_view list, std::string_view text);

}  // namespace torvex
