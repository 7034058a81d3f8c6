#include <gmock/gmock.h>

#include "delivery/SearchStore.h"
#include "platform/HitCounter.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class DeskSearchedWordsTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        searched("fern", 9, 0, "20260110");
        searched("fern", 1, 1, "20260112");
        searched("moss", 4, 4, "20260110");
        searched("oak", 2, 1, "20260111");
        searched("elsewhere", 7, 7, "20260110", "aa.de.09");
    }
    void searched(const std::string& word, int searches, int without, const std::string& day,
                  const std::string& node = "aa.en.09") {
        addSearches(connection(), {{{node == "aa.en.09" ? 20. : 21., word, day, node}, {searches, without}}});
    }
    std::vector<std::string> words(const std::string& kind, const std::string& from = "",
                                   const std::string& to = "", double start = 0) {
        return linesOf(desk().getSearchedWords(" AA ", "en", from, to, kind, start));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskSearchedWordsTest, bothEngines(), engineName);

TEST_P(DeskSearchedWordsTest, TheWordsThatAreSearchedMostComeFirst) {
    EXPECT_THAT(words("all"), ElementsAre("fern|10|1", "moss|4|4", "oak|2|1"));
    EXPECT_THAT(words(" ALL ", "", "", 1), ElementsAre("moss|4|4", "oak|2|1"));
    EXPECT_THAT(words("all", "", "", 32'768), IsEmpty());
}

TEST_P(DeskSearchedWordsTest, WordsThatNothingIsFoundForComeByHowOften) {
    EXPECT_THAT(words("empty"), ElementsAre("moss|4|4", "fern|10|1", "oak|2|1"));
    EXPECT_THAT(words("empty", "20260110", "20260110"), ElementsAre("moss|4|4"));
}

TEST_P(DeskSearchedWordsTest, DaysAndWebsitesLimitThem) {
    EXPECT_THAT(words("all", "20260111"), ElementsAre("oak|2|1", "fern|1|1"));
    EXPECT_THAT(words("all", "", "20260110"), ElementsAre("fern|9|0", "moss|4|4"));
    EXPECT_THAT(linesOf(desk().getSearchedWords("aa", "de", "", "", "all")), ElementsAre("elsewhere|7|7"));
    EXPECT_TRUE(desk().getSearchedWords("zz", "en", "", "", "all").isEmpty());
}

TEST_P(DeskSearchedWordsTest, AnotherKindAndAnotherStartHaveNone) {
    EXPECT_THAT(words("some"), IsEmpty());
    EXPECT_THAT(words("all", "", "", -1), IsEmpty());
    EXPECT_THAT(words("all", "", "", 1e300), IsEmpty());
}

TEST_P(DeskSearchedWordsTest, AHundredComeAtOnce) {
    for (int i = 0; i < 120; ++i) searched("word" + std::to_string(i), 1, 0, "20260110");
    EXPECT_THAT(words("all"), SizeIs(100));
    EXPECT_THAT(words("all", "", "", 100), SizeIs(23));
}

TEST_P(DeskSearchedWordsTest, WhatIsCountedIsStoredBeforeItIsTold) {
    words("all");
    EXPECT_EQ(host.hits.flushes, 1);
}

TEST_P(DeskSearchedWordsTest, FailuresTellTheOperation) {
    drop("TORVEX_SEARCH_DAYS");
    EXPECT_THAT(errorOf([&] { words("all"); }), StartsWith(chain({"getSearchedWords !"})));
}

}  // namespace
}  // namespace torvex::test
