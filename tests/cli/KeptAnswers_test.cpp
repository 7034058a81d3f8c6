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
        keeping_ = serve();
        addSettings("server", "page_cache_bytes = 0");
        anew_ = serve();
    }
    void TearDown() override { connection_.reset(); }

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

/// PostgreSQL tells of changes in its own time.
class ExactAnswersTest : public KeptAnswersTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ExactAnswersTest, testing::Values(db::Engine::Sqlite), engineName);

TEST_P(ExactAnswersTest, AreNeverOlderThanWhatWasCommittedBeforeTheyWereAskedFor) {
    std::atomic<int> committed = 0;
    std::atomic<bool> isDone = false;
    const auto change = [&](int number) {
        connection_->execute(
            fmt::format("update TORVEX_PAGES_LIVE set title = 'state-{}-' where pageId = 4", number));
        committed = number;
    };
    change(1);
    std::atomic<int> asked = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i)
        readers.emplace_back([&] {
            const std::regex state("state-(\\d+)-");
            while (!isDone) {
                const int before = committed;
                const std::string body = get(*keeping_, "/tvx.asp?pageId=4").body;
                std::smatch shown;
                ASSERT_TRUE(std::regex_search(body, shown, state)) << body.substr(0, 500);
                ASSERT_GE(std::stoi(shown[1]), before);
                ++asked;
            }
        });
    const auto end = std::chrono::steady_clock::now() + 4s;
    for (int number = 2; std::chrono::steady_clock::now() < end; ++number) {
        change(number);
        std::this_thread::sleep_for(std::chrono::milliseconds(random(6)));
    }
    isDone = true;
    for (std::thread& reader : readers) reader.join();
    EXPECT_GT(asked, 100);
}

}  // namespace
}  // namespace torvex::test
