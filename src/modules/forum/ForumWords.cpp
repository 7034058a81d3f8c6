#include "modules/forum/ForumWords.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "records/Vocabulary.h"

namespace torvex::forumWords {

namespace {

constexpr std::pair<PostFault, double> faultLabels[] = {
    {PostFault::TitleMissing, 4200}, {PostFault::TitleTooLong, 4201},   {PostFault::TextMissing, 4202},
    {PostFault::TextTooLong, 4203},  {PostFault::AuthorMissing, 4204},  {PostFault::AuthorTooLong, 4205},
    {PostFault::EmailMissing, 4206}, {PostFault::EmailMalformed, 4207}, {PostFault::TrapFilled, 4208},
    {PostFault::FormForeign, 4209},  {PostFault::FormTooOld, 4210},     {PostFault::FormTooYoung, 4211},
    {PostFault::TooMany, 4212},      {PostFault::ForumGone, 4213},      {PostFault::TopicGone, 4214},
    {PostFault::ReactionGone, 4215}, {PostFault::NoPlaceLeft, 4216},    {PostFault::Failed, 4217},
};
static_assert(std::size(faultLabels) == static_cast<std::size_t>(PostFault::NoPlaceLeft) + 1);

constexpr double newPostLabel = 4218;
constexpr double waitsLabel = 4219;
constexpr double isShownLabel = 4220;

double labelOf(PostFault fault) {
    return std::find_if(std::begin(faultLabels), std::end(faultLabels),
                        [fault](const auto& one) { return one.first == fault; })
        ->second;
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
