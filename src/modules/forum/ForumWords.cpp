#include "modules/forum/ForumWords.h"

#include "records/Vocabulary.h"

namespace torvex::forumWords {

namespace {

constexpr double titleMissingLabel = 4200;
constexpr double titleTooLongLabel = 4201;
constexpr double textMissingLabel = 4202;
constexpr double textTooLongLabel = 4203;
constexpr double authorMissingLabel = 4204;
constexpr double authorTooLongLabel = 4205;
constexpr double emailMissingLabel = 4206;
constexpr double emailMalformedLabel = 4207;
constexpr double trapFilledLabel = 4208;
constexpr double formForeignLabel = 4209;
constexpr double formTooOldLabel = 4210;
constexpr double formTooYoungLabel = 4211;
constexpr double tooManyLabel = 4212;
constexpr double forumGoneLabel = 4213;
constexpr double topicGoneLabel = 4214;
constexpr double reactionGoneLabel = 4215;
constexpr double noPlaceLeftLabel = 4216;
constexpr double failedLabel = 4217;
constexpr double newPostLabel = 4218;
constexpr double waitsLabel = 4219;
constexpr double isShownLabel = 4220;

double labelOf(PostFault fault) {
    switch (fault) {
        case PostFault::TitleMissing:
            return titleMissingLabel;
        case PostFault::TitleTooLong:
            return titleTooLongLabel;
        case PostFault::TextMissing:
            return textMissingLabel;
        case PostFault::TextTooLong:
            return textTooLongLabel;
        case PostFault::AuthorMissing:
            return authorMissingLabel;
        case PostFault::AuthorTooLong:
            return authorTooLongLabel;
        case PostFault::EmailMissing:
            return emailMissingLabel;
        case PostFault::EmailMalformed:
            return emailMalformedLabel;
        case PostFault::TrapFilled:
            return trapFilledLabel;
        case PostFault::FormForeign:
            return formForeignLabel;
        case PostFault::FormTooOld:
            return formTooOldLabel;
        case PostFault::FormTooYoung:
            return formTooYoungLabel;
        case PostFault::TooMany:
            return tooManyLabel;
        case PostFault::ForumGone:
            return forumGoneLabel;
        case PostFault::TopicGone:
            return topicGoneLabel;
        case PostFault::ReactionGone:
            return reactionGoneLabel;
        case PostFault::Failed:
            return failedLabel;
        case PostFault::NoPlaceLeft:
            return noPlaceLeftLabel;
    }
    return failedLabel;
}

}  // namespace

std::vector<std::string> sentencesFor(db::Connection& connection, std::string_view language,
                                      const std::vector<PostFault>& faults) {
    std::vector<double> labels;
    for (const PostFault fault : faults) labels.push_back(labelOf(fault));
    const auto texts = vocabularyTexts(connection, language, labels);
    std::vector<std::string> sentences;
    for (const double label : labels) sentences.push_back(texts.at(label));
    return sentences;
}

NoticeWords noticeWords(db::Connection& connection, std::string_view language) {
    auto texts = vocabularyTexts(connection, language, {newPostLabel, waitsLabel, isShownLabel});
    return {texts[newPostLabel], texts[waitsLabel], texts[isShownLabel]};
}

}  // namespace torvex::forumWords
