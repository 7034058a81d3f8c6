#include "replication/ServerShares.h"

#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <thread>

#include "platform/Errors.h"
#include "support/MemoryFileSystem.h"

namespace torvex {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using Reasons = std::vector<std::string>;

constexpr ServerShares::Patience longPatience{60s, 60s};
constexpr ServerShares::Patience shortPatience{60s, 50ms};

/// Holds up whoever passes until it is opened; shared with threads that may outlive the test.
struct Gate {
    std::promise<void> opening;
    std::shared_future<void> opened = opening.get_future().share();
};

std::shared_ptr<FileSystem> memory(const std::string& /*share*/, const std::string& /*install*/) {
    return std::make_shared<test::MemoryFileSystem>();
}

/// A step that notes that it ran.
ServerShares::Step noting(std::shared_ptr<std::atomic<int>> runs) {
    return [runs](FileSystem& /*files*/) { ++*runs; };
}

/// Waits, at most some seconds, until the share takes work again.
void waitUntilFree(ServerShares& shares, const std::string& share) {
    for (int i = 0; i < 500; ++i) {
        if (shares.run(share, "/install/", {[](FileSystem&) {}}, longPatience).front().empty()) return;
        std::this_thread::sleep_for(10ms);
    }
    ADD_FAILURE() << "the share stays refused";
}

TEST(ServerShares, StepsRunInOrderOnWhatWasOpened) {
    const auto files = std::make_shared<test::MemoryFileSystem>();
    std::string asked;
    ServerShares shares([&](const std::string& share, const std::string& install) {
        asked = share + " " + install;
        return files;
    });
    const auto reasons = shares.run(
        "/mnt/b/www", "/install/",
        {[](FileSystem& f) { f.writeBytes("/a", "1"); }, [](FileSystem& f) { f.copyFile("/a", "/b"); }},
        longPatience);
    EXPECT_EQ(reasons, Reasons({"", ""}));
    EXPECT_EQ(asked, "/mnt/b/www /install/");
    EXPECT_EQ(files->bytes.at("/b"), "1");
}

TEST(ServerShares, AStepThatFailsSaysWhyAndTheOthersRun) {
    ServerShares shares(memory);
    const auto runs = std::make_shared<std::atomic<int>>(0);
    const auto reasons = shares.run(
        "s", "i", {noting(runs), [](FileSystem&) { throw Error("disk full"); }, noting(runs)}, longPatience);
    EXPECT_EQ(reasons, Reasons({"", "disk full", ""}));
    EXPECT_EQ(*runs, 2);
}

TEST(ServerShares, AShareThatCantBeOpenedFailsEveryStep) {
    ServerShares shares([](const std::string&, const std::string&) -> std::shared_ptr<FileSystem> {
        throw Error("not there");
    });
    const auto runs = std::make_shared<std::atomic<int>>(0);
    EXPECT_EQ(shares.run("s", "i", {noting(runs), noting(runs)}, longPatience),
              Reasons({"not there", "not there"}));
    EXPECT_EQ(*runs, 0);
}

TEST(ServerShares, NothingToDoIsDoneAtOnce) {
    ServerShares shares(memory);
    EXPECT_TRUE(shares.run("s", "i", {}, longPatience).empty());
}

TEST(ServerShares, AShareThatHangsIsGivenUpOn) {
    const auto gate = std::make_shared<Gate>();
    ServerShares shares([gate](const std::string& share, const std::string& install) {
        gate->opened.wait();
        return memory(share, install);
    });
    const auto runs = std::make_shared<std::atomic<int>>(0);
    const auto begin = steady_clock::now();
    const auto reasons = shares.run("s", "i", {noting(runs), noting(runs)}, shortPatience);
    EXPECT_LT(steady_clock::now() - begin, 5s);
    EXPECT_EQ(reasons, Reasons({"no answer within 0.05 seconds", "no answer within 0.05 seconds"}));
    gate->opening.set_value();
    waitUntilFree(shares, "s");
    EXPECT_EQ(*runs, 0) << "what was given up on must not happen later";
}

TEST(ServerShares, StepsBehindTheOneThatHangsAreNotBegunLater) {
    const auto gate = std::make_shared<Gate>();
    ServerShares shares(memory);
    const auto runs = std::make_shared<std::atomic<int>>(0);
    const auto reasons = shares.run(
        "s", "i", {noting(runs), [gate](FileSystem&) { gate->opened.wait(); }, noting(runs)}, shortPatience);
    EXPECT_EQ(reasons, Reasons({"", "no answer within 0.05 seconds", "no answer within 0.05 seconds"}));
    gate->opening.set_value();
    waitUntilFree(shares, "s");
    EXPECT_EQ(*runs, 1);
}

TEST(ServerShares, OnlyTheFirstCallWaitsForAShareThatHangs) {
    const auto gate = std::make_shared<Gate>();
    ServerShares shares(memory);
    shares.run("s", "i", {[gate](FileSystem&) { gate->opened.wait(); }}, shortPatience);
    const auto runs = std::make_shared<std::atomic<int>>(0);
    const auto begin = steady_clock::now();
    EXPECT_EQ(shares.run("s", "i", {noting(runs)}, longPatience),
              Reasons({"the server hasn't answered to an earlier change yet"}));
    EXPECT_EQ(shares.run("other", "i", {noting(runs)}, longPatience), Reasons({""}));
    EXPECT_LT(steady_clock::now() - begin, 30s);
    EXPECT_EQ(*runs, 1);
    gate->opening.set_value();
    waitUntilFree(shares, "s");
}

TEST(ServerShares, SlowButMovingIsWaitedFor) {
    ServerShares shares(memory);
    const auto slow = [](FileSystem&) { std::this_thread::sleep_for(100ms); };
    EXPECT_EQ(shares.run("s", "i", {slow, slow, slow, slow, slow}, {60s, 400ms}),
              Reasons({"", "", "", "", ""}));
}

TEST(ServerShares, TheWholeTimeIsLimitedToo) {
    const auto stop = std::make_shared<std::atomic<bool>>(false);
    ServerShares shares(memory);
    const auto slow = [stop](FileSystem&) {
        if (!*stop) std::this_thread::sleep_for(100ms);
    };
    const auto reasons = shares.run("s", "i", std::vector<ServerShares::Step>(50, slow), {300ms, 60s});
    *stop = true;
    EXPECT_EQ(reasons.front(), "");
    EXPECT_EQ(reasons.back(), "no answer within 0.3 seconds");
}

TEST(ServerShares, AThreadThatIsLeftBehindOutlivesTheShares) {
    const auto gate = std::make_shared<Gate>();
    std::promise<void> ended;
    auto end = ended.get_future();
    {
        ServerShares shares(memory);
        const auto step =
            [gate, ended = std::make_shared<std::promise<void>>(std::move(ended))](FileSystem& files) {
                gate->opened.wait();
                files.writeBytes("/a", "1");
                ended->set_value();
            };
        shares.run("s", "i", {step}, shortPatience);
    }
    gate->opening.set_value();
    EXPECT_EQ(end.wait_for(10s), std::future_status::ready);
}

}  // namespace
}  // namespace torvex
