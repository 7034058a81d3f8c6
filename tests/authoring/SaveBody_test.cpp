#include "platform/text/Text.h"
#include "support/BodiesTest.h"

namespace torvex::test {
namespace {

class SaveBody : public BodiesTest {
  protected:
    std::string save(PageId pageId, int bodyId, const std::string& text) {
        return manager().saveBody(ident(pageId), bodyId, text);
    }
    std::string stored(const std::string& text) {
        const PageId edited = published("aa.en.90").insertInDesignOnly();
        EXPECT_EQ(save(edited, 1, text), "0");
        auto rows =
            connection().query("select bodyText from TORVEX_BODIES_DESIGN where pageId = ?", {edited});
        std::string result = rows.next() ? rows.text("bodyText") : "none";
        return result;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SaveBody, bothEngines(), engineName);

TEST_P(SaveBody, ReplacesTheText) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    designBody(edited, 1, "old");
    designBody(edited, 2, "other");
    EXPECT_EQ(save(edited, 1, "new <b>\"é'</b>"), "0");
    EXPECT_EQ(designBodyOf(edited, 1), "1|0|new <b>\"é'</b>");
    EXPECT_EQ(designBodyOf(edited, 2), "1|0|other");
    EXPECT_EQ(auditTrail(), std::vector<std::string>{annasLine(edited, "aa.en.01", "save body",
                                                               "Body content 1 has been updated")});
}

TEST_P(SaveBody, ABodyThatIsNotThereIsAddedAsAStoredText) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(save(edited, 3, "third"), "0");
    EXPECT_EQ(designBodyOf(edited, 3), "1|0|third");
}

TEST_P(SaveBody, TheKindOfABodyStays) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    designBody(edited, 1, "old", 2, 5);
    EXPECT_EQ(save(edited, 1, "new"), "0");
    EXPECT_EQ(designBodyOf(edited, 1), "2|5|new");
}

TEST_P(SaveBody, ThePageIsModifiedByTheAuthorNow) {
    const PageId edited = published("aa.en.01").set("editor", bert).insertInDesignOnly();
    EXPECT_EQ(save(edited, 1, "new"), "0");
    EXPECT_EQ(pageState(edited), std::string("M000") + editedByAnna);
}

TEST_P(SaveBody, AMarkForDeletionStays) {
    const PageId edited =
        published("aa.en.01").set("deleteStatus", 1).set("deletedBy", bert).insertInDesignOnly();
    EXPECT_EQ(save(edited, 1, "new"), "0");
    EXPECT_EQ(pageState(edited), "M010 7 2026-06-15T12:00:00 8 -");
}

TEST_P(SaveBody, APageNeedNotBeCheckedOut) {
    const PageId mine = lockedBy("aa.en.01", anna).insertInDesignOnly();
    EXPECT_EQ(save(mine, 1, "new"), "0");
    EXPECT_EQ(pageState(mine), std::string("M100") + editedByAnna);
}

TEST_P(SaveBody, ThePageMayBeGivenByItsNode) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(manager().saveBody(" AA.EN.01 ", 1, "new"), "0");
    EXPECT_EQ(designBodyOf(edited, 1), "1|0|new");
}

TEST_P(SaveBody, TheLivePageStays) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    body(edited, 1, "live");
    EXPECT_EQ(save(edited, 1, "new"), "0");
    EXPECT_EQ(cell("select bodyText from TORVEX_BODIES_LIVE"), "live");
}

// Refusals

TEST_P(SaveBody, NobodyLoggedInIsMinusTen) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    actAsNobody();
    expectRefusal("-10", [&] { return save(edited, 1, "new"); });
    expectRefusal("-10", [&] { return save(4711, 1, "new"); });
}

TEST_P(SaveBody, APageThatIsNotThereIsMinusThree) {
    page("aa.en.02").id(50).insertInLiveOnly();
    expectRefusal("-3", [&] { return save(4711, 1, "new"); });
    expectRefusal("-3", [&] { return save(50, 1, "new"); });
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-3", [&] { return manager().saveBody(bad, 1, "new"); });
    }
}

TEST_P(SaveBody, AnApprovedPageIsMinusTwoEvenIfAnotherHoldsIt) {
    const PageId approved = published("aa.en.01").set("approveStatus", 1).insertInDesignOnly();
    const PageId both = lockedBy("aa.en.02", bert).set("approveStatus", 1).insertInDesignOnly();
    expectRefusal("-2", [&] { return save(approved, 1, "new"); });
    expectRefusal("-2", [&] { return save(both, 1, "new"); });
}

TEST_P(SaveBody, APageThatAnotherHoldsIsMinusOne) {
    const PageId held = lockedBy("aa.en.01", bert).insertInDesignOnly();
    designBody(held, 1, "old");
    expectRefusal("-1", [&] { return save(held, 1, "new"); });
}

TEST_P(SaveBody, AFailureAtAnyStepLeavesEverythingAsItWas) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    failEverywhere(
        "0", [&] { return save(edited, 3, "new"); }, [&] { EXPECT_TRUE(auditTrail().empty()); });
    EXPECT_FALSE(host.log.lines.empty());
}

// Images

TEST_P(SaveBody, AddressesOfImagesLoseTheHost) {
    host.session.set("torvex_dns", "www.site.test");
    EXPECT_EQ(stored("<img src=\"http://www.site.test/images/aa/x.gif\"><img "
                     "src='HTTPS://WWW.site.test/images/y.gif'>"),
              "<img src=\"/images/aa/x.gif\"><img src='/images/y.gif'>");
}

TEST_P(SaveBody, OtherAddressesStay) {
    host.session.set("torvex_dns", "www.site.test");
    const std::string text =
        "http://www.site.test/documents/x.pdf http://other.test/images/x.gif ftp://www.site.test/images/x "
        "http://www.site.test:81/images/x.gif /images/x.gif";
    EXPECT_EQ(stored(text), text);
}

TEST_P(SaveBody, WithoutAHostAddressesStay) {
    host.session.set("torvex_dns", "");
    EXPECT_EQ(stored("http:///images/x.gif"), "http:///images/x.gif");
}

// Texts

TEST_P(SaveBody, AnyTextIsStoredAsItIs) {
    int number = 0;
    for (const std::string& text :
         {std::string(), std::string("  blanks  "), std::string("'; drop table x; --"),
          std::string("<table><tr><td><b>never closed <!-- "),
          std::string("\xF0\x9F\x8C\xB7 \xE6\xBC\xA2 \xD7\xA9")}) {
        const PageId edited = published("aa.en.0" + std::to_string(++number)).insertInDesignOnly();
        EXPECT_EQ(save(edited, 1, text), "0");
        EXPECT_EQ(designBodyOf(edited, 1), "1|0|" + text);
    }
}

TEST_P(SaveBody, ABodyOfFiveMegabytesIsStored) {
    host.session.set("torvex_dns", "www.site.test");
    std::string text;
    while (text.size() < 5 * 1024 * 1024) text += "<img src=\"http://www.site.test/images/a.gif\">é";
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(save(edited, 1, text), "0");
    EXPECT_EQ(designBodyOf(edited, 1),
              "1|0|" + text::replaceAll(text, "http://www.site.test/images/", "/images/"));
}

}  // namespace
}  // namespace torvex::test
