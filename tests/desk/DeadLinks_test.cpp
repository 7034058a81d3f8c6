#include <fmt/format.h>
#include <gmock/gmock.h>

#include "search/designs/PageIndex.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class DeskDeadLinksTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(1).title("Home").insert();
        page("aa.en.01").id(12).title("Walks").insert();
    }
    Value list(const std::string& site = "aa", const std::string& lang = "en", int from = 0) {
        indexMissingPages(host.context(), connection());
        return desk().getDeadLinks(site, lang, from);
    }
    /// "node body target reason" of each.
    std::vector<std::string> dead() {
        std::vector<std::string> lines;
        const Value links = list();
        for (std::size_t row = 0; links.isGrid() && row < links.grid().rows(); ++row) {
            const auto cell = [&](std::size_t column) { return links.grid().at(column, row).toText(); };
            lines.push_back(cell(1) + " " + cell(3) + " " + cell(4) + " " + cell(5));
        }
        return lines;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskDeadLinksTest, bothEngines(), engineName);

TEST_P(DeskDeadLinksTest, ALineSaysWhereTheLinkIs) {
    designBody(12, 3, R"~(<a href="page(4711)">x</a>)~");
    EXPECT_THAT(linesOf(list()), ElementsAre("12|aa.en.01|Walks|3|4711|gone|"));
}

TEST_P(DeskDeadLinksTest, APageIsDeadThatVisitorsCantSee) {
    page("aa.en.02").id(20).insertInDesignOnly();
    page("aa.en.03").id(30).offline().insert();
    page("aa.en.04").id(40).dates("20260616", "99999999").insert();
    page("aa.en.05").id(50).dates("00000000", "20260614").insert();
    page("aa.en.06").id(60).dates("20260615", "20260615").insert();
    page("aa.en.07").id(70).type("F").offline().insert();
    page("aa.en.08").id(80).dates("", "").insert();
    designBody(12, 1,
               R"~(<a href="page(20)"><a href="page(30)"><a href="page(40)"><a href="page(50)">)~"
               R"~(<a href="page(60)"><a href="page(70)"><a href="page(80)"><a href="page(90)">)~");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 20 notLive", "aa.en.01 1 30 offline", "aa.en.01 1 40 offline",
                                    "aa.en.01 1 50 offline", "aa.en.01 1 90 gone"));
}

TEST_P(DeskDeadLinksTest, ATargetHasItsTitle) {
    page("aa.en.02").id(20).title("Tulips").insertInDesignOnly();
    page("aa.en.03").title("Asters").offline().insert();
    designBody(12, 1, R"~(<a href="page(20)"><a href="page(aa.en.03)"><img src="/images/aa/no.jpg">)~");
    EXPECT_THAT(columnOf(list(), 6), ElementsAre("Tulips", "Asters", ""));
}

TEST_P(DeskDeadLinksTest, APageThatIsGoneHasTheTitleThatTheTrailKnowsLast) {
    const auto wasCalled = [&](PageId pageId, const std::string& title) {
        row("TORVEX_AUDIT_TRAIL", {{"pageId", pageId}, {"pageTitle", title}, {"nodeId", "aa.en.09"}});
    };
    wasCalled(4711, "Old prices");
    wasCalled(4711, "Prices");
    wasCalled(4711, "");
    wasCalled(4713, "Another");
    designBody(12, 1, R"~(<a href="page(4711)"><a href="page(4712)"><a href="page(aa.en.09)">)~");
    EXPECT_THAT(columnOf(list(), 6), ElementsAre("Prices", "", ""));
}

TEST_P(DeskDeadLinksTest, NodesAreLookedUpAsNumbersAre) {
    page("aa.en.02").offline().insert();
    designBody(12, 1, R"~(<a href="page(AA.en)"><a href="page(aa.en.02)"><a href="page(aa.en.55)">)~");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 aa.en.02 offline", "aa.en.01 1 aa.en.55 gone"));
}

TEST_P(DeskDeadLinksTest, AFileIsDeadThatNeitherTheRegisterNorTheDiskKnows) {
    row("TORVEX_IMAGES", {{"img_site", "aa"}, {"img_title", "Rose"}, {"img_filename", "001/rose.jpg"}});
    row("TORVEX_DOCUMENTS", {{"doc_site", "aa"}, {"doc_title", "Price list"}, {"doc_filename", "p.pdf"}});
    host.files.bytes["/install/wwwroot/images/aa/drawn.svg"] = "x";
    host.files.bytes["/install/wwwroot/documents/aa/loose.pdf"] = "x";
    designBody(
        12, 1,
        R"~(<img src="/images/AA/001/ROSE.jpg"><img src="/images/aa/drawn.svg"><img src="/images/aa/no.jpg">)~"
        R"~(<img src="/images/aa/../secret">)~");
    designBody(
        12, 2,
        R"~(<a href="file(p.pdf)"><a href="file(price list)"><a href="file(loose.pdf)"><a href="file(no.pdf)">)~"
        R"~(<a href="file(bb/p.pdf)">)~");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 aa/../secret noFile", "aa.en.01 1 aa/no.jpg noFile",
                                    "aa.en.01 2 aa/no.pdf noFile", "aa.en.01 2 bb/p.pdf noFile"));
}

TEST_P(DeskDeadLinksTest, ALinkThatIsStillUnchosenIsDead) {
    designBody(12, 1, R"~(<a [href]="">later</a>)~");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1  unchosen"));
}

TEST_P(DeskDeadLinksTest, TheyStandByNodeBodyAndTarget) {
    page("aa.en.00").id(5).insert();
    designBody(12, 10, R"~(<a href="page(90)"><a [href]=""><img src="/images/aa/a.jpg">)~");
    designBody(12, 2, R"~(<a href="page(91)">)~");
    designBody(5, 1, R"~(<a href="page(92)">)~");
    EXPECT_THAT(dead(), ElementsAre("aa.en.00 1 92 gone", "aa.en.01 2 91 gone", "aa.en.01 10  unchosen",
                                    "aa.en.01 10 90 gone", "aa.en.01 10 aa/a.jpg noFile"));
}

TEST_P(DeskDeadLinksTest, OnlyTheDesignsOfTheTreeCount) {
    page("aa.de").id(500).insert();
    designBody(500, 1, R"~(<a href="page(90)">)~");
    body(12, 1, R"~(<a href="page(90)">)~");
    EXPECT_THAT(dead(), IsEmpty());
    EXPECT_THAT(linesOf(list(" AA ", "DE")), SizeIs(1));
    EXPECT_TRUE(list("", "").isEmpty());
    EXPECT_TRUE(list("aa", "de", -1).isEmpty());
}

// ---- Whatever makes a link dead or mends it: the program, a statement, another program ----

TEST_P(DeskDeadLinksTest, APageThatGoesAndComesBackTakesItsLinksAlong) {
    page("aa.en.02").id(20).insert();
    designBody(12, 1, R"~(<a href="page(20)">)~");
    EXPECT_THAT(dead(), IsEmpty());
    connection().execute("delete from TORVEX_PAGES_LIVE where pageId = 20");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 20 notLive"));
    connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = 20");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 20 gone"));
    connection().execute("insert into TORVEX_PAGES_LIVE (pageId, nodeId) values (20, 'aa.en.02')");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 20 gone"));
    connection().execute("insert into TORVEX_PAGES_DESIGN (pageId, nodeId) values (20, 'aa.en.02')");
    EXPECT_THAT(dead(), IsEmpty());
}

TEST_P(DeskDeadLinksTest, APageThatIsSwitchedOffIsDead) {
    page("aa.en.02").id(20).insert();
    designBody(12, 1, R"~(<a href="page(20)">)~");
    EXPECT_THAT(dead(), IsEmpty());
    for (const auto* change : {"online = 0", "online = null", "online = 1, onlineFrom = '20260616'",
                               "onlineFrom = '', onlineTo = '20260614'"}) {
        connection().execute(std::string("update TORVEX_PAGES_LIVE set ") + change + " where pageId = 20");
        EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 20 offline")) << change;
    }
    connection().execute("update TORVEX_PAGES_LIVE set onlineTo = null where pageId = 20");
    EXPECT_THAT(dead(), IsEmpty());
}

TEST_P(DeskDeadLinksTest, AnImageThatIsRegisteredRenamedAndRemoved) {
    designBody(12, 1, R"~(<img src="/images/aa/rose.jpg">)~");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 aa/rose.jpg noFile"));
    row("TORVEX_IMAGES", {{"img_site", "AA"}, {"img_title", "Rose"}, {"img_filename", "Rose.jpg"}});
    EXPECT_THAT(dead(), IsEmpty());
    connection().execute("update TORVEX_IMAGES set img_filename = 'rose.JPG'");
    EXPECT_THAT(dead(), IsEmpty());
    connection().execute("update TORVEX_IMAGES set img_filename = 'tulip.jpg'");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 aa/rose.jpg noFile"));
    connection().execute("update TORVEX_IMAGES set img_filename = 'rose.jpg'");
    EXPECT_THAT(dead(), IsEmpty());
    connection().execute("delete from TORVEX_IMAGES");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 aa/rose.jpg noFile"));
}

TEST_P(DeskDeadLinksTest, OnlyWhatIsMissingIsKeptAsMissing) {
    page("aa.en.02").id(20).insert();
    row("TORVEX_IMAGES", {{"img_site", "aa"}, {"img_title", "Rose"}, {"img_filename", "rose.jpg"}});
    designBody(12, 1,
               R"~(<a href="page(20)"><a href="page(90)"><img src="/images/aa/rose.jpg">)~"
               R"~(<img src="/images/aa/no.jpg"><a href="page(90)">)~");
    body(12, 1, R"~(<a href="page(91)"><img src="/images/aa/live.jpg">)~");
    list();
    EXPECT_EQ(cell("select max(linkPage) || ' ' || count(*) from TORVEX_MISSING_PAGES"), "90 1");
    EXPECT_EQ(cell("select max(linkTarget) || ' ' || count(*) from TORVEX_MISSING_IMAGES"), "no.jpg 1");
}

TEST_P(DeskDeadLinksTest, AFileIsNamedAsItsLinkNamesIt) {
    designBody(12, 1, R"~(<img src="/images/aa/No.jpg">)~");
    designBody(12, 2, R"~(<img src="/images/aa/no.JPG">)~");
    EXPECT_THAT(dead(), ElementsAre("aa.en.01 1 aa/No.jpg noFile", "aa.en.01 2 aa/no.JPG noFile"));
}

TEST_P(DeskDeadLinksTest, LongListsComeInParts) {
    std::string text;
    for (int i = 0; i < 510; ++i) text += fmt::format(R"~(<a href="page({})">)~", 5000 + i);
    designBody(12, 1, text);
    EXPECT_THAT(linesOf(list()), SizeIs(500));
    EXPECT_THAT(linesOf(list("aa", "en", 500)), SizeIs(10));
}

TEST_P(DeskDeadLinksTest, WhatFailsIsRaised) {
    drop("TORVEX_LINKS");
    EXPECT_THAT(errorOf([&] { desk().getDeadLinks("aa", "en"); }), StartsWith(chain({"getDeadLinks !"})));
}

}  // namespace
}  // namespace torvex::test
