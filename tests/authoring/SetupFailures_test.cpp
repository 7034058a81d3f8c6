// What becomes of a setup when the world breaks, or another author is faster.

#include <fmt/format.h>
#include <latch>
#include <mutex>
#include <set>
#include <thread>

#include "accounts/Actor.h"
#include "authoring/PageBuffer.h"
#include "authoring/SetupRow.h"
#include "platform/text/Text.h"
#include "support/SetupTest.h"

namespace torvex::test {
namespace {

class SetupFailuresTest : public SetupTest {
  protected:
    /// Whether the last line for operators begins so.
    bool toldOf(const std::string& beginning) const {
        return !host.log.lines.empty() && host.log.lines.back().starts_with(beginning);
    }

    void SetUp() override {
        SetupTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en.02.01").id(15).title("Fifteen").order(5).insert();
        designBody(15, 1);
        row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 15}, {"groupId", 5}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SetupFailuresTest, bothEngines(), engineName);

// ---- A broken database ----

TEST_P(SetupFailuresTest, AConnectionThatFailsIsACode) {
    for (const bool isNew : {true, false}) {
        const std::string before = content();
        whenItWrites([] { throw db::DatabaseError("the server is gone"); });
        filled();
        EXPECT_EQ(isNew ? saveNew() : saveTwelve(), "-99");
        EXPECT_EQ(content(), before);
        EXPECT_TRUE(
            toldOf(std::string(isNew ? "saveNewPageSetup of page aa.en.03" : "savePageSetup of page 12") +
                   ": the server is gone"));
    }
}

TEST_P(SetupFailuresTest, AFailureAtTheGroupsUndoesAll) {
    drop("TORVEX_PAGES_GROUPS_DESIGN");
    const std::string before = content();
    filled();
    EXPECT_EQ(saveNew("aa.en.02", "15"), "-99");
    filled();
    EXPECT_EQ(manager().savePageSetup("15"), "-99");
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, AFailureAtTheNamesOfGroupsUndoesAll) {
    drop("TORVEX_USERGROUPS");
    const std::string before = content();
    filled().setPgGroups("5,Staff");
    EXPECT_EQ(saveNew("aa.en.02", "15"), "-99");
    filled().setPgGroups("5,Staff");
    EXPECT_EQ(manager().savePageSetup("15"), "-99");
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, AFailureAtTheBodiesUndoesAll) {
    drop("TORVEX_BODIES_DESIGN");
    const std::string before = content();
    filled().setPgTemplateId(2);
    EXPECT_EQ(saveTwelve(), "-99");
    filled().setPgType("F");
    EXPECT_EQ(saveTwelve(), "-99");
    filled();
    EXPECT_EQ(saveTwelve(), "-99") << "its words are read anew";
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, AFailureAtTheMetaDataUndoesAll) {
    drop("TORVEX_PAGES_METADATA_DESIGN");
    const std::string before = content();
    filled().setPgType("F");
    EXPECT_EQ(manager().savePageSetup("14"), "-99");
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, AnUnreadableDiskUndoesAll) {
    designBody(12, 3);
    host.files.readFailure = "the disk is broken";
    const std::string before = content();
    filled().setPgTemplateId(2);
    EXPECT_EQ(saveTwelve(), "-99");
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, AFailureOfATestIsAnError) {
    drop("TORVEX_PAGES_LIVE");
    filled();
    EXPECT_TRUE(errorOf([this] { saveNew(); }).starts_with(chain({"saveNewPageSetup !", "isPageTitle !"})));
    EXPECT_TRUE(errorOf([this] { saveTwelve(); }).starts_with(chain({"savePageSetup !", "isPageTitle !"})));
}

TEST_P(SetupFailuresTest, AFailureOfTheTrailIsToldWhenThePageIsSaved) {
    drop("TORVEX_AUDIT_TRAIL");
    filled();
    EXPECT_EQ(saveNew(), "aa.en.03");
    EXPECT_EQ(orderOf("aa.en.03"), "3");
    EXPECT_TRUE(toldOf("saveNewPageSetup of page aa.en.03: "));
    filled().setPgTitle("Another");
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(column("title", 12), "Another");
    EXPECT_TRUE(toldOf("savePageSetup of page 12: "));
}

// ---- Another author is faster ----

TEST_P(SetupFailuresTest, AParentThatVanishesIsFoundMissing) {
    const std::string title = column("title", 15);
    for (const bool isNew : {true, false}) {
        SCOPED_TRACE(isNew ? "saveNewPageSetup" : "savePageSetup");
        filled();
        whenItWrites([this] { dropDesignRow(12); });
        EXPECT_EQ(isNew ? saveNew("aa.en.02") : manager().savePageSetup("15"), "-4");
        EXPECT_EQ(cell("select count(*) from TORVEX_PAGES_DESIGN where parent = 'aa.en.02'"), "1");
        EXPECT_EQ(orderOf("aa.en.02.01"), "5");
        page("aa.en.02").id(12).insertInDesignOnly();
    }
    EXPECT_EQ(column("title", 15), title);
}

TEST_P(SetupFailuresTest, ANodeThatAnotherAuthorTakesIsLost) {
    filled();
    std::string before;
    whenItWrites([&] {
        page("aa.en.03").id(20).title("Faster").insertInDesignOnly();
        before = content();
    });
    EXPECT_EQ(saveNew("aa.en", "11"), "-99");
    EXPECT_EQ(content(), before);
    EXPECT_EQ(cell("select count(*) from TORVEX_PAGES_DESIGN where nodeId = 'aa.en.03'"), "1");
}

TEST_P(SetupFailuresTest, ARootThatAnotherAuthorMakesIsLost) {
    language("nl");
    filled();
    giveDesign(manager());
    std::string before;
    whenItWrites([&] {
        page("aa.nl").id(20).insertInDesignOnly();
        before = content();
    });
    EXPECT_EQ(manager().saveNewPageSetup("aa", "nl", ""), "-99");
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, APageThatVanishesIsFoundMissing) {
    filled();
    whenItWrites([this] { dropDesignRow(12); });
    EXPECT_EQ(saveTwelve(), "-2");
    EXPECT_EQ(cell("select count(*) from TORVEX_PAGES_DESIGN where nodeId = 'aa.en.02'"), "0");
}

TEST_P(SetupFailuresTest, APageThatAnotherAuthorTakesIsFoundHeld) {
    filled();
    std::string before;
    whenItWrites([&] {
        connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 8 where pageId = 12");
        before = content();
    });
    EXPECT_EQ(saveTwelve(), "-1");
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, APageThatIsMovedKeepsItsNewPlace) {
    filled();
    std::string before;
    whenItWrites([&] {
        connection().execute(
            "update TORVEX_PAGES_DESIGN set nodeId = 'aa.en.01.05', parent = 'aa.en.01' where pageId = 12");
        before = content();
    });
    EXPECT_EQ(saveTwelve(), "-99");
    EXPECT_EQ(content(), before);
}

TEST_P(SetupFailuresTest, TheWritingItselfTestsTheLock) {
    PageBuffer record;
    record.pageId = 12;
    record.nodeId = "aa.en.02";
    record.type = "P";
    record.title = "Written";
    Actor editor = actorOf(host.context());
    connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 8 where pageId = 12");
    EXPECT_FALSE(updateSetup(connection(), record, editor));
    EXPECT_EQ(column("title", 12), "Twelve");
    connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 7 where pageId = 12");
    EXPECT_TRUE(updateSetup(connection(), record, editor));
    EXPECT_EQ(column("title", 12), "Written");
}

TEST_P(SetupFailuresTest, ANodeCannotBeGivenTwice) {
    PageBuffer record;
    record.nodeId = "AA.en.02";
    EXPECT_THROW(insertSetup(connection(), record, actorOf(host.context())), db::DatabaseError);
}

// ---- Authors at once ----

/// One author who makes pages under one parent, each in a request of its own.
class BusyAuthor {
  public:
    BusyAuthor(int loginId, db::Database& database, const std::string& connectionText) : loginId_(loginId) {
        host_.database.target = &database;
        host_.application.set("torvex_odbc", connectionText);
        host_.session.set("torvex_loginId", loginId);
        host_.session.set("torvex_fullname", fmt::format("Author {}", loginId));
    }

    /// Every answer.
    std::vector<std::string> work(int pages) {
        std::vector<std::string> answers;
        const auto connection = db::openOwn(host_.context(), db::Purpose::Everything);
        for (int i = 0; i < pages; ++i) {
            cManager manager(host_.context());
            manager.connect(*connection);
            manager.setPgTitle(fmt::format("{} of {}", i, loginId_));
            manager.setPgType("F");
            manager.setPgBaseTemplateId(0);
            manager.setPgTemplateId(0);
            manager.setPgStylesheetId(0);
            answers.push_back(manager.saveNewPageSetup("aa", "en", "11", first_));
            if (answers.back().starts_with("aa")) first_ = answers.back();
        }
        return answers;
    }

  private:
    int loginId_;
    std::string first_;
    TestHost host_;
};

TEST_P(SetupFailuresTest, AuthorsAtOnceNeverShareANode) {
    constexpr int authors = 3;
    constexpr int pages = 15;
    std::mutex mutex;
    std::multiset<std::string> nodes;
    int lost = 0;
    {
        std::latch start(authors);
        std::vector<std::jthread> threads;
        for (int author = 1; author <= authors; ++author) {
            threads.emplace_back([&, author] {
                BusyAuthor busy(100 + author, database(), connectionText());
                start.arrive_and_wait();
                const auto answers = busy.work(pages);
                const std::scoped_lock lock(mutex);
                for (const auto& answer : answers) {
                    if (answer.starts_with("aa.en.01.")) {
                        nodes.insert(answer);
                    } else {
                        // Another author's commit came after this one's choice, or in between its tests.
                        EXPECT_TRUE(answer == "-99" || answer == "-3") << answer;
                        ++lost;
                    }
                }
            });
        }
    }
    const std::string count = std::to_string(nodes.size());
    EXPECT_EQ(nodes.size() + static_cast<std::size_t>(lost), static_cast<std::size_t>(authors * pages));
    EXPECT_EQ(std::set<std::string>(nodes.begin(), nodes.end()).size(), nodes.size());
    EXPECT_EQ(cell("select count(*) from TORVEX_PAGES_DESIGN where parent = 'aa.en.01'"), count);
    EXPECT_EQ(cell("select count(distinct orderId) from TORVEX_PAGES_DESIGN where parent = 'aa.en.01'"),
              count);
    EXPECT_EQ(cell("select max(orderId) from TORVEX_PAGES_DESIGN where parent = 'aa.en.01'"), count);
    EXPECT_EQ(cell("select count(*) from TORVEX_AUDIT_TRAIL"), count);
}

}  // namespace
}  // namespace torvex::test
