#include "cli/Progress.h"

#include <gmock/gmock.h>
#include <iostream>
#include <sstream>

namespace torvex::cli {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class ProgressTest : public testing::Test {
  protected:
    std::string shown(bool isWatched, std::size_t total, std::size_t steps) {
        std::ostringstream err;
        {
            Progress progress({std::cin, std::cout, err, isWatched}, total, "pages");
            for (std::size_t i = 0; i < steps; ++i) progress.step();
        }
        return err.str();
    }
};

TEST_F(ProgressTest, WhereNobodyWatchesItSaysALineAtEachTenth) {
    EXPECT_EQ(shown(false, 1000, 1000),
              "100 of 1000 pages\n200 of 1000 pages\n300 of 1000 pages\n400 of 1000 pages\n"
              "500 of 1000 pages\n600 of 1000 pages\n700 of 1000 pages\n800 of 1000 pages\n"
              "900 of 1000 pages\n1000 of 1000 pages\n");
}

TEST_F(ProgressTest, AFewNeedNoLines) {
    EXPECT_EQ(shown(false, 99, 99), "");
    EXPECT_EQ(shown(false, 0, 0), "");
}

TEST_F(ProgressTest, WhereSomebodyWatchesItDrawsABarOverItself) {
    const std::string text = shown(true, 200, 100);
    EXPECT_THAT(text, StartsWith("\r\x1b[K[........................................]   0 %  1 of 200 pages"));
    EXPECT_THAT(text,
                EndsWith("\r\x1b[K[####################....................]  50 %  100 of 200 pages\n"));
}

TEST_F(ProgressTest, ABarIsFullAtTheEnd) {
    EXPECT_THAT(shown(true, 3, 3),
                EndsWith("[########################################] 100 %  3 of 3 pages\n"));
}

TEST_F(ProgressTest, MoreThanWereCountedDoNoHarm) {
    EXPECT_THAT(shown(true, 2, 5), HasSubstr("100 %"));
    EXPECT_THAT(shown(true, 0, 2), HasSubstr("100 %"));
}

TEST_F(ProgressTest, TheBarIsDrawnAgainBehindALine) {
    std::ostringstream err;
    Progress progress({std::cin, std::cout, err, true}, 10, "pages");
    progress.step();
    progress.clear();
    err << "a line\n";
    progress.step();
    EXPECT_THAT(err.str(), HasSubstr("\r\x1b[Ka line\n\r\x1b[K[########"));
}

}  // namespace
}  // namespace torvex::cli
