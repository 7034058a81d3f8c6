#include "delivery/HitStore.h"
#include "platform/Session.h"
#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class HitsTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (!HasFatalFailure()) page("aa.en.01").id(12).insert();
    }

    int views(const std::string& node = "aa.en.01", const std::string& day = "20260615") {
        return host.hits.views[{node, day}];
    }

    /// Whether a view from `address` counts under the filter.
    bool counts(const std::string& filter, const std::string& address) {
        host.application.set("tvx_log_IP_filter", filter);
        ask("", {}, {{"REMOTE_ADDR", address}});
        const int before = views();
        server().logPage("12");
        return views() == before + 1;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, HitsTest, bothEngines(), engineName);

TEST_P(HitsTest, AViewIsCountedByNodeAndDay) {
    server().logPage("12");
    EXPECT_EQ(views(), 1);
    EXPECT_EQ(host.hits.views.size(), 1);
}

TEST_P(HitsTest, ThePageIsFoundByEitherName) {
    server().logPage(" 12 ");
    server().logPage(" AA.EN.01 ");
    EXPECT_EQ(views(), 2);
}

TEST_P(HitsTest, APageOfTheDesignAloneIsCounted) {
    page("aa.en.02").id(13).insertInDesignOnly();
    server().logPage("13");
    EXPECT_EQ(views("aa.en.02"), 1);
}

TEST_P(HitsTest, WhatIsNoNodeIsNotCounted) {
    page("aa").id(14).insert();
    for (const auto* ident : {"", "77", "14", "aa", "-5", "1.5"}) server().logPage(ident);
    EXPECT_TRUE(host.hits.views.empty());
    EXPECT_EQ(host.session.text("torvex_visited_pages"), "");
}

TEST_P(HitsTest, AFirstViewAddsTheNodeToTheVisitedText) {
    server().logPage("12");
    EXPECT_EQ(host.session.text("torvex_visited_pages"), ",aa.en.01,");
}

TEST_P(HitsTest, ASecondViewByTheSameVisitorIsNotUnique) {
    server().logPage("12");
    server().logPage("12");
    EXPECT_EQ(views(), 2);
    EXPECT_EQ((host.hits.uniqueViews[{"aa.en.01", "20260615"}]), 1);
    EXPECT_EQ(host.session.text("torvex_visited_pages"), ",aa.en.01,");
}

TEST_P(HitsTest, AnotherVisitorsFirstViewIsUnique) {
    server().logPage("12");
    host.session.set("torvex_visited_pages", "");
    server().logPage("12");
    EXPECT_EQ((host.hits.uniqueViews[{"aa.en.01", "20260615"}]), 2);
    EXPECT_EQ(host.session.text("torvex_visited_pages"), ",aa.en.01,");
}

TEST_P(HitsTest, AChildOfAVisitedNodeIsNotVisited) {
    page("aa.en.01.02").id(13).insert();
    server().logPage("13");
    host.hits.count("aa.en.01", "20260615", true);
    server().logPage("12");
    EXPECT_EQ(host.session.text("torvex_visited_pages"), ",aa.en.01.02,,aa.en.01,");
    EXPECT_EQ((host.hits.uniqueViews[{"aa.en.01", "20260615"}]), 2);
}

TEST_P(HitsTest, WithAnEmptyFilterEveryViewCounts) {
    EXPECT_TRUE(counts("", "10.0.0.7"));
    EXPECT_TRUE(counts("   ", "10.0.0.7"));
}

TEST_P(HitsTest, AFilteredViewChangesNothing) {
    EXPECT_FALSE(counts("10.0.0.7", "10.0.0.7"));
    EXPECT_TRUE(host.hits.views.empty() || views() == 0);
    EXPECT_EQ(host.session.text("torvex_visited_pages"), "");
}

TEST_P(HitsTest, AnAddressThatTheFilterHoldsAsTextIsFiltered) {
    EXPECT_FALSE(counts("10.0.0.71", "10.0.0.7"));
    EXPECT_FALSE(counts("x10.0.0.7x", "10.0.0.7"));
    EXPECT_FALSE(counts(" 10.0.0.7 ", " 10.0.0.7 "));
}

TEST_P(HitsTest, AnAddressInAnItemIsFilteredHoweverItIsWritten) {
    EXPECT_FALSE(counts("010.000.000.7,1.2.3.4", "10.0.0.7"));
    EXPECT_FALSE(counts("1.2.3.4, 10.0.000.007", "10.0.0.7"));
}

TEST_P(HitsTest, ARangeHoldsItsEndsAndWhatLiesBetween) {
    const std::string filter = "1.1.1.1,10.0.0.5 - 10.0.1.20";
    EXPECT_TRUE(counts(filter, "10.0.0.4"));
    EXPECT_FALSE(counts(filter, "10.0.0.5"));
    EXPECT_FALSE(counts(filter, "10.0.0.200"));
    EXPECT_FALSE(counts(filter, "10.0.1.20"));
    EXPECT_TRUE(counts(filter, "10.0.1.21"));
    EXPECT_TRUE(counts(filter, "9.255.255.255"));
}

TEST_P(HitsTest, ARangeWithAnEndThatIsNoAddressHoldsNothing) {
    EXPECT_TRUE(counts("10.0.0.5-", "10.0.0.7"));
    EXPECT_TRUE(counts("-10.0.0.9", "10.0.0.7"));
    EXPECT_TRUE(counts("10.0.0-10.0.1.20", "10.0.0.7"));
    EXPECT_TRUE(counts("0.0.0.0-1000.0.0.0", "10.0.0.7"));
    EXPECT_TRUE(counts("staff", "10.0.0.7"));
    EXPECT_TRUE(counts(",,", "10.0.0.7"));
}

TEST_P(HitsTest, AVisitorWithoutAnAddressCounts) {
    EXPECT_TRUE(counts("10.0.0.5-10.0.1.20", ""));
}

TEST_P(HitsTest, AnAddressOfFifteenCharactersIsComparedAsItStands) {
    // With its points: they sort before digits, so the range in twelve digits doesn't hold it.
    EXPECT_TRUE(counts("100.100.100.99-100.100.100.101x", "100.100.100.100"));
    EXPECT_FALSE(counts("100.100.100.100-100.100.100.200", "100.100.100.150"));
    EXPECT_TRUE(counts("100.100.100.100-100.100.100.200", "100.100.100.201"));
}

TEST_P(HitsTest, AnAddressOfTheNewKindCountsUnlessItStandsInTheFilter) {
    EXPECT_TRUE(counts("10.0.0.5-10.0.1.20", "2001:db8::1"));
    EXPECT_FALSE(counts("10.0.0.5,2001:db8::1", "2001:DB8::1"));
}

TEST_P(HitsTest, FailuresTellTheOperation) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(errorOf([&] { server().logPage("12"); }).starts_with(chain({"logPage!"})));
}

// Counting in the database

class HitStoreTest : public HitsTest {
  protected:
    std::string day(const std::string& column, const std::string& date = "20260615") {
        return cell("select " + column + " from TORVEX_LOGGING where nodeId = 'aa.en.01' and yyyymmdd = '" +
                    date + "'");
    }
    DirectHits hits{host.database, host.application};
};
INSTANTIATE_TEST_SUITE_P(Engines, HitStoreTest, bothEngines(), engineName);

TEST_P(HitStoreTest, TheFirstViewOfADayMakesItsRow) {
    EXPECT_TRUE(hits.count("aa.en.01", "20260615", true));
    EXPECT_EQ(cell("select count(*) from TORVEX_LOGGING"), "1");
    EXPECT_EQ(day("site"), "aa");
    EXPECT_EQ(day("lang"), "en");
    EXPECT_EQ(day("yyyy"), "2026");
    EXPECT_EQ(day("mm"), "06");
    EXPECT_EQ(day("dd"), "15");
    EXPECT_EQ(day("hits"), "1");
    EXPECT_EQ(day("uniquehits"), "1");
}

TEST_P(HitStoreTest, AFurtherViewAddsToTheHitsAlone) {
    hits.count("aa.en.01", "20260615", true);
    EXPECT_FALSE(hits.count("aa.en.01", "20260615", false));
    EXPECT_EQ(day("hits"), "2");
    EXPECT_EQ(day("uniquehits"), "1");
}

TEST_P(HitStoreTest, AFurtherViewByANewVisitorAddsToBoth) {
    hits.count("aa.en.01", "20260615", true);
    EXPECT_TRUE(hits.count("aa.en.01", "20260615", true));
    EXPECT_EQ(day("hits"), "2");
    EXPECT_EQ(day("uniquehits"), "2");
}

/// "node month hits/uniquehits" of those with any.
TEST_P(HitStoreTest, MonthsFollowWhoeverWritesTheHits) {
    const auto months = [&] {
        std::string all;
        auto rows = connection().query(
            "select nodeId, yyyymm, hits, uniquehits, site, lang from TORVEX_LOGGING_MONTHS where hits > 0 "
            "order by nodeId, yyyymm");
        while (rows.next())
            all += rows.text("site") + "/" + rows.text("lang") + " " + rows.text("nodeId") + " " +
                   rows.text("yyyymm") + " " + rows.text("hits") + "/" + rows.text("uniquehits") + "; ";
        return all;
    };
    hits.count("aa.en.01", "20260615", true);
    hits.count("aa.en.01", "20260616", false);
    hits.count("aa.en.01", "20260616", false);
    hits.count("aa.en.01", "20260701", true);
    addHits(connection(), "aa.en.02", "20260615", 10, 4);
    EXPECT_EQ(months(), "aa/en aa.en.01 202606 3/2; aa/en aa.en.01 202607 1/1; aa/en aa.en.02 202606 10/4; ");
    connection().execute("update TORVEX_LOGGING set hits = 20 where nodeId = 'aa.en.02'");
    EXPECT_EQ(months(), "aa/en aa.en.01 202606 3/2; aa/en aa.en.01 202607 1/1; aa/en aa.en.02 202606 20/4; ");
    connection().execute("update TORVEX_LOGGING set nodeId = 'aa.en.05' where nodeId = 'aa.en.01'");
    EXPECT_EQ(months(), "aa/en aa.en.02 202606 20/4; aa/en aa.en.05 202606 3/2; aa/en aa.en.05 202607 1/1; ");
    connection().execute("delete from TORVEX_LOGGING where yyyymmdd >= '20260616'");
    EXPECT_EQ(months(), "aa/en aa.en.02 202606 20/4; aa/en aa.en.05 202606 1/1; ");
}

TEST_P(HitStoreTest, TheFirstViewOfANewDayIsUniqueEvenByAKnownVisitor) {
    hits.count("aa.en.01", "20260615", true);
    EXPECT_TRUE(hits.count("aa.en.01", "20260616", false));
    EXPECT_EQ(day("hits", "20260616"), "1");
    EXPECT_EQ(day("uniquehits", "20260616"), "1");
    EXPECT_EQ(day("hits"), "1");
}

TEST_P(HitStoreTest, ANodeThatWasViewedIsKnown) {
    EXPECT_FALSE(hasHits(connection(), "aa.en.01", "20260615"));
    hits.count("aa.en.01", "20260615", true);
    EXPECT_TRUE(hasHits(connection(), "aa.en.01", "20260615"));
    EXPECT_FALSE(hasHits(connection(), "aa.en.01", "20260616"));
    EXPECT_FALSE(hasHits(connection(), "aa.en.02", "20260615"));
}

TEST_P(HitStoreTest, CountsAreAddedToWhatIsThere) {
    addHits(connection(), "aa.en.01", "20260615", 5, 2);
    addHits(connection(), "aa.en.01", "20260615", 3, 1);
    EXPECT_EQ(day("hits"), "8");
    EXPECT_EQ(day("uniquehits"), "3");
    EXPECT_EQ(day("site"), "aa");
}

TEST_P(HitStoreTest, PagesAreCountedThroughTheServer) {
    HostContext context{host.services().with(hits), host.request, host.response, host.session};
    cServer counting(context);
    counting.connect(connection());
    counting.logPage("12");
    counting.logPage("12");
    EXPECT_EQ(day("hits"), "2");
    EXPECT_EQ(day("uniquehits"), "1");
    host.session.set("torvex_visited_pages", "");
    counting.logPage("12");
    EXPECT_EQ(day("hits"), "3");
    EXPECT_EQ(day("uniquehits"), "2");
}

TEST_P(HitStoreTest, AViewThatCantBeStoredIsAnErrorOfLogPage) {
    HostContext context{host.services().with(hits), host.request, host.response, host.session};
    cServer counting(context);
    counting.connect(connection());
    drop("TORVEX_LOGGING");
    EXPECT_TRUE(errorOf([&] { counting.logPage("12"); }).starts_with(chain({"logPage!"})));
    EXPECT_EQ(host.session.text("torvex_visited_pages"), "");
}

}  // namespace
}  // namespace torvex::test
