#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class BodiesTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (!HasFatalFailure()) page("aa.en.01").id(12).insert();
    }

    std::string filled(const std::string& html) { return server().fillBodies("12", html); }
};
INSTANTIATE_TEST_SUITE_P(Engines, BodiesTest, bothEngines(), engineName);

// fillBodies

TEST_P(BodiesTest, ATagIsFilledWithItsBody) {
    body(12, 1, "text");
    EXPECT_EQ(filled("a<!--!torvex_body_1!-->b"), "atextb");
}

TEST_P(BodiesTest, EveryOccurrenceOfATagIsFilled) {
    body(12, 1, "text");
    EXPECT_EQ(filled("<!--!torvex_body_1!-->|<!--!TORVEX_BODY_1!-->"), "text|text");
}

TEST_P(BodiesTest, TheSampleTextOfABlockIsReplaced) {
    body(12, 1, "text");
    EXPECT_EQ(filled("a<!--!torvex_body_1_start!-->sample<!--!torvex_body_1_end!-->b"), "atextb");
}

TEST_P(BodiesTest, ATagStandsBeforeABlockOfItsName) {
    body(12, 1, "text");
    EXPECT_EQ(filled("<!--!torvex_body_1_start!-->sample<!--!torvex_body_1_end!--><!--!torvex_body_1!-->"),
              "<!--!torvex_body_1_start!-->sample<!--!torvex_body_1_end!-->text");
}

TEST_P(BodiesTest, BodiesBehindAGapAreNotFilled) {
    body(12, 1, "one");
    body(12, 3, "three");
    EXPECT_EQ(filled("<!--!torvex_body_1!--><!--!torvex_body_3!-->"), "one<!--!torvex_body_3!-->");
}

TEST_P(BodiesTest, WithoutAPlaceTheTextStays) {
    body(12, 1, "one");
    EXPECT_EQ(filled("<!--!torvex_body_2!-->"), "<!--!torvex_body_2!-->");
    EXPECT_EQ(filled(""), "");
}

TEST_P(BodiesTest, ABodyMayHoldThePlaceOfALaterOne) {
    body(12, 1, "[<!--!torvex_body_2!--><!--!torvex_body_1!-->]");
    body(12, 2, "two<!--!torvex_body_1!-->");
    EXPECT_EQ(filled("<!--!torvex_body_1!-->|<!--!torvex_body_2!-->"),
              "[two<!--!torvex_body_1!--><!--!torvex_body_1!-->]|two<!--!torvex_body_1!-->");
}

TEST_P(BodiesTest, BodiesThatNameTheNextOneTenTimesAreCutOffAtTheSizeOfAPage) {
    for (int n = 1; n < 9; ++n) {
        std::string next;
        for (int times = 0; times < 10; ++times) next += "<!--!torvex_body_" + std::to_string(n + 1) + "!-->";
        body(12, n, next);
    }
    EXPECT_EQ(errorOf([&] { filled("<!--!torvex_body_1!-->"); }),
              chain({"fillBodies !"}) + "the page is larger than 32 MB");
}

TEST_P(BodiesTest, APageMayHaveThousandsOfPlaces) {
    constexpr int places = 4000;
    std::string html;
    std::string expected;
    db::Transaction transaction(connection());
    for (int n = 1; n <= places; ++n) {
        const std::string number = std::to_string(n);
        body(12, n, "b" + number);
        html += "<!--!torvex_body_" + number + "!-->,";
        expected += "b" + number + ",";
    }
    transaction.commit();
    EXPECT_EQ(filled(html), expected);
}

TEST_P(BodiesTest, ARequestWhoseTimeIsOverFillsNoMore) {
    body(12, 1, "text");
    host.context().begin = Deadline::Clock::now() - std::chrono::seconds(89);
    EXPECT_EQ(filled("<!--!torvex_body_1!-->"), "text");
    host.context().scriptTimeout = 80;
    EXPECT_EQ(errorOf([&] { filled("<!--!torvex_body_1!-->"); }),
              chain({"fillBodies !"}) + "the request took longer than it may");
}

TEST_P(BodiesTest, AMissingBodyKeepsItsCellOpen) {
    EXPECT_EQ(filled("<td><!--!torvex_body_1!--></td>"), "<td>&nbsp;</td>");
}

TEST_P(BodiesTest, AnEmptyBodyKeepsItsCellOpen) {
    body(12, 1, "   ");
    row("TORVEX_BODIES_LIVE", {{"pageId", 12}, {"bodyId", 2}, {"bodyType", 1}});
    EXPECT_EQ(filled("<!--!torvex_body_1!-->|<!--!torvex_body_2!-->"), "&nbsp;|&nbsp;");
}

TEST_P(BodiesTest, AStoredTextIsTrimmed) {
    body(12, 1, "  text ");
    EXPECT_EQ(filled("[<!--!torvex_body_1!-->]"), "[text]");
}

TEST_P(BodiesTest, WithFeedsOffAFeedShowsItsStoredText) {
    body(12, 1, " stored ", 2, 7);
    body(12, 2, " stored too ", 3, 7);
    EXPECT_EQ(filled("<!--!torvex_body_1!-->|<!--!torvex_body_2!-->"), "stored|stored too");
}

TEST_P(BodiesTest, WithFeedsOnAnUnknownFeedKeepsItsCellOpen) {
    host.application.set("torvex_feeds", true);
    body(12, 1, "stored", 2, 77);
    body(12, 2, "stored too", 3, 77);
    EXPECT_EQ(filled("<!--!torvex_body_1!-->|<!--!torvex_body_2!-->"), "&nbsp;|&nbsp;");
}

TEST_P(BodiesTest, WithFeedsOnAStoredTextIsStillItself) {
    host.application.set("torvex_feeds", true);
    body(12, 1, " text ");
    EXPECT_EQ(filled("<!--!torvex_body_1!-->"), "text");
}

TEST_P(BodiesTest, AKindThatIsNoneShowsItsTextOnlyWithFeedsOff) {
    body(12, 1, "text", 7);
    EXPECT_EQ(filled("<!--!torvex_body_1!-->"), "text");
    host.application.set("torvex_feeds", true);
    EXPECT_EQ(filled("<!--!torvex_body_1!-->"), "&nbsp;");
}

TEST_P(BodiesTest, ThePageIsFoundByEitherName) {
    body(12, 1, "text");
    EXPECT_EQ(server().fillBodies(" 12 ", "<!--!torvex_body_1!-->"), "text");
    EXPECT_EQ(server().fillBodies(" AA.en.01", "<!--!torvex_body_1!-->"), "text");
}

TEST_P(BodiesTest, ABodyOfAnotherPageIsNotTaken) {
    body(13, 1, "other");
    EXPECT_EQ(filled("<!--!torvex_body_1!-->"), "&nbsp;");
}

TEST_P(BodiesTest, BodiesOfTheDesignAreNotShown) {
    row("TORVEX_BODIES_DESIGN", {{"pageId", 12}, {"bodyId", 1}, {"bodyText", "design"}});
    EXPECT_EQ(filled("<!--!torvex_body_1!-->"), "&nbsp;");
}

TEST_P(BodiesTest, WhatIsNoPageHasEmptyBodies) {
    body(12, 1, "text");
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(server().fillBodies(bad, "<!--!torvex_body_1!-->"), "&nbsp;") << bad.substr(0, 40);
        EXPECT_EQ(server().getBody(bad, 1), "") << bad.substr(0, 40);
    }
}

TEST_P(BodiesTest, TextBeyondAsciiComesAsItWasStored) {
    body(12, 1, "\xC3\x89t\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8C\xB1 it's \"quoted\" ? $1");
    EXPECT_EQ(filled("<!--!torvex_body_1!-->"),
              "\xC3\x89t\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8C\xB1 it's \"quoted\" ? $1");
}

// getBody

TEST_P(BodiesTest, ABodyIsItsStoredTextAsItStands) {
    body(12, 1, "  text ");
    EXPECT_EQ(server().getBody("12", 1), "  text ");
    EXPECT_EQ(server().getBody("12", 1, 1), "  text ");
    EXPECT_EQ(server().getBody("AA.EN.01", 1), "  text ");
}

TEST_P(BodiesTest, AMissingBodyIsEmpty) {
    EXPECT_EQ(server().getBody("12", 1), "");
    EXPECT_EQ(server().getBody("12", 1, 1), "");
}

TEST_P(BodiesTest, TheAskedKindStandsBeforeTheStoredOne) {
    body(12, 1, "stored", 2, 77);
    EXPECT_EQ(server().getBody("12", 1, 1), "stored");
    EXPECT_EQ(server().getBody("12", 1), "");
}

TEST_P(BodiesTest, AnUnknownKindIsEmpty) {
    body(12, 1, "text");
    EXPECT_EQ(server().getBody("12", 1, 4), "");
    EXPECT_EQ(server().getBody("12", 1, 99, 1), "");
}

TEST_P(BodiesTest, GetBodyDoesNotAskWhetherFeedsAreOn) {
    host.application.set("torvex_feeds", false);
    body(12, 1, "stored", 2, 77);
    EXPECT_EQ(server().getBody("12", 1), "");
}

// Failures

TEST_P(BodiesTest, ADatabaseThatFailsIsAnErrorWithTheOperationInFront) {
    drop("TORVEX_BODIES_LIVE");
    EXPECT_TRUE(errorOf([&] { filled("<!--!torvex_body_1!-->"); }).starts_with(chain({"fillBodies !"})));
    EXPECT_TRUE(errorOf([&] { server().getBody("12", 1); }).starts_with(chain({"getBody !"})));
    EXPECT_TRUE(errorOf([&] { server().getBody("12", 1, 1); }).starts_with(chain({"getBody !"})));
}

}  // namespace
}  // namespace torvex::test
