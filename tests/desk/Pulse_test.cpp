#include <gmock/gmock.h>

#include "desk/Presence.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class PulseTest : public DeskTest {
  protected:
    static constexpr int ben = 8;

    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        login(ben, "ben", "Ben Builder", "session-b");
        for (const int who : {anna, ben}) row("TORVEX_ROLES_LOGINS", {{"roleId", 3}, {"loginId", who}});
        row("TORVEX_EDIT_RIGHTS", {{"roleId", 3}, {"site", "aa"}, {"lang", "en"}, {"edit", 1}});
        page("aa.en.01").id(11).title("Walks").insertInDesignOnly();
        page("bb.en.01").id(21).insertInDesignOnly();
    }
    torvex::desk as(int loginId) {
        actAs(loginId, loginId == ben ? "ben" : "anna", loginId == ben ? "Ben Builder" : "Anna Author");
        torvex::desk made(host.context(), presence);
        made.connect(connection());
        return made;
    }
    std::vector<std::string> pulse(int loginId, PageId pageId, const std::string& doing = "looking",
                                   const std::string& site = "aa") {
        return linesOf(as(loginId).pulse(site, "en", pageId, doing));
    }
    void hold(PageId pageId, int loginId) {
        connection().execute(
            "update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = ?, lockingDate = ? where pageId = ?",
            {loginId, DateTime{2026, 6, 15, 11, 30, 0}, pageId});
    }
    std::string website(int loginId) {
        return cell("select currentSite from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }

    Presence::TimePoint now = Presence::TimePoint(1000h);
    std::shared_ptr<Presence> presence = std::make_shared<Presence>([this] { return now; });
};
INSTANTIATE_TEST_SUITE_P(Engines, PulseTest, bothEngines(), engineName);

TEST_P(PulseTest, AuthorsOfASiteSeeEachOther) {
    EXPECT_THAT(pulse(anna, 11, "typing"), IsEmpty());
    EXPECT_THAT(pulse(ben, 0), ElementsAre("here|7|Anna Author|11|typing|2026-06-15T12:00:00||0"));
    EXPECT_THAT(pulse(anna, 11), ElementsAre("here|8|Ben Builder|0|looking|2026-06-15T12:00:00||0"));
}

TEST_P(PulseTest, APulseWritesNothingWhileOneStays) {
    pulse(anna, 11);
    EXPECT_EQ(website(anna), "aa.en");
    const auto changes = [&] {
        return connection().engine() == db::Engine::Sqlite
                   ? cell("select total_changes()")
                   : cell("select xmin::text from TORVEX_LOGINS where loginId = 7");
    };
    const std::string before = changes();
    for (int i = 0; i < 20; ++i) pulse(anna, 11, i % 2 == 0 ? "typing" : "looking");
    EXPECT_EQ(changes(), before);
}

TEST_P(PulseTest, APageCountsWhereItIs) {
    pulse(anna, 21, "typing");
    EXPECT_THAT(pulse(ben, 0), IsEmpty());
    EXPECT_FALSE(presence->latest(anna, "bb", "en").has_value());
    EXPECT_EQ(website(anna), "");
}

TEST_P(PulseTest, NobodyIsSeenWhereOneDoesNotWork) {
    connection().execute(
        "insert into TORVEX_EDIT_RIGHTS (roleId, site, lang, edit) values (4, 'bb', 'en', 1)");
    connection().execute("update TORVEX_ROLES_LOGINS set roleId = 4 where loginId = 8");
    pulse(ben, 21, "typing", "bb");
    EXPECT_THAT(pulse(anna, 0, "looking", "bb"), IsEmpty());
    EXPECT_THAT(pulse(anna, 21, "looking", "bb"), IsEmpty());
    EXPECT_EQ(website(ben), "bb.en");
}

TEST_P(PulseTest, APageThatIsGoneIsNone) {
    pulse(anna, 99);
    EXPECT_THAT(pulse(ben, 0), ElementsAre("here|7|Anna Author|0|looking|2026-06-15T12:00:00||0"));
}

TEST_P(PulseTest, AWordThatIsNoneIsLooking) {
    pulse(anna, 11, "<script>");
    EXPECT_THAT(pulse(ben, 0), ElementsAre("here|7|Anna Author|11|looking|2026-06-15T12:00:00||0"));
}

TEST_P(PulseTest, WhoHadLeftIsBackUnlessAway) {
    pulse(anna, 11, "away");
    EXPECT_EQ(website(anna), "");
    pulse(anna, 11);
    EXPECT_EQ(website(anna), "aa.en");
    as(anna).leave();
    EXPECT_EQ(website(anna), "");
    EXPECT_FALSE(presence->isHere(anna));
}

TEST_P(PulseTest, WhoWorksInAnotherWebsiteStaysThere) {
    connection().execute("update TORVEX_LOGINS set currentSite = 'aa.de' where loginId = 7");
    pulse(anna, 11);
    EXPECT_EQ(website(anna), "aa.de");
}

TEST_P(PulseTest, NobodyComesBackIntoAWebsiteWherePagesAreMoved) {
    connection().execute("update TORVEX_LOGINS set siteLock = 'aa.en' where loginId = 8");
    pulse(anna, 11);
    EXPECT_EQ(website(anna), "");
}

TEST_P(PulseTest, NobodyLoggedInIsNowhere) {
    actAsNobody();
    torvex::desk nobody(host.context(), presence);
    nobody.connect(connection());
    EXPECT_TRUE(nobody.pulse("aa", "en", 11, "typing").isEmpty());
    EXPECT_EQ(nobody.ask("11"), "-10");
    nobody.leave();
    EXPECT_THAT(pulse(ben, 0), IsEmpty());
}

// ---- Asking ----

TEST_P(PulseTest, WhoHoldsAPageIsAskedForIt) {
    hold(11, anna);
    pulse(anna, 11);
    EXPECT_EQ(as(ben).ask("aa.en.01"), "0");
    EXPECT_EQ(as(ben).ask("11"), "0");
    EXPECT_THAT(pulse(anna, 0), ElementsAre("asked|8|Ben Builder|11||2026-06-15T12:00:00|Walks|0"));
    EXPECT_THAT(pulse(anna, 0), ElementsAre("asked|8|Ben Builder|11||2026-06-15T12:00:00|Walks|0"));
    connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 0 where pageId = 11");
    EXPECT_THAT(pulse(anna, 0), IsEmpty());
    hold(11, anna);
    EXPECT_THAT(pulse(anna, 0), IsEmpty());
}

TEST_P(PulseTest, AskingIsRefusedWhereThereIsNobodyToAsk) {
    EXPECT_EQ(as(ben).ask("99"), "-3");
    EXPECT_EQ(as(ben).ask(""), "-3");
    EXPECT_EQ(as(ben).ask("11"), "-1");
    hold(11, ben);
    EXPECT_EQ(as(ben).ask("11"), "-1");
    hold(11, anna);
    EXPECT_EQ(as(ben).ask("11"), "-2");
    pulse(anna, 11);
    now += 76s;
    EXPECT_EQ(as(ben).ask("11"), "-2");
}

TEST_P(PulseTest, WhoHasLostAPageToAnotherIsTold) {
    hold(11, anna);
    pulse(anna, 11, "typing");
    hold(11, ben);
    EXPECT_THAT(pulse(anna, 11), ElementsAre("takenOver|8|Ben Builder|11||2026-06-15T11:30:00|Walks|0"));
    EXPECT_THAT(pulse(ben, 0), ElementsAre("here|7|Anna Author|11|looking|2026-06-15T12:00:00||0"));
}

TEST_P(PulseTest, WhoNeverHadAPageHasNotLostIt) {
    hold(11, ben);
    EXPECT_THAT(pulse(anna, 11), IsEmpty());
    hold(11, anna);
    pulse(anna, 11);
    connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 0 where pageId = 11");
    EXPECT_THAT(pulse(anna, 11), IsEmpty());
}

TEST_P(PulseTest, WhatWaitsForTheAuthorIsCounted) {
    connection().execute("update TORVEX_EDIT_RIGHTS set approve = 1, publish = 1, scope = 'aa.en.01'");
    for (const int id : {31, 32, 33}) {
        page("aa.en.01.0" + std::to_string(id - 30)).id(id).insertInDesignOnly();
        connection().execute("update TORVEX_PAGES_DESIGN set editStatus = 'M' where pageId = ?", {id});
    }
    connection().execute("update TORVEX_PAGES_DESIGN set approveStatus = 1 where pageId = 33");
    page("aa.en.02").id(34).insertInDesignOnly();
    connection().execute("update TORVEX_PAGES_DESIGN set editStatus = 'M' where pageId = 34");
    EXPECT_THAT(pulse(anna, 0), ElementsAre("count|0||0||-|approve|2", "count|0||0||-|publish|1"));
    EXPECT_THAT(pulse(anna, 0, "looking", "bb"), IsEmpty());
}

TEST_P(PulseTest, APageInTwoBranchesOfTheAuthorIsCountedOnce) {
    connection().execute(
        "update TORVEX_EDIT_RIGHTS set publish = 1, scope = 'aa.en.02.01, aa.en.01, aa.en.01.01, bb.en.01'");
    for (const auto* node : {"aa.en.01.01", "aa.en.01.01.01", "aa.en.02", "aa.en.02.01"}) {
        page(node).insertInDesignOnly();
    }
    connection().execute("update TORVEX_PAGES_DESIGN set approveStatus = 1");
    EXPECT_THAT(pulse(anna, 0), ElementsAre("count|0||0||-|publish|4"));
    connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 1 where nodeId = 'aa.en.01'");
    EXPECT_THAT(pulse(anna, 0), ElementsAre("count|0||0||-|publish|3"));
}

TEST_P(PulseTest, FiveHundredPagesAreCountedAtMost) {
    connection().execute("update TORVEX_EDIT_RIGHTS set approve = 1, scope = 'aa.en.02,aa.en.03'");
    db::Transaction many(connection());
    for (int i = 1; i <= 340; ++i) {
        page("aa.en.02." + std::to_string(1000 + i)).set("deleteStatus", 1).insertInDesignOnly();
        page("aa.en.03." + std::to_string(1000 + i)).set("editStatus", "M").insertInDesignOnly();
    }
    many.commit();
    EXPECT_THAT(pulse(anna, 0), ElementsAre("count|0||0||-|approve|500"));
}

TEST_P(PulseTest, WhatTheAdministratorMayDoIsCountedInTheWholeTree) {
    page("aa.en.02").set("approveStatus", 1).insertInDesignOnly();
    page("bb.en.02").set("approveStatus", 1).insertInDesignOnly();
    actAsSa();
    torvex::desk made(host.context(), presence);
    made.connect(connection());
    EXPECT_THAT(linesOf(made.pulse("AA", "EN", 0, "looking")), ElementsAre("count|0||0||-|publish|1"));
}

TEST_P(PulseTest, FailuresNameTheOperation) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT([&] { pulse(anna, 11); }, testing::ThrowsMessage<Error>(testing::HasSubstr("pulse !")));
    EXPECT_THAT([&] { as(anna).ask("11"); }, testing::ThrowsMessage<Error>(testing::HasSubstr("ask !")));
    drop("TORVEX_LOGINS");
    EXPECT_THAT([&] { as(anna).leave(); }, testing::ThrowsMessage<Error>(testing::HasSubstr("leave !")));
}

}  // namespace
}  // namespace torvex::test
