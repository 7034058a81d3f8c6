#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

constexpr const char* report =
    "<h1><!--!title!--></h1><!--!list_start!-->"
    "<!--!month_start!-->M <!--!month!-->;<!--!month_end!-->"
    "<!--!item_start!--><!--!dayType!--> <!--!day!--> <!--!hits!--> <!--!width!-->;<!--!item_end!-->"
    "<!--!total_start!-->T <!--!total!-->;<!--!total_end!-->"
    "<!--!list_end!--><!--!other!-->";

class StatisticsTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        host.session.set("torvex_adminTemplates_dir", "/install/torvex/templates/en/");
        host.files.bytes["/install/torvex/templates/en/statDetail.html"] = report;
        page("aa.en").id(1).title("Home").insert();
    }
    void hits(const std::string& day, int count, int visitors = 1, const std::string& node = "aa.en") {
        row("TORVEX_LOGGING", {{"nodeId", node},
                               {"yyyymmdd", day},
                               {"yyyy", day.substr(0, 4)},
                               {"mm", day.substr(4, 2)},
                               {"dd", day.substr(6, 2)},
                               {"hits", count},
                               {"uniquehits", visitors}});
    }
    /// From and to as "yyyymmdd", or "".
    std::string statistics(const std::string& from = "", const std::string& to = "", int type = 1,
                           const std::string& ident = "1") {
        const auto part = [](const std::string& day, std::size_t at, std::size_t length) {
            return day.empty() ? std::string() : day.substr(at, length);
        };
        return manager().statistics(ident, part(from, 6, 2), part(from, 4, 2), part(from, 0, 4),
                                    part(to, 6, 2), part(to, 4, 2), part(to, 0, 4), type);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, StatisticsTest, bothEngines(), engineName);

TEST_P(StatisticsTest, DaysStandByMonthsTheNewestFirst) {
    hits("20260531", 10);
    hits("20260601", 20);
    hits("20260602", 5);
    EXPECT_EQ(statistics(),
              "<h1>Home</h1>M June 2026;day 02 5 36;day 01 20 145;T 25;M May 2026;weekend 31 10 72;T 10;");
}

TEST_P(StatisticsTest, TheBusiestDayIsWidestAndAFifthOfItAFifth) {
    hits("20260601", 50);
    hits("20260602", 10);
    EXPECT_THAT(statistics(), ::testing::HasSubstr("day 02 10 29;day 01 50 145;"));
}

TEST_P(StatisticsTest, WidthsAreRounded) {
    // 72.5 goes to the even number, 36.25 down, 108.75 up.
    hits("20260601", 4);
    hits("20260602", 2);
    hits("20260603", 1);
    hits("20260604", 3);
    EXPECT_THAT(statistics(), ::testing::HasSubstr("04 3 109;day 03 1 36;day 02 2 72;day 01 4 145;"));
}

TEST_P(StatisticsTest, SaturdaysAndSundaysAreWeekends) {
    for (const char* day : {"20260612", "20260613", "20260614", "20260615"}) hits(day, 1);
    EXPECT_THAT(statistics(), ::testing::HasSubstr("day 15 1 145;weekend 14 1 145;weekend 13 1 145;day 12 "));
}

TEST_P(StatisticsTest, ThePageIsNamedByItsNumberOrNode) {
    hits("20260601", 1);
    EXPECT_NE(statistics(), "");
    EXPECT_EQ(statistics("", "", 1, " AA.EN "), statistics());
}

TEST_P(StatisticsTest, VisitorsAreCountedWithTypeZero) {
    hits("20260601", 20, 3);
    EXPECT_EQ(statistics("", "", 0), "<h1>Home</h1>M June 2026;day 01 3 145;T 3;");
    EXPECT_EQ(statistics("", "", -1), "<h1>Home</h1>M June 2026;day 01 20 145;T 20;");
}

TEST_P(StatisticsTest, BothEndsOfARangeBelongToIt) {
    for (const char* day : {"20260601", "20260602", "20260603", "20260604"}) hits(day, 1);
    EXPECT_EQ(statistics("20260602", "20260603"), "<h1>Home</h1>M June 2026;day 03 1 145;day 02 1 145;T 2;");
    EXPECT_THAT(statistics("20260604"), ::testing::HasSubstr("T 1;"));
    EXPECT_THAT(statistics("", "20260601"), ::testing::HasSubstr("T 1;"));
}

TEST_P(StatisticsTest, ADateThatIsNotWholeSetsNoLimit) {
    hits("20200101", 1);
    hits("20260601", 1);
    const std::string all = statistics();
    EXPECT_EQ(manager().statistics("1", "", "", "2026", "", "", "", 1), all);
    EXPECT_EQ(manager().statistics("1", "01", "06", "", "", "", "", 1), all);
    EXPECT_EQ(manager().statistics("1", "01", "", "2026", "", "", "", 1), all);
    EXPECT_EQ(manager().statistics("1", "", "", "", "31", "12", "", 1), all);
    EXPECT_EQ(manager().statistics("1", "", "", "", "", "", "2020", 1), all);
}

TEST_P(StatisticsTest, PartsOfADateAreJoinedAsTheyStand) {
    hits("20260601", 1);
    hits("20260602", 1);
    // "2026" "6" "1": a text behind all days of that year that begin with a smaller figure.
    EXPECT_EQ(manager().statistics("1", "1", "6", "2026", "", "", "", 1), "");
    EXPECT_EQ(manager().statistics("1", "' or 1=1 --", "6", "2026", "", "", "", 1), "");
}

TEST_P(StatisticsTest, EachMonthHasTheSumOfItsDaysInTheRange) {
    hits("20260530", 1);
    hits("20260531", 2);
    hits("20260601", 4);
    hits("20250601", 8);
    EXPECT_EQ(statistics("20260531"),
              "<h1>Home</h1>M June 2026;day 01 4 145;T 4;M May 2026;weekend 31 2 72;T 2;");
    EXPECT_THAT(statistics(), ::testing::HasSubstr("T 3;M June 2025;weekend 01 8 145;T 8;"));
}

TEST_P(StatisticsTest, DaysWithoutHitsAreLeftOut) {
    hits("20260601", 0);
    hits("20260602", 3);
    EXPECT_EQ(statistics(), "<h1>Home</h1>M June 2026;day 02 3 145;T 3;");
    EXPECT_EQ(statistics("", "20260601"), "<h1>Home</h1>");
}

TEST_P(StatisticsTest, AnUnknownPageOrOneWithoutHitsGivesNothing) {
    EXPECT_EQ(statistics(), "");
    hits("20260601", 1, 1, "aa.en.01");
    EXPECT_EQ(statistics("", "", 1, "aa.en.01"), "");
    for (const std::string& bad : badIdentifiers()) EXPECT_EQ(statistics("", "", 1, bad), "");
}

TEST_P(StatisticsTest, OnlyThePageItselfCounts) {
    page("aa.en.01").insert();
    hits("20260601", 5, 1, "aa.en.01");
    hits("20260601", 1);
    EXPECT_THAT(statistics(), ::testing::HasSubstr("T 1;"));
}

TEST_P(StatisticsTest, TitlesAndMonthsAreEncoded) {
    connection().execute("update TORVEX_PAGES_LIVE set title = '<b>'");
    word(2806, "J<une");
    hits("20260601", 1);
    EXPECT_EQ(statistics(), "<h1>&lt;b&gt;</h1>M J&lt;une 2026;day 01 1 145;T 1;");
}

TEST_P(StatisticsTest, ATemplateThatLacksABlockAnswersTheBrowser) {
    host.files.bytes.clear();
    hits("20260601", 1);
    EXPECT_THROW(statistics(), ResponseEnded);
    EXPECT_THAT(host.response.body(), ::testing::HasSubstr("not found !"));
}

TEST_P(StatisticsTest, ABrokenDatabaseIsAnError) {
    drop("TORVEX_LOGGING");
    EXPECT_TRUE(errorOf([&] { statistics(); }).starts_with(chain({"statistics !"})));
}

// ---- Months ----

TEST_P(StatisticsTest, MonthsAreNamedInTheInterfaceLanguage) {
    EXPECT_EQ(manager().getMonth(1), "January");
    EXPECT_EQ(manager().getMonth(12), "December");
    row("TORVEX_INTERFACE_LANGUAGES", {{"id", 9}, {"lang_id", "xx"}});
    connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab9 = 'Enero' where lang_label = 2801");
    host.session.set("torvex_current_interface", "xx");
    EXPECT_EQ(manager().getMonth(1), "Enero");
    EXPECT_EQ(manager().getMonth(2), "February");
}

TEST_P(StatisticsTest, AMonthThatThereIsNotHasNoName) {
    EXPECT_EQ(manager().getMonth(0), "");
    EXPECT_EQ(manager().getMonth(13), "");
}

}  // namespace
}  // namespace torvex::test
