#include "accounts/DesignRights.h"

#include <gtest/gtest.h>

#include "accounts/Actor.h"
#include "accounts/AdminEntries.h"
#include "support/RightsTest.h"

namespace torvex {
namespace {

class DesignRightsTest : public test::RightsTest {
  protected:
    bool mayRead(const char* site, const char* lang) {
        return mayReadDesign(connection(), actorOf(host.context()), site, lang);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DesignRightsTest, test::bothEngines(), test::engineName);

TEST_P(DesignRightsTest, EachOfTheFiveEditRightsOpensItsTree) {
    for (const auto* task : {"onOff", "move", "publish", "approve", "edit"}) {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        connection().execute("delete from TORVEX_ROLES_LOGINS");
        hold(1, anna);
        editRights(1, "aa", "en", {task}, "aa.en.07");
        EXPECT_TRUE(mayRead("aa", "en")) << task;
        EXPECT_FALSE(mayRead("aa", "de")) << task;
        EXPECT_FALSE(mayRead("bb", "en")) << task;
    }
}

TEST_P(DesignRightsTest, ARowThatGivesNothingOpensNothing) {
    role(1);
    editRights(1, "aa", "en", {});
    advancedRight(1, adminEntry::templates, "aa", "en", false, false);
    EXPECT_FALSE(mayRead("aa", "en"));
}

TEST_P(DesignRightsTest, AnEntryOffersOnlyTheAccessThatItHas) {
    emptyMenu();
    entry(900, 1, "z1", true, false);
    role(1);
    advancedRight(1, 900, "aa", "", false, true);
    EXPECT_FALSE(mayRead("aa", "en"));
    advancedRight(1, 900, "aa", "", true, false);
    EXPECT_TRUE(mayRead("aa", "en"));
    EXPECT_TRUE(mayRead("aa", "de"));
    EXPECT_FALSE(mayRead("bb", "en"));
}

TEST_P(DesignRightsTest, AnEntryOfTheWholeInstallationOpensNothing) {
    emptyMenu();
    entry(900, 0, "z1");
    role(1);
    advancedRight(1, 900, "", "", true, true);
    EXPECT_FALSE(mayRead("aa", "en"));
}

TEST_P(DesignRightsTest, NowhereIsNobodysTree) {
    emptyMenu();
    entry(900, 1, "z1");
    role(1);
    advancedRight(1, 900, "", "", true, true);
    EXPECT_TRUE(mayRead("bb", "de"));
    EXPECT_FALSE(mayRead("", ""));
    EXPECT_FALSE(mayRead("", "en"));
}

TEST_P(DesignRightsTest, EachDesignIsReadByWhoReadsAllTreesThatThereAre) {
    const auto readsEach = [&] { return mayReadEachDesign(connection(), actorOf(host.context())); };
    page("aa.en").insert();
    page("bb.de").insert();
    EXPECT_FALSE(readsEach());
    role(1);
    editRights(1, "aa", "en", {"edit"});
    EXPECT_FALSE(readsEach());
    editRights(1, "bb", "de", {"publish"});
    EXPECT_TRUE(readsEach());
}

TEST_P(DesignRightsTest, TheAdministratorReadsAll) {
    actAsSa();
    EXPECT_TRUE(mayRead("aa", "en"));
    EXPECT_TRUE(mayReadEachDesign(connection(), actorOf(host.context())));
}

}  // namespace
}  // namespace torvex
