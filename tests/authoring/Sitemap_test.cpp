#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SitemapTest : public ManagerTest {
  protected:
    static constexpr int bert = 8;

    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        login(bert, "bert", "Bert Broker", "session-of-bert");
        levels(9);
    }
    void levels(const Value& setting) { host.application.set("torvex_sitemap_loadLevel", setting); }
    std::string map() { return manager().getSitemap("aa", "en"); }
    std::string below(const std::string& node) { return manager().getSitemap("aa", "en", node, 1); }
    std::string currentSite(int loginId) {
        return cell("select currentSite from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }
    void lock(int loginId, const std::string& website) {
        connection().execute("update TORVEX_LOGINS set siteLock = ? where loginId = ?", {website, loginId});
    }
    /// The records without what ends them.
    static std::vector<std::string> records(const std::string& map) {
        std::vector<std::string> found;
        for (std::size_t from = 0; from < map.size();) {
            const std::size_t end = map.find("###", from);
            found.push_back(map.substr(from, end - from));
            from = end == std::string::npos ? map.size() : end + 3;
        }
        return found;
    }
    static std::vector<std::string> fields(const std::string& record) {
        std::vector<std::string> found{""};
        for (const char c : record) {
            if (c == '#') {
                found.emplace_back();
            } else {
                found.back() += c;
            }
        }
        return found;
    }
    /// Field `index`, from 1, of each record.
    static std::vector<std::string> column(const std::string& map, std::size_t index) {
        std::vector<std::string> found;
        for (const auto& record : records(map)) found.push_back(fields(record).at(index - 1));
        return found;
    }
    static std::vector<std::string> nodes(const std::string& map) { return column(map, 2); }
    /// A page as a record tells it: title, statuses, held, and the live part.
    std::vector<std::string> only() { return fields(records(map()).at(0)); }
};
INSTANTIATE_TEST_SUITE_P(Engines, SitemapTest, bothEngines(), engineName);

// ---- Records ----

TEST_P(SitemapTest, ATreeIsWrittenRecordByRecord) {
    page("aa.en").id(1).title("Home").set("editStatus", "P").insert();
    page("aa.en.01").id(2).type("F").title("News").set("editStatus", "M").insertInDesignOnly();
    page("aa.en.01").id(2).type("F").title("Old news").insertInLiveOnly();
    page("aa.en.01.01").id(3).title("Fresh").set("editStatus", "N").insertInDesignOnly();
    EXPECT_EQ(map(),
              "1#aa.en#0#Home#1PP000#0#[*idem*]#1P001###"
              "2#aa.en.01#1#News#1FM000#0#Old news#0F003###"
              "3#aa.en.01.01#2#Fresh#0PN000#0#[*null*]# ###");
}

TEST_P(SitemapTest, AnEmptyTreeIsAnEmptyText) {
    EXPECT_EQ(map(), "");
    page("aa.de").insert();
    page("bb.en").insert();
    EXPECT_EQ(map(), "");
}

TEST_P(SitemapTest, SiblingsStandInTheirOrderEachWithItsChildren) {
    page("aa.en").insert();
    page("aa.en.01").order(3).insert();
    page("aa.en.02").order(1).insert();
    page("aa.en.03").order(2).insert();
    page("aa.en.02.01").order(2).insert();
    page("aa.en.02.02").order(1).insert();
    EXPECT_THAT(nodes(map()),
                ElementsAre("aa.en", "aa.en.02", "aa.en.02.02", "aa.en.02.01", "aa.en.03", "aa.en.01"));
}

TEST_P(SitemapTest, TitlesAreEncoded) {
    page("aa.en").title("A #1 <b> & \"c\"").insert();
    EXPECT_EQ(only()[3], "A -@-1 &lt;b&gt; &amp; &quot;c&quot;");
    connection().execute("update TORVEX_PAGES_LIVE set title = '#<'");
    EXPECT_EQ(only()[6], "-@-&lt;");
}

TEST_P(SitemapTest, AnEmptyTitleShowsAWord) {
    word(2597, "no <title>");
    page("aa.en").title("").insert();
    EXPECT_EQ(only()[3], "[no &lt;title&gt;]");
    EXPECT_EQ(only()[6], "[*idem*]");
    connection().execute("update TORVEX_PAGES_DESIGN set title = 'Home'");
    EXPECT_EQ(only()[6], "[no &lt;title&gt;]");
}

TEST_P(SitemapTest, CaseMakesNoOtherTitle) {
    page("aa.en").title("HOME").insert();
    connection().execute("update TORVEX_PAGES_LIVE set title = 'home'");
    EXPECT_EQ(only()[6], "[*idem*]");
}

TEST_P(SitemapTest, StatusesStandBehindTheType) {
    page("aa.en").type("A").set("editStatus", "M").set("lockStatus", 1).set("lockedBy", bert).insert();
    EXPECT_EQ(only()[4], "0AM100");
    connection().execute(
        "update TORVEX_PAGES_DESIGN set lockStatus = 0, deleteStatus = 1, approveStatus = 1");
    EXPECT_EQ(only()[4], "0AM011");
    EXPECT_EQ(only()[7], "0A111");
}

TEST_P(SitemapTest, APageThatAnotherHoldsIsMarked) {
    page("aa.en").set("lockStatus", 1).set("lockedBy", bert).insert();
    EXPECT_EQ(only()[5], "1");
    connection().execute("update TORVEX_PAGES_DESIGN set lockedBy = 7");
    EXPECT_EQ(only()[5], "0");
    connection().execute("update TORVEX_PAGES_DESIGN set lockedBy = 8, lockStatus = 0");
    EXPECT_EQ(only()[5], "0");
}

TEST_P(SitemapTest, TheLiveStateIsTheColumnOnlyWithinTheDates) {
    page("aa.en").insert();
    EXPECT_EQ(only()[7], "0P001");
    connection().execute("update TORVEX_PAGES_LIVE set online = 0");
    EXPECT_EQ(only()[7], "0P000");
    connection().execute("update TORVEX_PAGES_LIVE set onlineFrom = '20260616', onlineTo = ''");
    EXPECT_EQ(only()[7], "0P002");
    connection().execute("update TORVEX_PAGES_LIVE set onlineFrom = null, onlineTo = '20260614'");
    EXPECT_EQ(only()[7], "0P002");
    connection().execute(
        "update TORVEX_PAGES_LIVE set onlineFrom = '20260615', onlineTo = '20260615', online = 1");
    EXPECT_EQ(only()[7], "0P001");
}

TEST_P(SitemapTest, FoldersAndSystemPagesAreNeverOnline) {
    page("aa.en").type("F").dates("20300101", "").insert();
    page("aa.en.99").insert();
    EXPECT_THAT(column(map(), 8), ElementsAre("1F003", "0P003"));
}

TEST_P(SitemapTest, ChildrenAreCountedInEachTreeByItself) {
    page("aa.en").insert();
    page("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(only()[4].substr(0, 1), "1");
    EXPECT_EQ(only()[7].substr(0, 1), "0");
}

// ---- Which pages ----

TEST_P(SitemapTest, OnlyNodesAboveTheLevelAreWalkedFurther) {
    page("aa.en").insert();
    page("aa.en.01").insert();
    page("aa.en.01.01").insert();
    page("aa.en.01.01.01").insert();
    levels(2);
    EXPECT_THAT(nodes(map()), ElementsAre("aa.en", "aa.en.01", "aa.en.01.01"));
    levels("1");
    EXPECT_THAT(nodes(map()), ElementsAre("aa.en", "aa.en.01"));
    for (const Value& none : {Value(0), Value(-1), Value()}) {
        levels(none);
        EXPECT_THAT(nodes(map()), ElementsAre("aa.en"));
    }
}

TEST_P(SitemapTest, ALoginsOwnLevelGoesBeforeThatOfAll) {
    page("aa.en").insert();
    page("aa.en.01").insert();
    page("aa.en.01.01").insert();
    host.session.set("torvex_sitemap_loadLevel", 1);
    EXPECT_THAT(nodes(map()), ElementsAre("aa.en", "aa.en.01"));
    host.session.set("torvex_sitemap_loadLevel", 0);
    EXPECT_THAT(nodes(map()), ElementsAre("aa.en"));
}

TEST_P(SitemapTest, AFlagAsksForOneLevelBelowANode) {
    page("aa.en").insert();
    page("aa.en.01").order(2).insert();
    page("aa.en.02").order(1).insert();
    page("aa.en.01.01").insert();
    EXPECT_THAT(nodes(below(" AA.EN ")), ElementsAre("aa.en.02", "aa.en.01"));
    EXPECT_THAT(nodes(below("aa.en.01")), ElementsAre("aa.en.01.01"));
    EXPECT_EQ(below("aa.en.02"), "");
    EXPECT_THAT(nodes(below("")), ElementsAre("aa.en"));
    // Without a flag the node counts for nothing.
    EXPECT_EQ(manager().getSitemap("aa", "en", "aa.en.01", 0), map());
}

TEST_P(SitemapTest, SiteAndLanguageIgnoreCaseAndBlanks) {
    page("aa.en").insert();
    EXPECT_EQ(manager().getSitemap(" AA", "En "), map());
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().getSitemap(bad, "en"), "");
        EXPECT_EQ(below(bad.empty() ? "x" : "x" + bad), "");
    }
}

// ---- The site ----

TEST_P(SitemapTest, TheLoginEntersTheSite) {
    map();
    EXPECT_EQ(currentSite(anna), "aa.en");
    EXPECT_EQ(currentSite(bert), "");
}

TEST_P(SitemapTest, ALockedSiteIsNotEntered) {
    page("aa.en").insert();
    manager().getSitemap("bb", "en");
    lock(bert, "aa.en");
    EXPECT_EQ(map(), "-1");
    EXPECT_EQ(below("aa.en"), "-1");
    EXPECT_EQ(currentSite(anna), "bb.en");
    lock(bert, "aa.de");
    EXPECT_THAT(nodes(map()), ElementsAre("aa.en"));
}

TEST_P(SitemapTest, TheLockOfALoginThatIsGoneDoesNotCount) {
    login(9, "eva", "Eva");
    lock(9, "aa.en");
    EXPECT_EQ(map(), "");
}

TEST_P(SitemapTest, NobodyEntersNoSite) {
    page("aa.en").insert();
    actAsNobody();
    EXPECT_THAT(nodes(map()), ElementsAre("aa.en"));
    EXPECT_EQ(currentSite(anna), "");
}

// ---- Failures ----

TEST_P(SitemapTest, ABrokenDatabaseIsAnErrorOfBothLevels) {
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(errorOf([&] { map(); }).starts_with(chain({"getSitemap !", "getSitemap1  !"})));
    EXPECT_TRUE(errorOf([&] { below("aa.en"); }).starts_with(chain({"getSitemap !", "getSitemap1  !"})));
}

}  // namespace
}  // namespace torvex::test
