#include <gmock/gmock.h>
#include <stdexcept>
#include <thread>

#include "accounts/AdminEntries.h"
#include "platform/text/Text.h"
#include "support/InterruptedConnection.h"
#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using ::testing::StartsWith;

/// An item word, and the record that it stands for with the id given.
struct ItemCase {
    std::string word;
    std::string table;
    Columns key;
    std::string itemId;
    std::string where;
};

std::vector<ItemCase> itemCases() {
    return {
        {"application", "TORVEX_APPLICATIONS", {{"app_id", 41}}, "41", "app_id = 41"},
        {"baseTemplate", "TORVEX_BASETEMPLATES", {{"btpl_id", 42}}, "42", "btpl_id = 42"},
        {"contentTemplate", "TORVEX_TEMPLATES", {{"tpl_id", 43}}, "43", "tpl_id = 43"},
        {"group", "TORVEX_USERGROUPS", {{"groupId", 44}}, "44", "groupId = 44"},
        {"htmlFeed", "TORVEX_FEEDS_HTML", {{"feedId", 45}}, "45", "feedId = 45"},
        {"interface", "TORVEX_INTERFACE_LANGUAGES", {{"id", 46}, {"lang_id", "fr"}}, "fr", "lang_id = 'fr'"},
        {"language", "TORVEX_LANGUAGES", {{"lang", "de"}}, "de", "lang = 'de'"},
        {"login", "TORVEX_LOGINS", {{"loginId", 48}}, "48", "loginId = 48"},
        {"metadata", "TORVEX_METADATA", {{"metaData_id", 49}}, "49", "metaData_id = 49"},
        {"role", "TORVEX_ROLES", {{"roleId", 50}}, "50", "roleId = 50"},
        {"server", "TORVEX_SERVERS", {{"serverId", 51}}, "51", "serverId = 51"},
        {"site", "TORVEX_SITES", {{"site", "ab"}}, "ab", "site = 'ab'"},
        {"stylesheet", "TORVEX_STYLESHEETS", {{"ss_id", 53}}, "53", "ss_id = 53"},
        {"user", "TORVEX_USERS", {{"userId", 54}}, "54", "userId = 54"},
        {"xmlFeed", "TORVEX_FEEDS_XML", {{"feedId", 55}}, "55", "feedId = 55"},
    };
}

class ItemLocking : public ManagerTest {
  protected:
    static constexpr const char* mySession = "test-session";
    static constexpr int bert = 8;

    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        login(bert, "bert", "Bert Broker", "session-of-bert");
        for (const ItemCase& item : itemCases()) row(item.table, item.key);
    }

    std::string lockOf(const ItemCase& item) {
        return cell("select lock from " + item.table + " where " + item.where);
    }
    std::string lockOf(const std::string& word) { return lockOf(caseOf(word)); }
    void setLock(const ItemCase& item, const std::string& holder) {
        connection().execute("update " + item.table + " set lock = ? where " + item.where, {holder});
    }
    static ItemCase caseOf(const std::string& word) {
        for (const ItemCase& item : itemCases()) {
            if (item.word == word) return item;
        }
        throw std::logic_error("no such case");
    }
    /// How many records of any kind are locked.
    int lockedRecords() {
        int locked = 0;
        for (const ItemCase& item : itemCases()) {
            locked +=
                std::stoi(cell("select count(*) from " + item.table + " where coalesce(lock, '') <> ''"));
        }
        return locked +
               std::stoi(cell("select count(*) from TORVEX_SITES_LANGUAGES where coalesce(lock, '') <> ''"));
    }
    std::string configLock() { return host.application.text("torvex_config_lock"); }
};
INSTANTIATE_TEST_SUITE_P(Engines, ItemLocking, bothEngines(), engineName);

TEST_P(ItemLocking, EveryItemWordLocksItsRecordAndNoOther) {
    int locked = 0;
    for (const ItemCase& item : itemCases()) {
        SCOPED_TRACE(item.word);
        EXPECT_TRUE(manager().lockItem(item.word, item.itemId));
        EXPECT_EQ(lockOf(item), mySession);
        EXPECT_EQ(lockedRecords(), ++locked);
    }
}

TEST_P(ItemLocking, EveryItemWordButLanguageUnlocksItsRecordAndNoOther) {
    for (const ItemCase& item : itemCases()) setLock(item, mySession);
    int locked = static_cast<int>(itemCases().size());
    for (const ItemCase& item : itemCases()) {
        if (item.word == "language") continue;
        SCOPED_TRACE(item.word);
        manager().unlockItem(item.word, item.itemId);
        EXPECT_EQ(lockOf(item), "");
        EXPECT_EQ(lockedRecords(), --locked);
    }
}

TEST_P(ItemLocking, WordsCompareInAnyCaseWithBlanksAroundThemAndTheId) {
    for (const ItemCase& item : itemCases()) {
        SCOPED_TRACE(item.word);
        EXPECT_TRUE(manager().lockItem("  " + text::upper(item.word) + " ", " " + item.itemId + "  "));
        EXPECT_EQ(lockOf(item), mySession);
    }
    for (const ItemCase& item : itemCases()) {
        if (item.word == "language") continue;
        SCOPED_TRACE(item.word);
        manager().unlockItem(" " + text::lower(item.word) + " ", "  " + item.itemId + " ");
        EXPECT_EQ(lockOf(item), "");
    }
}

TEST_P(ItemLocking, ALanguageIsLetGoAsASitesLanguage) {
    siteLanguage("ab", "de", "Title");
    connection().execute("update TORVEX_SITES_LANGUAGES set lock = ?", {std::string_view(mySession)});
    EXPECT_TRUE(manager().lockItem("language", "de"));
    manager().unlockItem("language", " ab.de ");
    EXPECT_EQ(cell("select lock from TORVEX_SITES_LANGUAGES"), "");
    EXPECT_EQ(lockOf("language"), mySession);
    manager().unlockItem("language", "de");
    EXPECT_EQ(lockOf("language"), mySession);
}

TEST_P(ItemLocking, ASitesLanguageIsNotLockedByTheWordLanguage) {
    siteLanguage("ab", "de", "Title");
    EXPECT_FALSE(manager().lockItem("language", "ab.de"));
    EXPECT_EQ(cell("select lock from TORVEX_SITES_LANGUAGES"), "");
    EXPECT_EQ(lockedRecords(), 0);
}

TEST_P(ItemLocking, ASitesLanguageOfAnotherSessionStaysLocked) {
    siteLanguage("ab", "de", "Title");
    siteLanguage("ab", "fr", "Titre");
    connection().execute("update TORVEX_SITES_LANGUAGES set lock = 'other' where lang = 'de'");
    connection().execute("update TORVEX_SITES_LANGUAGES set lock = ? where lang = 'fr'",
                         {std::string_view(mySession)});
    manager().unlockItem("language", "abde");
    EXPECT_EQ(cell("select lock from TORVEX_SITES_LANGUAGES where lang = 'de'"), "other");
    EXPECT_EQ(cell("select lock from TORVEX_SITES_LANGUAGES where lang = 'fr'"), mySession);
}

TEST_P(ItemLocking, TwiceInOneSessionIsTrueBothTimesAndWritesAgain) {
    InterruptedConnection watched(connection());
    manager().connect(watched);
    EXPECT_TRUE(manager().lockItem("site", "ab"));
    EXPECT_TRUE(manager().lockItem("site", "ab"));
    EXPECT_EQ(watched.changesTried, 2);
    EXPECT_EQ(lockOf("site"), mySession);
}

TEST_P(ItemLocking, WhatTheSessionOfAnotherLoginHoldsIsRefused) {
    for (const ItemCase& item : itemCases()) {
        SCOPED_TRACE(item.word);
        setLock(item, "session-of-bert");
        EXPECT_FALSE(manager().lockItem(item.word, item.itemId));
        EXPECT_EQ(lockOf(item), "session-of-bert");
    }
}

TEST_P(ItemLocking, TheLockOfASessionThatIsGoneIsTakenOver) {
    for (const ItemCase& item : itemCases()) {
        SCOPED_TRACE(item.word);
        setLock(item, "session-long-gone");
        EXPECT_TRUE(manager().lockItem(item.word, item.itemId));
        EXPECT_EQ(lockOf(item), mySession);
    }
}

TEST_P(ItemLocking, TheLockOfAnotherSessionOfTheSameLoginIsTakenOver) {
    connection().execute("update TORVEX_LOGINS set sessionId = 'my-other-session' where loginId = 7");
    setLock(caseOf("site"), "my-other-session");
    EXPECT_TRUE(manager().lockItem("site", "ab"));
    EXPECT_EQ(lockOf("site"), mySession);
}

TEST_P(ItemLocking, SessionsCompareInAnyCase) {
    setLock(caseOf("site"), "SESSION-OF-BERT");
    EXPECT_FALSE(manager().lockItem("site", "ab"));
    setLock(caseOf("site"), "Test-Session");
    manager().unlockItem("site", "ab");
    EXPECT_EQ(lockOf("site"), "");
}

TEST_P(ItemLocking, ARecordThatIsNotThereIsRefused) {
    for (const ItemCase& item : itemCases()) {
        SCOPED_TRACE(item.word);
        for (const auto* id : {"99", "zz", "", "-1", "1.5", "99999999999999999999", "ab' or 1=1 --", "<b>"}) {
            EXPECT_FALSE(manager().lockItem(item.word, id)) << id;
            manager().unlockItem(item.word, id);
        }
        EXPECT_FALSE(manager().lockItem(item.word, std::string(20000, 'a')));
        EXPECT_FALSE(manager().lockItem(item.word, std::string(20000, '9')));
    }
    EXPECT_EQ(lockedRecords(), 0);
}

TEST_P(ItemLocking, AWordThatIsNoItemIsRefused) {
    for (const auto* word : {"", "  ", "page", "sites", "site'", "base template"}) {
        EXPECT_FALSE(manager().lockItem(word, "ab")) << word;
        manager().unlockItem(word, "ab");
    }
    EXPECT_EQ(lockedRecords(), 0);
    EXPECT_EQ(configLock(), "");
}

TEST_P(ItemLocking, AnotherSessionsLockStaysWhenItIsUnlocked) {
    for (const ItemCase& item : itemCases()) {
        SCOPED_TRACE(item.word);
        setLock(item, "session-long-gone");
        manager().unlockItem(item.word, item.itemId);
        EXPECT_EQ(lockOf(item), "session-long-gone");
    }
}

TEST_P(ItemLocking, ASessionThatComesInBetweenIsSeen) {
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] { setLock(caseOf("site"), "session-of-bert"); };
    manager().connect(interrupted);
    EXPECT_FALSE(manager().lockItem("site", "ab"));
    EXPECT_EQ(lockOf("site"), "session-of-bert");
}

TEST_P(ItemLocking, ARecordThatIsRemovedInBetweenIsRefused) {
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] { connection().execute("delete from TORVEX_SITES where site = 'ab'"); };
    manager().connect(interrupted);
    EXPECT_FALSE(manager().lockItem("site", "ab"));
}

TEST_P(ItemLocking, ALockThatIsNeverTheSameTwiceIsAnErrorInTheEnd) {
    int holder = 0;
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] { setLock(caseOf("site"), "gone-" + std::to_string(++holder)); };
    manager().connect(interrupted);
    EXPECT_EQ(errorOf([&] { manager().lockItem("site", "ab"); }),
              chain({"lockItem !"}) + "the lock is changed by others all the time");
}

TEST_P(ItemLocking, LeavesNoLineInTheTrail) {
    manager().lockItem("site", "ab");
    manager().unlockItem("site", "ab");
    EXPECT_TRUE(auditTrail().empty());
}

TEST_P(ItemLocking, ADatabaseThatFailsIsAnErrorWithItsLine) {
    drop("TORVEX_SITES");
    EXPECT_THAT(errorOf([&] { manager().lockItem("site", "ab"); }), StartsWith(chain({"lockItem !"})));
    EXPECT_THAT(errorOf([&] { manager().unlockItem("site", "ab"); }), StartsWith(chain({"unlockItem !"})));
}

// ---- config ----

class ConfigLocking : public ItemLocking {
  protected:
    void SetUp() override {
        ItemLocking::SetUp();
        row("TORVEX_ROLES", {{"roleId", 3}, {"roleName", "Settings"}});
        row("TORVEX_ROLES_LOGINS", {{"roleId", 3}, {"loginId", anna}});
    }
    void mayEdit(int advId, int editAccess = 1) {
        row("TORVEX_ADVANCED_RIGHTS",
            {{"roleId", 3}, {"advId", advId}, {"viewAccess", 1}, {"editAccess", editAccess}});
    }
    std::string settingsEntry = std::to_string(adminEntry::settings);
};
INSTANTIATE_TEST_SUITE_P(Engines, ConfigLocking, bothEngines(), engineName);

TEST_P(ConfigLocking, NeedsTheRightToEditTheEntryThatIsNamed) {
    EXPECT_FALSE(manager().lockItem("config", settingsEntry));
    mayEdit(adminEntry::sites);
    EXPECT_FALSE(manager().lockItem("config", settingsEntry));
    mayEdit(adminEntry::settings, 0);
    EXPECT_FALSE(manager().lockItem("config", settingsEntry));
    EXPECT_EQ(configLock(), "");
    mayEdit(adminEntry::settings);
    EXPECT_TRUE(manager().lockItem(" CONFIG ", " " + settingsEntry + " "));
    EXPECT_EQ(configLock(), mySession);
}

TEST_P(ConfigLocking, TheAdministratorNeedsNoRight) {
    login(9, "sa", "System Administrator");
    actAs(9, "sa", "System Administrator");
    EXPECT_TRUE(manager().lockItem("config", ""));
    EXPECT_EQ(configLock(), mySession);
}

TEST_P(ConfigLocking, AnEntryThatIsNoneIsRefused) {
    mayEdit(adminEntry::settings);
    for (const auto* id : {"", "x", "-61", "0", "61.5", "99999999999", "61'", "999"}) {
        EXPECT_FALSE(manager().lockItem("config", id)) << id;
    }
    EXPECT_EQ(configLock(), "");
}

TEST_P(ConfigLocking, TouchesNoRecord) {
    mayEdit(adminEntry::settings);
    EXPECT_TRUE(manager().lockItem("config", settingsEntry));
    EXPECT_EQ(lockedRecords(), 0);
}

TEST_P(ConfigLocking, TwiceInOneSessionIsTrueBothTimes) {
    mayEdit(adminEntry::settings);
    EXPECT_TRUE(manager().lockItem("config", settingsEntry));
    EXPECT_TRUE(manager().lockItem("config", settingsEntry));
    EXPECT_EQ(configLock(), mySession);
}

TEST_P(ConfigLocking, WhatTheSessionOfAnotherLoginHoldsIsRefused) {
    mayEdit(adminEntry::settings);
    host.application.set("torvex_config_lock", "session-of-bert");
    EXPECT_FALSE(manager().lockItem("config", settingsEntry));
    EXPECT_EQ(configLock(), "session-of-bert");
}

TEST_P(ConfigLocking, TheLockOfASessionThatIsGoneOrTheSameLoginsIsTakenOver) {
    mayEdit(adminEntry::settings);
    host.application.set("torvex_config_lock", "session-long-gone");
    EXPECT_TRUE(manager().lockItem("config", settingsEntry));
    EXPECT_EQ(configLock(), mySession);
    connection().execute("update TORVEX_LOGINS set sessionId = 'my-other-session' where loginId = 7");
    host.application.set("torvex_config_lock", "my-other-session");
    EXPECT_TRUE(manager().lockItem("config", settingsEntry));
    EXPECT_EQ(configLock(), mySession);
}

TEST_P(ConfigLocking, OnlyTheHolderUnlocksAndNeedsNoRightForIt) {
    host.application.set("torvex_config_lock", "session-long-gone");
    manager().unlockItem("config", settingsEntry);
    EXPECT_EQ(configLock(), "session-long-gone");
    host.application.set("torvex_config_lock", mySession);
    manager().unlockItem(" Config ", "");
    EXPECT_EQ(configLock(), "");
}

TEST_P(ConfigLocking, OtherWritersCanWriteAfterwards) {
    mayEdit(adminEntry::settings);
    manager().lockItem("config", settingsEntry);
    manager().unlockItem("config", settingsEntry);
    std::thread([&] { host.application.set("torvex_charset", "x"); }).join();
    EXPECT_EQ(host.application.text("torvex_charset"), "x");
}

}  // namespace
}  // namespace torvex::test
