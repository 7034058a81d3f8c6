#include "search/designs/PageWords.h"

#include <gtest/gtest.h>

namespace torvex::test {
namespace {

TEST(PageWords, EachWordStandsOnceBehindItsPlace) {
    EXPECT_EQ(pageWords::columnOf("AA.en.01", "Caf\xC3\xA9 & Garden", {"the garden, the CAFE", "shop"}),
              "saaen tcafe tgarden wcafe wgarden wshop wthe");
}

TEST(PageWords, APageWithoutTextIsKnownByItsTree) {
    EXPECT_EQ(pageWords::columnOf("bg.de", "", {}), "sbgde");
}

TEST(PageWords, AVeryLongTextIsCutBetweenWords) {
    std::string text;
    for (int i = 0; i < 100'000; ++i) text += "word" + std::to_string(i) + " ";
    const std::string column = pageWords::columnOf("bg.de", "Title", {text});
    EXPECT_LT(column.size(), 400'001U);
    EXPECT_GT(column.size(), 399'900U);
    EXPECT_TRUE(column.starts_with("sbgde ttitle wword0 "));
}

TEST(PageWords, TheTextOfABodyHasNoMarkUp) {
    EXPECT_EQ(pageWords::textOf("<p>We <b>meet</b></p><script>x</script><p>at ten</p>"), "We meet\nat ten");
}

TEST(PageWords, QueriesAskForAllBeginningsInOneOfTheTrees) {
    const pageWords::Wanted wanted{{"gar", "ten"}, {"aa.en", "bb.de"}};
    EXPECT_EQ(pageWords::sqliteQuery(wanted, pageWords::Place::Title),
              R"("tgar"* AND "tten"* AND ("saaen" OR "sbbde"))");
    EXPECT_EQ(pageWords::postgresQuery({{"gar"}, {}}, pageWords::Place::Anywhere), "('tgar':* | 'wgar':*)");
}

}  // namespace
}  // namespace torvex::test
