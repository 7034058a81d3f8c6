#include <gmock/gmock.h>

#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::StartsWith;

class DesignPagesTest : public RegistersTest {
  protected:
    int count(const std::string& kind, int id) { return registers().countLivePages(kind, id); }
};
INSTANTIATE_TEST_SUITE_P(Engines, DesignPagesTest, bothEngines(), engineName);

TEST_P(DesignPagesTest, PagesCountThatNameAnEntryOrHaveItFromAnAncestor) {
    contentTemplate(5, "aa", "en", "rose.html", "");
    contentTemplate(6, "aa", "en", "lily.html", "");
    page("aa.en").contentTemplate(5).insert();
    page("aa.en.01").insert();
    page("aa.en.01.01").contentTemplate(6).insert();
    page("aa.en.01.01.01").insert();
    page("aa.en.01.01.02").type("A").insert();
    page("aa.en.02").type("F").insert();
    page("aa.en.02.01").insert();
    page("aa.en.03").contentTemplate(5).insertInDesignOnly();
    EXPECT_EQ(count("template", 5), 3) << "the root, its child, and the child of a folder";
    EXPECT_EQ(count(" Template ", 6), 3);
}

TEST_P(DesignPagesTest, EachKindIsAskedOfItsOwnColumn) {
    baseTemplate(5, "aa", "en", "rose.html", "");
    stylesheet(5, "aa", "en", "rose.css");
    page("aa.en").baseTemplate(5).insert();
    page("aa.en.01").stylesheet(5).insert();
    EXPECT_EQ(count("baseTemplate", 5), 2);
    EXPECT_EQ(count("stylesheet", 5), 1);
    EXPECT_EQ(count("template", 5), 0);
}

TEST_P(DesignPagesTest, AnotherTreesPagesDontCount) {
    site("bb");
    contentTemplate(5, "aa", "en", "rose.html", "");
    page("bb.en").contentTemplate(5).insert();
    EXPECT_EQ(count("template", 5), 0);
}

TEST_P(DesignPagesTest, WhatIsNoEntryHasNoPages) {
    page("aa.en").contentTemplate(5).insert();
    EXPECT_EQ(count("template", 5), 0);
    EXPECT_EQ(count("page", 5), 0);
    EXPECT_EQ(count("", 0), 0);
}

TEST_P(DesignPagesTest, AFailureIsRaised) {
    drop("TORVEX_PAGES_LIVE");
    EXPECT_THAT(errorOf([&] { count("template", 5); }), StartsWith(chain({"countLivePages !"})));
}

}  // namespace
}  // namespace torvex::test
