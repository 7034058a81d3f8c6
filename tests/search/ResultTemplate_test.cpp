#include "search/ResultTemplate.h"

#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

class ResultTemplateTest : public SearchPageTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ResultTemplateTest, bothEngines(), engineName);

// ---- One result ----

TEST_P(ResultTemplateTest, RanksAreRounded) {
    catalogue::Row found = documentRow("aa/1.pdf");
    found.rank = 987;
    EXPECT_EQ(shownAs("<!--!search_ranking!--> <!--!search_ranking5!--> <!--!search_ranking10!-->", found),
              "987 197 99");
}

TEST_P(ResultTemplateTest, ADocumentShowsItsFile) {
    catalogue::Row found = documentRow("aa/v1.2/Plan.Final.PDF");
    found.size = 1'677'722;
    EXPECT_EQ(shownAs("<!--!search_filename!--> <!--!search_filetype!--> <!--!search_filesize!--> "
                      "<!--!search_filesizeKB!--> <!--!search_filesizeMB!-->",
                      found),
              "Plan.Final.PDF pdf 1677722 1638.4 1.6");
    EXPECT_EQ(shownAs("[<!--!search_filetype!-->]", documentRow("aa/v1.2/readme")), "[]");
}

TEST_P(ResultTemplateTest, APageShowsNone) {
    const std::string layout =
        "a<!--!search_filetype_start!-->(<!--!search_filetype!-->)<!--!search_filetype_end!-->"
        "<!--!search_filesize_start!-->(<!--!search_filesize!-->)<!--!search_filesize_end!-->"
        "<!--!search_filename_start!-->(<!--!search_filename!-->)<!--!search_filename_end!-->"
        "<!--!search_noFilename_start!-->without<!--!search_noFilename_end!-->"
        "<!--!search_noComments_start!-->without<!--!search_noComments_end!-->"
        "<!--!search_noCompany_start!-->without<!--!search_noCompany_end!-->z";
    EXPECT_EQ(shownAs(layout, pageRow("aa.bb.01")), "az");
    EXPECT_EQ(withoutMarkers(shownAs(layout, documentRow("aa/1.pdf"))), "a(pdf)(1536)(1.pdf)withoutwithoutz");
}

TEST_P(ResultTemplateTest, FieldsHaveBlocksForBeingThereAndForNot) {
    catalogue::Row found = documentRow("aa/1.pdf");
    std::string layout;
    for (const auto* name : {"Title", "Keywords", "Author", "Subject", "Comments", "Company", "Abstract"}) {
        const std::string tag = "search_" + text::lower(name);
        layout += "<!--!" + tag + "_start!-->" + name + "=<!--!" + tag + "!--> <!--!" + tag +
                  "_end!--><!--!search_no" + name + "_start!-->no " + name + " <!--!search_no" + name +
                  "_end!-->";
    }
    EXPECT_EQ(withoutMarkers(shownAs(layout, found)),
              "no Title no Keywords no Author no Subject no Comments no Company no Abstract ");
    found.columns = {{"doctitle", " T & Co "}, {"dockeywords", "k"}, {"docauthor", "a"},
                     {"docsubject", "<s>"},    {"doccomments", "c"}, {"doccompany", "  "}};
    found.characterization = "text \"quoted\"";
    EXPECT_EQ(withoutMarkers(shownAs(layout, found)),
              "Title=T &amp; Co Keywords=k Author=a Subject=&lt;s&gt; Comments=c no Company "
              "Abstract=text &quot;quoted&quot; ");
}

TEST_P(ResultTemplateTest, AMetaTagOfTheSiteHasItsTagAndBlock) {
    metaTag(1, "aa", "Petal Colour");
    const std::string layout =
        "[<!--!search_petalcolour!--><!--!search_nopetalcolour_start!-->none<!--!search_nopetalcolour_end!-->"
        "]";
    catalogue::Row found = pageRow("aa.bb.01");
    EXPECT_EQ(withoutMarkers(shownAs(layout, found)), "[none]");
    found.columns["petalcolour"] = "<red>";
    EXPECT_EQ(withoutMarkers(shownAs(layout, found)), "[&lt;red&gt;]");
}

TEST_P(ResultTemplateTest, ValuesAreNoTemplates) {
    catalogue::Row found = documentRow("aa/1.pdf", "<!--!search_author!--><!--!search_string!-->");
    found.columns["docauthor"] = "someone";
    EXPECT_EQ(shownAs("<!--!search_title!-->", found),
              "&lt;!--!search_author!--&gt;&lt;!--!search_string!--&gt;");
}

TEST_P(ResultTemplateTest, SpacersStandBetweenResultsOnly) {
    documents(3);
    EXPECT_EQ(
        searchFor(
            "tax",
            resultsOnly("<!--!search_filename!--><!--!search_spacer_start!-->, <!--!search_spacer_end!-->")),
        "1.pdf, 2.pdf, 3.pdf");
}

// ---- The graph of ranks ----

class RankGraphTest : public ResultTemplateTest {
  protected:
    /// The units that each row shows, by its rank.
    std::string units(const std::vector<int>& ranks) {
        fake.rows.clear();
        for (const int rank : ranks) fake.rows.push_back(documentRow("aa/1.pdf", "", rank));
        return searchFor("tax",
                         resultsOnly("<!--!search_rankingGraph_start!-->*<!--!search_rankingGraph_end!-->"
                                     "<!--!search_rankingGraph!-->;"));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RankGraphTest, bothEngines(), engineName);

TEST_P(RankGraphTest, UnitsFollowTheRatioToTheBest) {
    EXPECT_EQ(units({500, 400, 399, 300, 299, 200, 199, 100, 99, 1}),
              "*****;*****;****;****;***;***;**;**;*;*;");
}

TEST_P(RankGraphTest, TheFirstOneHasFiveUnitsHoweverLow) {
    EXPECT_EQ(units({1}), "*****;");
    EXPECT_EQ(keptValue("rankBase"), "1");
    EXPECT_EQ(units({1000, 5}), "*****;*;");
}

TEST_P(RankGraphTest, ARankBeyondTheBestCountsAsTheBest) {
    EXPECT_EQ(units({1500, 1400, 790}), "*****;*****;****;");
    EXPECT_EQ(keptValue("rankBase"), "1000");
}

TEST_P(RankGraphTest, WithoutItsBlockTheTagGoes) {
    fake.rows = {documentRow("aa/1.pdf")};
    EXPECT_EQ(searchFor("tax", resultsOnly("[<!--!search_rankingGraph!-->]")), "[]");
}

TEST_P(RankGraphTest, TheBaseHoldsOnFurtherPages) {
    prescribe("search_resultsPerPage", 1);
    units({1000, 400});
    const std::string graph = resultsOnly(
        "<!--!search_rankingGraph_start!-->*<!--!search_rankingGraph_end!-->"
        "<!--!search_rankingGraph!-->");
    EXPECT_EQ(turnTo("2", graph), "***");
}

}  // namespace
}  // namespace torvex::test
