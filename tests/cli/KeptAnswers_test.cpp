// Pages that are kept, of the real program beside one that keeps none: whoever changes whatever, both say the same.

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <random>
#include <regex>
#include <thread>

#include "cli/ProgramFixture.h"
#include "support/RawHttpClient.h"

namespace torvex::test {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class KeptAnswersTest : public ProgramDatabaseTest {
  protected:
    void SetUp() override {
        init({"--demo", "--admin-password", "word"});
        pools_ = db::makeDatabase();
        connection_ = pools_->open(postgres_ ? postgres_->connectionText() : "sqlite:" + site() + "/data");
        addSettings("server", settings());
        keeping_ = serve();
        addSettings("server", "page_cache_bytes = 0");
        anew_ = serve();
    }
    void TearDown() override { connection_.reset(); }

    /// A line for the server that keeps pages.
    virtual std::string settings() const { return ""; }

    static RawReply get(const RunningProgram& server, const std::string& target) {
        return RawHttpClient(portOf(server)).get(target, "User-Agent: Mozilla\r\n");
    }

    int random(int most) { return std::uniform_int_distribution<int>(0, most - 1)(numbers_); }

    /// Another program changes something that pages are made of.
    void changeAnything() {
        static constexpr std::array statements{
            "update TORVEX_PAGES_LIVE set title = '{0}' where pageId = {1}",
            "update TORVEX_PAGES_LIVE set navigation = '{0}' where pageId = {1}",
            "update TORVEX_PAGES_LIVE set online = {2} where pageId = {1}",
            "update TORVEX_PAGES_LIVE set onlineTo = '2001010{2}' where pageId = {1}",
            "update TORVEX_PAGES_LIVE set onlineTo = null where pageId = {1}",
            "update TORVEX_BODIES_LIVE set bodyText = '<p>{0} <a href=\"page:{1}\">x</a></p>' where pageId = "
            "{1}",
            "update TORVEX_PAGES_METADATA_LIVE set metaData_value = '{0}' where metaData_pageId = {1}",
            "update TORVEX_NEWSFLASH_LIVE set title = '{0}'",
            "update TORVEX_MSGB_ITEMS_LIVE set msgB_itemTitle = '{0}' where msgB_itemId = {1}",
            "update TORVEX_SITES_LANGUAGES set title = '{0}'",
            "update TORVEX_PAGES_DESIGN set title = '{0}' where pageId = {1}",
            "delete from TORVEX_PAGES_GROUPS_LIVE where pageId = {1} and groupId > 0",
        };
        const std::string_view statement = statements[static_cast<std::size_t>(random(statements.size()))];
        connection_->execute(
            fmt::format(fmt::runtime(statement), fmt::format("t{}", ++changes_), random(50), random(2)));
    }

    void changeATemplate() {
        for (const auto& entry : fs::recursive_directory_iterator(site() + "/contentTemplates")) {
            if (!entry.is_regular_file() || random(3) != 0) continue;
            std::ofstream(entry.path(), std::ios::app) << fmt::format("<!-- {} -->", ++changes_);
        }
    }

    /// Both say the same of a page, the embedded engine's at once; PostgreSQL tells of a change in its own time.
    void expectSame(const std::string& target) {
        RawReply kept = get(*keeping_, target);
        RawReply anew = get(*anew_, target);
        for (int i = 0; GetParam() == db::Engine::PostgreSql && i < 100 && kept.body != anew.body; ++i) {
            std::this_thread::sleep_for(10ms);
            kept = get(*keeping_, target);
            anew = get(*anew_, target);
        }
        EXPECT_EQ(kept.status, anew.status) << target;
        EXPECT_EQ(kept.body, anew.body) << target;
        EXPECT_EQ(kept.field("Location").substr(0, 10), anew.field("Location").substr(0, 10)) << target;
        kept_ += kept.field("ETag").empty() ? 0 : 1;
    }

    std::unique_ptr<db::Database> pools_;
    db::Lease connection_;
    std::unique_ptr<RunningProgram> keeping_;
    std::unique_ptr<RunningProgram> anew_;
    std::mt19937 numbers_{20261123};
    int changes_ = 0;
    int kept_ = 0;  ///< answers that could be kept
};
INSTANTIATE_TEST_SUITE_P(Engines, KeptAnswersTest, bothEngines(), engineName);

TEST_P(KeptAnswersTest, AreThoseOfAServerThatKeepsNone) {
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        if (random(20) == 0) {
            changeATemplate();
        } else {
            changeAnything();
        }
        for (int page = 0; page < 4; ++page) {
            const int pageId = random(50);
            expectSame(fmt::format("/tvx.asp?pageId={}", pageId));
            expectSame(fmt::format("/tvx.asp?pageId={}&other={}", pageId, i));
        }
        expectSame("/");
    }
    EXPECT_GT(kept_, 100);
}

/// Readers while somebody writes: no answer is older than what was committed before it was asked for.
class ExactAnswersTest : public KeptAnswersTest {
  protected:
    /// PostgreSQL is to be asked for that.
    std::string settings() const override { return "page_cache_asks = true"; }

    void commit(int number) {
        connection_->execute(
            fmt::format("update TORVEX_PAGES_LIVE set title = 'state-{}-' where pageId = 4", number));
        committed_ = number;
    }

    /// One connection, on which so many requests are under way at a time, each sent by itself.
    void readOn(RawHttpClient client, int atATime) {
        while (!isDone_) {
            std::vector<int> before;
            for (int i = 0; i < atATime; ++i) {
                before.push_back(committed_);
                client.send(
                    "GET /tvx.asp?pageId=4 HTTP/1.1\r\nHost: localhost\r\nUser-Agent: Mozilla\r\n\r\n");
            }
            for (const int state : before) ASSERT_GE(stateOf(client.read().body), state);
            asked_ += atATime;
        }
    }

    static int stateOf(const std::string& body) {
        static const std::regex state("state-(\\d+)-");
        std::smatch shown;
        return std::regex_search(body, shown, state) ? std::stoi(shown[1]) : -1;
    }

    /// Of all kinds at once, for some seconds.
    void readAndWrite(const std::vector<int>& atATime) {
        commit(1);
        std::vector<std::thread> readers;
        for (const int requests : atATime)
            readers.emplace_back([this, requests] { readOn(RawHttpClient(portOf(*keeping_)), requests); });
        const auto end = std::chrono::steady_clock::now() + 4s;
        for (int number = 2; std::chrono::steady_clock::now() < end; ++number) {
            commit(number);
            std::this_thread::sleep_for(std::chrono::milliseconds(random(6)));
        }
        isDone_ = true;
        for (std::thread& reader : readers) reader.join();
        EXPECT_GT(asked_, 100);
    }

  private:
    std::atomic<int> committed_ = 0;
    std::atomic<bool> isDone_ = false;
    std::atomic<int> asked_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, ExactAnswersTest, bothEngines(), engineName);

TEST_P(ExactAnswersTest, AreNeverOlderThanWhatWasCommittedBeforeTheyWereAskedFor) {
    readAndWrite({1, 1, 1});
}

TEST_P(ExactAnswersTest, AreNeverOlderWhereManyAreAnsweredTogether) {
    readAndWrite(std::vector<int>(24, 1));
}

TEST_P(ExactAnswersTest, AreNeverOlderWhereRequestsComeBehindEachOther) {
    readAndWrite({1, 2, 3, 8, 8});
}

}  // namespace
}  // namespace torvex::test
