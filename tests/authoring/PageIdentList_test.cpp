#include "authoring/PageIdentList.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> entriesOf(const std::string& pageList) {
    return PageIdentList(pageList).entries();
}

TEST(PageIdentList, DividesAtCommasAndDashesAlike) {
    EXPECT_THAT(entriesOf("12-13,14"), ElementsAre("12", "13", "14"));
}

TEST(PageIdentList, BlanksDontCountWhereverTheyStand) {
    EXPECT_THAT(entriesOf("  1 2 , aa. en.01 -3 "), ElementsAre("12", "aa.en.01", "3"));
}

TEST(PageIdentList, IsLowerCased) {
    EXPECT_THAT(entriesOf("AA.En.01"), ElementsAre("aa.en.01"));
}

TEST(PageIdentList, EmptyEntriesDontCount) {
    EXPECT_THAT(entriesOf(",-12,, -,13-"), ElementsAre("12", "13"));
}

TEST(PageIdentList, AnEmptyListHasNoEntries) {
    for (const auto* empty : {"", "   ", ",", "-", " ,- "}) {
        EXPECT_THAT(entriesOf(empty), IsEmpty()) << empty;
        EXPECT_EQ(PageIdentList(empty).text(), "");
    }
}

TEST(PageIdentList, TellsWhatIsLeftInItsOrder) {
    PageIdentList list("5, 3-4,3");
    EXPECT_EQ(list.text(), "5,3,4,3");
    EXPECT_TRUE(list.pass([](const std::string& entry) { return entry == "4"; }));
    EXPECT_EQ(list.text(), "5,3,3");
}

TEST(PageIdentList, APassThatGetsNothingDoneSaysSo) {
    PageIdentList list("5,3");
    EXPECT_FALSE(list.pass([](const std::string&) { return false; }));
    EXPECT_EQ(list.text(), "5,3");
}

TEST(PageIdentList, PassesGoOnWhileOneGetsSomethingDone) {
    PageIdentList list("1,2,3,4");
    std::vector<std::string> tried;
    std::size_t done = 0;
    // Each one waits for the one behind it, and the first one for ever.
    list.passes([&](const std::string& entry) {
        tried.push_back(entry);
        const bool isNext = entry != "1" && std::to_string(4 - done) == entry;
        if (isNext) ++done;
        return isNext;
    });
    EXPECT_EQ(list.text(), "1");
    EXPECT_THAT(tried, ElementsAre("1", "2", "3", "4", "1", "2", "3", "1", "2", "1"));
}

}  // namespace
}  // namespace torvex
