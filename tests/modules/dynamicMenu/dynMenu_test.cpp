// The menus' own question about a page, their publishing and their cleaning up.

#include "support/FailingDatabase.h"
#include "support/MenuTest.h"

namespace torvex::test {
namespace {

// The host's clock stands at 2026-06-15.
constexpr const char* today = "20260615";
constexpr const char* yesterday = "20260614";
constexpr const char* tomorrow = "20260616";

class DynMenuTest : public MenuTest {
  protected:
    /// The rows of one twin, as "page:least/most.deleted.modified".
    std::vector<std::string> menusIn(const std::string& twin) {
        std::vector<std::string> found;
        auto rows =
            connection().query("select pageId, minLevels, maxLevels, deleted, modified from TORVEX_DYNMENU_" +
                               twin + " order by pageId, minLevels");
        while (rows.next()) {
            found.push_back(rows.text("pageId") + ":" + rows.text("minLevels") + "/" +
                            rows.text("maxLevels") + "." + rows.text("deleted") + "." +
                            rows.text("modified"));
        }
        return found;
    }

    void connectTransactions() {
        failing_ = std::make_unique<FailingDatabase>(database());
        host.database.target = failing_.get();
    }
    FailingDatabase& failing() { return *failing_; }
    void TearDown() override {
        host.database.target = nullptr;
        failing_.reset();
        MenuTest::TearDown();
    }

    /// A menu of each kind for publishing, one of another language, and the templates that they use.
    void menusOnTheirWay() {
        systemTemplate(1, plainLayout());
        menuAt(10, {.minLevels = 2, .maxLevels = 4, .modified = 1}, true, false);
        menuAt(10, {.minLevels = 1}, false, true);
        menuAt(11, {.deleted = 1});
        menuAt(12, {.display = 1, .extranet = 1}, true, false);
        menuAt(13, {}, false, true);
        page("aa.de").id(90).insert();
        menuAt(90, {.modified = 1}, true, false);
        connection().execute("update TORVEX_DYNMENU_DESIGN set lang = 'de' where pageId = 90");
    }

  private:
    std::unique_ptr<FailingDatabase> failing_;
};
INSTANTIATE_TEST_SUITE_P(Engines, DynMenuTest, bothEngines(), engineName);

TEST_P(DynMenuTest, APageShowsWhenItIsOnlineWithinItsDates) {
    EXPECT_TRUE(loaded().isPage("12"));
    EXPECT_TRUE(loaded().isPage(" AA.EN.02 "));
    changeLive(12, "onlineFrom", today);
    changeLive(12, "onlineTo", today);
    EXPECT_TRUE(loaded().isPage("12"));
    changeLive(12, "onlineFrom", tomorrow);
    EXPECT_FALSE(loaded().isPage("12"));
    changeLive(12, "onlineFrom", "");
    changeLive(12, "onlineTo", yesterday);
    EXPECT_FALSE(loaded().isPage("12"));
    connection().execute("update TORVEX_PAGES_LIVE set onlineTo = null where pageId = 12");
    EXPECT_TRUE(loaded().isPage("12"));
    changeLive(12, "online", "0");
    EXPECT_FALSE(loaded().isPage("12"));
}

TEST_P(DynMenuTest, TheDesignIsAskedInModeDAndKnowsNoSwitch) {
    inMenu(14, "aa.en.04").insertInDesignOnly();
    EXPECT_FALSE(loaded().isPage("14"));
    EXPECT_FALSE(loaded().isPage("14", "x"));
    EXPECT_TRUE(loaded().isPage("14", "D"));
    EXPECT_TRUE(loaded().isPage("14", "d"));
    change(14, "onlineFrom", tomorrow);
    EXPECT_FALSE(loaded().isPage("14", "D"));
    changeLive(12, "online", "0");
    EXPECT_TRUE(loaded().isPage("12", "D"));
}

TEST_P(DynMenuTest, AFolderShowsWhenItsFirstChildDoes) {
    change(11, "type", "F");
    for (const auto* mode : {"L", "D"}) {
        EXPECT_TRUE(loaded().isPage("11", mode));
        change(21, "onlineTo", yesterday);
        EXPECT_FALSE(loaded().isPage("11", mode));
        change(21, "onlineTo", tomorrow);
        change(13, "type", "F");
        EXPECT_FALSE(loaded().isPage("13", mode));
    }
    change(21, "type", "F");
    changeLive(41, "online", "0");
    EXPECT_FALSE(loaded().isPage("11"));
    EXPECT_TRUE(loaded().isPage("11", "D"));
}

TEST_P(DynMenuTest, WhatIsNoPageDoesNotShow) {
    for (const auto& ident : badIdentifiers()) {
        EXPECT_FALSE(loaded().isPage(ident)) << ident;
        EXPECT_FALSE(loaded().isPage(ident, "D")) << ident;
    }
}

TEST_P(DynMenuTest, AFailureOfIsPageHasItsLine) {
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(errorOf([&] { loaded().isPage("aa.en.02"); }).starts_with(chain({"isPage !"})));
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(errorOf([&] { loaded().isPage("aa.en.02", "D"); }).starts_with(chain({"isPage !"})));
}

TEST_P(DynMenuTest, PublishingMakesTheLiveMenusOfALanguageWhatTheirDesignSays) {
    connectTransactions();
    menusOnTheirWay();
    loaded().publish(" aa", "EN ");
    EXPECT_EQ(menusIn("DESIGN"), (Items{"10:2/4.0.0", "12:1/3.0.0", "90:1/3.0.1"}));
    EXPECT_EQ(menusIn("LIVE"), (Items{"10:2/4.0.0", "12:1/3.0.0"}));
    EXPECT_EQ(cell("select display from TORVEX_DYNMENU_LIVE where pageId = 12"), "1");
    EXPECT_EQ(cell("select extranet from TORVEX_DYNMENU_LIVE where pageId = 12"), "1");
    EXPECT_EQ(cell("select templateId from TORVEX_DYNMENU_LIVE where pageId = 12"), "1");
    EXPECT_EQ(cell("select site from TORVEX_DYNMENU_LIVE where pageId = 12"), "aa");
}

TEST_P(DynMenuTest, PublishingCleansUpBehindItself) {
    connectTransactions();
    menusOnTheirWay();
    menuAt(777, {}, true, true);
    loaded().publish("aa", "de");
    EXPECT_EQ(menusIn("LIVE"), (Items{"10:1/3.0.0", "11:1/3.1.0", "13:1/3.0.0", "90:1/3.0.0"}));
}

TEST_P(DynMenuTest, APublishingThatFailsRaisesAndChangesNothing) {
    connectTransactions();
    menusOnTheirWay();
    const auto design = menusIn("DESIGN");
    const auto live = menusIn("LIVE");
    constexpr int publishingSteps = 7;  // opening, begin, four statements, commit
    for (int step = 1; step <= publishingSteps; ++step) {
        failing().reset(step);
        EXPECT_TRUE(errorOf([&] {
                        loaded().publish("aa", "en");
                    }).starts_with(chain({"Publish (DynMenu module) !"}) + "broken at step"))
            << step;
        EXPECT_EQ(menusIn("DESIGN"), design) << step;
        EXPECT_EQ(menusIn("LIVE"), live) << step;
    }
}

TEST_P(DynMenuTest, ACleaningUpThatFailsRaisesWhatWasPublishedStays) {
    connectTransactions();
    menusOnTheirWay();
    menuAt(777, {}, true, true);
    failing().reset(10);
    EXPECT_TRUE(errorOf([&] {
                    loaded().publish("aa", "en");
                }).starts_with(chain({"Publish (DynMenu module) !", "CleanUpDB (DynMenu module) !"})));
    EXPECT_EQ(menusIn("LIVE"), (Items{"10:2/4.0.0", "12:1/3.0.0", "777:1/3.0.0"}));
}

TEST_P(DynMenuTest, MenusOfPagesAndTemplatesThatAreGoneAreRemoved) {
    connectTransactions();
    systemTemplate(1, plainLayout());
    menuAt(10, {});
    menuAt(11, {.templateId = 5});
    menuAt(777, {});
    inMenu(14, "aa.en.04").insertInDesignOnly();
    menuAt(14, {});
    loaded().CleanUpDB();
    EXPECT_EQ(menusIn("DESIGN"), (Items{"10:1/3.0.0", "14:1/3.0.0"}));
    EXPECT_EQ(menusIn("LIVE"), (Items{"10:1/3.0.0"}));
}

TEST_P(DynMenuTest, ACleaningUpThatFailsChangesNothing) {
    connectTransactions();
    menuAt(777, {});
    menuAt(10, {.templateId = 5});
    const auto design = menusIn("DESIGN");
    const auto live = menusIn("LIVE");
    for (int step = 1; step <= 7; ++step) {
        failing().reset(step);
        EXPECT_TRUE(errorOf([&] {
                        loaded().CleanUpDB();
                    }).starts_with(chain({"CleanUpDB (DynMenu module) !"}) + "broken at step"))
            << step;
        EXPECT_EQ(menusIn("DESIGN"), design) << step;
        EXPECT_EQ(menusIn("LIVE"), live) << step;
    }
}

}  // namespace
}  // namespace torvex::test
