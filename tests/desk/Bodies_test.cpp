#include <gmock/gmock.h>

#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class DeskBodiesTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        pageId_ = page("aa.en").insert();
    }
    std::vector<std::string> bodies() { return linesOf(desk().getBodies(ident(pageId_))); }

    PageId pageId_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskBodiesTest, bothEngines(), engineName);

TEST_P(DeskBodiesTest, BodiesStandByTheirNumber) {
    designBody(pageId_, 10, "ten");
    designBody(pageId_, 2, "two");
    body(pageId_, 3, "three");
    EXPECT_THAT(bodies(), ElementsAre("2|text|0||3|True", "3|text|0||0|True", "10|text|0||3|True"));
}

TEST_P(DeskBodiesTest, LengthsCountCharacters) {
    designBody(pageId_, 1, "caf\xC3\xA9");
    EXPECT_THAT(bodies(), ElementsAre("1|text|0||4|True"));
}

TEST_P(DeskBodiesTest, ABodyDiffersWhenVisitorsSeeAnotherOne) {
    designBody(pageId_, 1, "same");
    body(pageId_, 1, "same");
    designBody(pageId_, 2, "Case");
    body(pageId_, 2, "case");
    designBody(pageId_, 3, "");
    body(pageId_, 4, "cleared");
    EXPECT_THAT(bodies(), ElementsAre("1|text|0||4|False", "2|text|0||4|True", "3|text|0||0|False",
                                      "4|text|0||0|True"));
}

TEST_P(DeskBodiesTest, AFeedHasItsTitleAndNoText) {
    row("TORVEX_FEEDS_HTML", {{"feedId", 5}, {"feedName", "News"}});
    row("TORVEX_FEEDS_XML", {{"feedId", 5}, {"feedName", "Prices"}});
    designBody(pageId_, 1, "unseen", 2, 5);
    body(pageId_, 1, "another unseen", 2, 5);
    designBody(pageId_, 2, "", 3, 5);
    body(pageId_, 2, "", 2, 5);
    designBody(pageId_, 3, "", 2, 6);
    body(pageId_, 3, "", 2, 5);
    designBody(pageId_, 4, "a text", 1, 5);
    body(pageId_, 4, "a text", 2, 5);
    EXPECT_THAT(bodies(), ElementsAre("1|html|5|News|0|False", "2|xml|5|Prices|0|True", "3|html|6||0|True",
                                      "4|text|0||6|True"));
}

TEST_P(DeskBodiesTest, APageMayBeNamedByItsNode) {
    designBody(pageId_, 1, "one");
    EXPECT_THAT(linesOf(desk().getBodies("aa.en")), ElementsAre("1|text|0||3|True"));
}

TEST_P(DeskBodiesTest, APageThatIsntThereHasNoBodies) {
    designBody(pageId_, 1, "one");
    for (const auto& bad : badIdentifiers()) EXPECT_TRUE(desk().getBodies(bad).isEmpty()) << bad;
    EXPECT_TRUE(desk().getBodies("4711").isEmpty());
}

TEST_P(DeskBodiesTest, WhatFailsIsRaised) {
    drop("TORVEX_BODIES_DESIGN");
    EXPECT_THAT(errorOf([&] { desk().getBodies(ident(pageId_)); }), StartsWith(chain({"getBodies !"})));
}

}  // namespace
}  // namespace torvex::test
