// Twenty authors work on one tree at once, each with requests of its own, as they reach the server.

#include <algorithm>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <latch>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#include "operations/calls/CallRun.h"
#include "operations/register/Register.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"
#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using ::testing::IsEmpty;

constexpr int authors = 20;
constexpr int pages = 30;
constexpr int rounds = 40;
constexpr int firstLogin = 100;
constexpr int firstPage = 500;

/// What came of it all, as those who did it saw it. Safe to share between threads.
class Journal {
  public:
    /// Called after a page was taken and before it is given back: two who hold it at once would meet here.
    void holds(int page, int author) {
        const std::scoped_lock lock(mutex_);
        const auto [holder, isFree] = holders_.emplace(page, author);
        if (!isFree)
            complain(fmt::format("{} holds page {} while {} takes it", holder->second, page, author));
    }
    void letsGo(int page) {
        const std::scoped_lock lock(mutex_);
        holders_.erase(page);
    }
    void did(int author, int page, const std::string& action) {
        const std::scoped_lock lock(mutex_);
        ++done_[fmt::format("{}|{}|{}", author, page, action)];
    }
    void saved(int page) {
        const std::scoped_lock lock(mutex_);
        ++saves_[page];
    }
    void refused(const std::string& operation, const std::string& code) {
        const std::scoped_lock lock(mutex_);
        ++refusals_[operation + " " + code];
    }
    void failed(const std::string& what) {
        const std::scoped_lock lock(mutex_);
        complain(what);
    }

    // When all threads have ended.
    std::map<std::string, int> done() const { return done_; }
    std::map<std::string, int> refusals() const { return refusals_; }
    int saves(int page) const { return saves_.contains(page) ? saves_.at(page) : 0; }
    std::vector<std::string> complaints() const { return complaints_; }

  private:
    void complain(const std::string& what) { complaints_.push_back(what); }

    std::mutex mutex_;
    std::map<int, int> holders_;
    std::map<std::string, int> done_;
    std::map<std::string, int> refusals_;
    std::map<int, int> saves_;
    std::vector<std::string> complaints_;
};

/// One author at a desk: every operation is a request of its own, with its own connection.
class Desk {
  public:
    Desk(int author, const operations::Register& classes, db::Database& database,
         const std::string& connectionText, Journal& journal)
        : author_(author), classes_(classes), journal_(journal), random_(static_cast<unsigned>(author)) {
        host_.database.target = &database;
        host_.application.set("torvex_odbc", connectionText);
        host_.session.set("torvex_loginId", author);
        host_.session.set("torvex_username", fmt::format("author{}", author));
        host_.session.set("torvex_fullname", fmt::format("Author {}", author));
    }

    void work() try {
        for (int round = 0; round < rounds; ++round) workOn(pickPage());
    } catch (const std::exception& error) {
        journal_.failed(fmt::format("author {}: {}", author_, error.what()));
    }

  private:
    /// The first pages of the tree are those that everybody wants.
    int pickPage() {
        const int a = pick(pages);
        const int b = pick(pages);
        return firstPage + std::min(a, b);
    }
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

    void workOn(int page) {
        const std::string code = run("checkOut", page);
        if (code == "-2" && pick(2) == 0) judge(page, 0);
        if (!code.empty()) return;
        journal_.holds(page, author_);
        if (pick(4) == 0 && !run("checkOut", page).empty()) journal_.failed("refused to the holder");
        save(page);
        lookThatItIsHeld(page);
        journal_.letsGo(page);
        if (!run("checkIn", page).empty()) journal_.failed("the holder can't give it back");
        if (pick(3) == 0) judge(page, 1);
    }

    void judge(int page, int state) { run("approvePage", page, state); }

    /// The code of a refusal, "" for a success.
    std::string run(const std::string& operation, int page, int state = -1) {
        operations::GivenValues arguments{{"pageIdent", Value(std::to_string(page))}};
        if (state >= 0) arguments.emplace_back("state", Value(state));
        operations::CallRun calls(classes_, host_.context(), operations::CommandLine{});
        const std::string result =
            calls.run(operations::Call{"cManager", operation, arguments}).result.text();
        if (text::isNumeric(result)) {
            journal_.refused(operation, result);
            return result;
        }
        journal_.did(author_, page, actionOf(operation, state));
        return {};
    }

    static std::string actionOf(const std::string& operation, int state) {
        if (operation == "checkOut") return "check out";
        if (operation == "checkIn") return "check in";
        return state == 1 ? "approve" : "unapprove";
    }

    /// Reads and writes in two steps: only the lock of the page keeps others from writing in between.
    void save(int page) {
        double counted = 0;
        {
            const auto connection = open();
            auto rows =
                connection->query("select bodyText from TORVEX_BODIES_DESIGN where pageId = ?", {page});
            if (rows.next()) counted = text::toNumber(rows.text("bodyText"));
        }
        std::this_thread::yield();
        operations::CallRun calls(classes_, host_.context(), operations::CommandLine{});
        const operations::Call save{"cManager",
                                    "saveBody",
                                    {{"pageIdent", Value(std::to_string(page))},
                                     {"bodyId", Value(1)},
                                     {"bodyContent", Value(text::fromNumber(counted + 1))}}};
        const std::string result = calls.run(save).result.text();
        if (result != "0") return journal_.failed("the holder can't save: " + result);
        journal_.did(author_, page, "save body");
        journal_.saved(page);
    }

    void lookThatItIsHeld(int page) {
        const auto connection = open();
        auto rows = connection->query(
            "select lockStatus, lockedBy, approveStatus from TORVEX_PAGES_DESIGN where pageId = ?", {page});
        const bool isHeld = rows.next() && rows.number("lockStatus") == 1 &&
                            rows.number("lockedBy") == author_ && rows.number("approveStatus") == 0;
        if (!isHeld) journal_.failed(fmt::format("author {} lost page {}", author_, page));
    }

    db::Lease open() { return db::openOwn(host_.context()); }

    int author_;
    const operations::Register& classes_;
    Journal& journal_;
    std::mt19937 random_;
    TestHost host_;
};

class AuthorsAtOnce : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        for (int author = firstLogin; author < firstLogin + authors; ++author) {
            login(author, fmt::format("author{}", author), fmt::format("Author {}", author),
                  fmt::format("session-of-{}", author));
        }
        page("aa.en").id(firstPage - 1).type("F").insertInDesignOnly();
        for (int i = 0; i < pages; ++i) {
            // Three levels: every page of the first has two below it.
            const int top = i / 3 + 1;
            const std::string below = i % 3 == 0 ? "" : fmt::format(".{:02}", i % 3);
            page(fmt::format("aa.en.{:02}{}", top, below))
                .id(firstPage + i)
                .set("editStatus", "N")
                .insertInDesignOnly();
            row("TORVEX_BODIES_DESIGN", {{"pageId", firstPage + i}, {"bodyId", 1}, {"bodyText", "0"}});
        }
    }

    void letAllWork() {
        const operations::Register classes = operations::makeRegister();
        std::latch start(authors);
        std::vector<std::jthread> threads;
        for (int author = firstLogin; author < firstLogin + authors; ++author) {
            threads.emplace_back([this, &classes, &start, author] {
                Desk desk(author, classes, database(), connectionText(), journal);
                start.arrive_and_wait();
                desk.work();
            });
        }
    }

    std::map<std::string, int> trailByAuthorPageAndAction() {
        std::map<std::string, int> lines;
        auto rows = connection().query("select loginId, pageId, action from TORVEX_AUDIT_TRAIL");
        while (rows.next()) {
            ++lines[rows.text("loginId") + "|" + rows.text("pageId") + "|" + rows.text("action")];
        }
        return lines;
    }

    Journal journal;
};
INSTANTIATE_TEST_SUITE_P(Engines, AuthorsAtOnce, bothEngines(), engineName);

TEST_P(AuthorsAtOnce, NeverHoldAPageTogetherAndLoseNothing) {
    letAllWork();

    EXPECT_THAT(journal.complaints(), IsEmpty());
    const std::set<std::string> given{"checkOut -1", "checkOut -2", "approvePage -1"};
    int refusals = 0;
    for (const auto& [refusal, count] : journal.refusals()) {
        EXPECT_TRUE(given.contains(refusal)) << refusal;
        refusals += count;
    }
    EXPECT_GT(refusals, 0) << "nobody ever met anybody";

    EXPECT_EQ(trailByAuthorPageAndAction(), journal.done());
    for (int page = firstPage; page < firstPage + pages; ++page) {
        const std::string where = " where pageId = " + std::to_string(page);
        EXPECT_EQ(cell("select bodyText from TORVEX_BODIES_DESIGN" + where),
                  std::to_string(journal.saves(page)));
        EXPECT_EQ(cell("select lockStatus from TORVEX_PAGES_DESIGN" + where), "0");
        EXPECT_EQ(cell("select lockedBy from TORVEX_PAGES_DESIGN" + where), "");
    }
}

}  // namespace
}  // namespace torvex::test
