#include <gmock/gmock.h>

#include "support/ForumTest.h"

namespace torvex::test {
namespace {

class ForumListTest : public ForumTest {
  protected:
    void SetUp() override {
        ForumTest::SetUp();
        if (HasFatalFailure()) return;
        define("TORVEX_FORUM_DESIGN", 2, "Animals", {{"forum_deleted", 1}});
        define("TORVEX_FORUM_DESIGN", 3, "Birds");
    }
    /// Name by name, with the first column in front.
    std::string listed(const std::string& site, const std::string& lang, const std::string& mode) {
        const Value list = forum().getForumList(site, lang, mode);
        if (list.isEmpty()) return "nothing";
        std::string text;
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            text += list.grid().at(0, row).toText() + " " + list.grid().at(1, row).toText() + "; ";
        }
        return text;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ForumListTest, bothEngines(), engineName);

TEST_P(ForumListTest, ListsByNameEvenWhatWasNeverPublishedAndWhatIsToGo) {
    for (const auto* mode : {"L", "l", "", " ", "x", "D", " d "}) {
        EXPECT_EQ(listed("aa", "en", mode), "2 Animals; 3 Birds; 1 Plants; ") << mode;
    }
}

TEST_P(ForumListTest, TheModeOfTheDesignTellsWhatIsToGo) {
    const Value list = forum().getForumList("aa", "en", " d ");
    EXPECT_EQ(list.grid().columns(), 4U);
    EXPECT_EQ(list.grid().at(2, 0).toText(), "1");
    EXPECT_EQ(list.grid().at(2, 1).toText(), "0");
    EXPECT_TRUE(list.grid().at(3, 0).isEmpty());
}

TEST_P(ForumListTest, OtherModesHaveThreeColumns) {
    const Value list = forum().getForumList("aa", "en");
    EXPECT_EQ(list.grid().columns(), 3U);
    EXPECT_TRUE(list.grid().at(2, 0).isEmpty());
}

TEST_P(ForumListTest, SiteAndLanguageAreTrimmedAndMayBeInAnyCase) {
    EXPECT_EQ(listed(" AA ", " En", "L"), "2 Animals; 3 Birds; 1 Plants; ");
}

TEST_P(ForumListTest, WithoutForumsThereIsNothing) {
    EXPECT_EQ(listed("aa", "de", "L"), "nothing");
    EXPECT_EQ(listed("bb", "en", "D"), "nothing");
    EXPECT_EQ(listed("", "", "L"), "nothing");
    EXPECT_EQ(listed("a' or 'a'='a", "en", "L"), "nothing");
}

TEST_P(ForumListTest, SaysWhereItFailed) {
    drop("TORVEX_FORUM_DESIGN");
    EXPECT_THAT(errorOf([&] { forum().getForumList("aa", "en"); }),
                ::testing::StartsWith(chain({"getForumList !"})));
}

TEST_P(ForumListTest, AConnectionTextServesAsWell) {
    host.database.target = &database();
    Forum other(host.context());
    other.connect(connectionText());
    EXPECT_TRUE(other.getForumList("aa", "en").isGrid());
}

}  // namespace
}  // namespace torvex::test
