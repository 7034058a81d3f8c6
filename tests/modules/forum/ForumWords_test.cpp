#include "modules/forum/ForumWords.h"

#include <set>

#include "support/ForumTest.h"

namespace torvex::test {
namespace {

class ForumWordsTest : public ForumTest {
  protected:
    /// To all faults that there are.
    std::vector<std::string> sentences(const std::string& language) {
        std::vector<PostFault> faults;
        for (int i = 0; i <= static_cast<int>(PostFault::NoPlaceLeft); ++i)
            faults.push_back(static_cast<PostFault>(i));
        return forumWords::sentencesFor(connection(), language, faults);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ForumWordsTest, bothEngines(), engineName);

TEST_P(ForumWordsTest, EveryFaultHasASentenceOfItsOwnInBothLanguages) {
    const auto english = sentences("en");
    const auto german = sentences("de");
    const std::set<std::string> different(english.begin(), english.end());
    EXPECT_EQ(different.size(), english.size());
    EXPECT_FALSE(different.contains(""));
    for (std::size_t i = 0; i < english.size(); ++i) EXPECT_NE(german[i], english[i]);
}

TEST_P(ForumWordsTest, SentencesComeInTheOrderOfTheFaults) {
    const auto said =
        forumWords::sentencesFor(connection(), "en", {PostFault::TextMissing, PostFault::TitleMissing});
    ASSERT_EQ(said.size(), 2U);
    EXPECT_EQ(said[0], "Please write something.");
    EXPECT_EQ(said[1], "Please give your post a title.");
}

TEST_P(ForumWordsTest, NoticesSpeakTheLanguageOfThePage) {
    EXPECT_EQ(forumWords::noticeWords(connection(), "en").newPost, "New post");
    EXPECT_EQ(forumWords::noticeWords(connection(), "de").newPost, "Neuer Beitrag");
    EXPECT_EQ(forumWords::noticeWords(connection(), "bb").newPost, "New post");
}

}  // namespace
}  // namespace torvex::test
