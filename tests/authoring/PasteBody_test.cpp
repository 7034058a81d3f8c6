#include "support/BodiesTest.h"

namespace torvex::test {
namespace {

class PasteBody : public BodiesTest {
  protected:
    void SetUp() override {
        BodiesTest::SetUp();
        if (HasFatalFailure()) return;
        source_ = published("aa.en.01").insertInDesignOnly();
        page("aa.en.01").id(source_).insertInLiveOnly();
        target_ = published("aa.en.02").insertInDesignOnly();
        designBody(source_, 1, "design");
        body(source_, 1, "live");
    }

    std::string paste(int from, int to, const std::string& mode = "D") {
        return manager().pasteBody(ident(source_), ident(target_), from, to, mode);
    }

    PageId source_ = 0;
    PageId target_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, PasteBody, bothEngines(), engineName);

TEST_P(PasteBody, AddsABody) {
    EXPECT_EQ(paste(1, 5), "0");
    EXPECT_EQ(designBodyOf(target_, 5), "1|0|design");
    EXPECT_EQ(designBodyOf(source_, 1), "1|0|design");
    EXPECT_EQ(statuses(source_), "P000");
    EXPECT_EQ(auditTrail(), std::vector<std::string>{
                                annasLine(target_, "aa.en.02", "save body",
                                          "Body content 5 copied from page " + ident(source_) + ", body 1")});
}

TEST_P(PasteBody, OverwritesABodyWithKindAndFeed) {
    designBody(source_, 2, "feed", 3, 15);
    designBody(target_, 1, "old");
    EXPECT_EQ(paste(2, 1), "0");
    EXPECT_EQ(designBodyOf(target_, 1), "3|15|feed");
}

TEST_P(PasteBody, TakesTheLiveBodyInModeLAndTheDesignInAnyOther) {
    EXPECT_EQ(paste(1, 1, "l"), "0");
    EXPECT_EQ(designBodyOf(target_, 1), "1|0|live");
    for (const char* mode : {"D", "", "x"}) {
        EXPECT_EQ(paste(1, 2, mode), "0");
        EXPECT_EQ(designBodyOf(target_, 2), "1|0|design");
        EXPECT_EQ(manager().clearBody(ident(target_), 2), "0");
    }
    EXPECT_EQ(manager().pasteBody("aa.en.01", "aa.en.02", 1, 3), "0");
    EXPECT_EQ(designBodyOf(target_, 3), "1|0|design");
}

TEST_P(PasteBody, ASourceMayBeLiveOrDesignOnly) {
    page("aa.en.03").id(50).insertInDesignOnly();
    page("aa.en.04").id(51).insertInLiveOnly();
    designBody(50, 1, "d");
    body(51, 1, "l");
    EXPECT_EQ(manager().pasteBody("50", ident(target_), 1, 1), "0");
    EXPECT_EQ(manager().pasteBody("51", ident(target_), 1, 2, "L"), "0");
    expectRefusal("-2", [&] { return manager().pasteBody("50", ident(target_), 1, 1, "L"); });
    expectRefusal("-2", [&] { return manager().pasteBody("51", ident(target_), 1, 1, "D"); });
}

TEST_P(PasteBody, TheTargetIsModifiedAndNeitherMarkedNorApproved) {
    target_ = marked("aa.en.07").set("lockStatus", 0).insertInDesignOnly();
    EXPECT_EQ(paste(1, 1), "0");
    EXPECT_EQ(pageState(target_), std::string("M000") + editedByAnna);
}

TEST_P(PasteBody, ToAnotherSiteOrLanguageOnlyStoredTextsGo) {
    designBody(source_, 2, "stored beside the feed", 2, 15);
    for (const char* node : {"bb.en.01", "aa.de.01"}) {
        target_ = published(node).insertInDesignOnly();
        designBody(target_, 2, "old", 3, 4);
        EXPECT_EQ(paste(1, 1), "0");
        EXPECT_EQ(designBodyOf(target_, 1), "1|0|design");
        EXPECT_EQ(paste(2, 2), "0");
        EXPECT_EQ(designBodyOf(target_, 2), "1|0|");
        EXPECT_EQ(paste(2, 3), "0");
        EXPECT_EQ(designBodyOf(target_, 3), "1|0|");
    }
}

TEST_P(PasteBody, ABodyMayGoToItsOwnPage) {
    target_ = source_;
    EXPECT_EQ(paste(1, 2), "0");
    EXPECT_EQ(designBodyOf(source_, 2), "1|0|design");
    EXPECT_EQ(paste(1, 1), "0");
    EXPECT_EQ(designBodyOf(source_, 1), "1|0|design");
}

// Refusals

TEST_P(PasteBody, NobodyLoggedInIsMinusTen) {
    actAsNobody();
    expectRefusal("-10", [&] { return paste(1, 1); });
}

TEST_P(PasteBody, AMissingSourceIsMinusTwoWhateverTheTarget) {
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-2", [&] { return manager().pasteBody(bad, ident(target_), 1, 1); });
        expectRefusal("-2", [&] { return manager().pasteBody(bad, "4711", 1, 1); });
    }
}

TEST_P(PasteBody, AMissingTargetIsMinusThree) {
    page("aa.en.04").id(51).insertInLiveOnly();
    expectRefusal("-3", [&] { return manager().pasteBody(ident(source_), "51", 1, 1); });
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-3", [&] { return manager().pasteBody(ident(source_), bad, 1, 1); });
    }
}

TEST_P(PasteBody, ATargetThatAnotherHoldsIsMinusOne) {
    target_ = lockedBy("aa.en.05", bert).insertInDesignOnly();
    expectRefusal("-1", [&] { return paste(1, 1); });
    expectRefusal("-1", [&] { return paste(77, 1); });
}

TEST_P(PasteBody, ASourceThatAnotherHoldsIsNoHindrance) {
    const PageId held = lockedBy("aa.en.05", bert).insertInDesignOnly();
    designBody(held, 1, "his");
    EXPECT_EQ(manager().pasteBody(ident(held), ident(target_), 1, 1), "0");
}

TEST_P(PasteBody, ABodyThatIsNotThereIsMinusNinetyNine) {
    expectRefusal("-99", [&] { return paste(77, 1); });
    expectRefusal("-99", [&] { return paste(-1, 1); });
}

TEST_P(PasteBody, AFailureAtAnyStepLeavesEverythingAsItWas) {
    failEverywhere(
        "0", [&] { return paste(1, 5); }, [&] { EXPECT_TRUE(auditTrail().empty()); });
}

}  // namespace
}  // namespace torvex::test
