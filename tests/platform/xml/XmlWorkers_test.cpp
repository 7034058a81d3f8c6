#include "platform/xml/XmlWorkers.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "platform/workers/WorkerLimits.h"
#include "support/FeedTest.h"
#include "support/RunningProgram.h"
#include "support/TestDatabase.h"

namespace torvex {
namespace {

using namespace std::chrono_literals;

std::string sheet(const std::string& body) {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><xsl:output "
           "method='text'/><xsl:param name='q'/>" +
           body + "</xsl:stylesheet>";
}
std::string rootSheet(const std::string& body) {
    return sheet("<xsl:template match='/'>" + body + "</xsl:template>");
}

/// Doubles a text so many times.
std::string growing(int times) {
    return sheet(
        "<xsl:template match='/' name='grow'><xsl:param name='n' select='" + std::to_string(times) +
        "'/><xsl:param name='t' select=\"'xxxxxxxxxxxxxxxx'\"/><xsl:choose><xsl:when test='$n &gt; "
        "0'><xsl:call-template name='grow'><xsl:with-param name='n' select='$n - 1'/><xsl:with-param "
        "name='t' select='concat($t, $t)'/></xsl:call-template></xsl:when><xsl:otherwise><xsl:value-of "
        "select='string-length($t)'/></xsl:otherwise></xsl:choose></xsl:template>");
}

/// Takes minutes in one step of an expression: its time grows with the product of two lengths.
std::string busy() {
    return rootSheet("<xsl:value-of select=\"string-length(translate(/r/s, /r/t, ''))\"/>");
}
std::string busyData() {
    return "<r><s>" + std::string(400'000, 'x') + "</s><t>" + std::string(400'000, 'y') + "</t></r>";
}

class XmlWorkersTest : public testing::Test {
  protected:
    std::string run(const std::string& stylesheet, const std::string& data = "<r/>",
                    const NamedValues& parameters = {}) {
        try {
            return workers().transform({stylesheet}, {data}, parameters, {});
        } catch (const XmlError& error) {
            return std::string("error: ") + error.what();
        }
    }
    XmlWorkers& workers() {
        if (!workers_) workers_.emplace(program, admission, limits);
        return *workers_;
    }

    std::string program = test::programPath();
    Admission admission{16};
    XmlWorkersLimits limits;

  private:
    std::optional<XmlWorkers> workers_;
};

TEST_F(XmlWorkersTest, TransformsAndSaysWhatIsWrong) {
    EXPECT_EQ(run(rootSheet("<xsl:value-of select='r'/>,<xsl:value-of select='$q'/>"), "<r>\u00e9</r>",
                  {{"q", "it's"}}),
              "\u00e9,it's");
    EXPECT_EQ(run(rootSheet("<xsl:value-of select='foo(1)'/>")), "error: line 1: function foo not found");
    EXPECT_EQ(run("<r", "<r"), "error: line 1: Couldn't find end of Start Tag r line 1");
}

TEST_F(XmlWorkersTest, AFaultKeepsItsNumber) {
    try {
        workers().check({"<a></b>"}, {});
        FAIL();
    } catch (const XmlError& error) {
        EXPECT_EQ(error.code(), 76);
        EXPECT_STREQ(error.what(), "line 1: Opening and ending tag mismatch: a line 1 and b");
    }
    EXPECT_NO_THROW(workers().check({"<a/>"}, {}));
}

TEST_F(XmlWorkersTest, KnowsTheEncodingsOfOldWithoutFiles) {
    EXPECT_EQ(run(rootSheet("<xsl:value-of select='r'/>"),
                  "<?xml version='1.0' encoding='windows-1252'?><r>\x80</r>"),
              "\u20ac");
    EXPECT_EQ(run(rootSheet("<xsl:value-of select='r'/>"),
                  "<?xml version='1.0' encoding='Shift_JIS'?><r>\x93\xFA</r>"),
              "\u65e5");
}

TEST_F(XmlWorkersTest, WorkersAreUsedAgain) {
    limits.workers = 1;
    run(rootSheet("x"));
    const auto begin = Deadline::Clock::now();
    for (int n = 0; n < 50; ++n) EXPECT_EQ(run(rootSheet("x" + std::to_string(n))), "x" + std::to_string(n));
    EXPECT_LT(Deadline::Clock::now() - begin, 2s);
}

TEST_F(XmlWorkersTest, AWorkerThatHasServedEnoughIsReplaced) {
    limits.workers = 1;
    limits.requests = 2;
    for (int n = 0; n < 5; ++n) EXPECT_EQ(run(rootSheet("x")), "x");
}

TEST_F(XmlWorkersTest, WorkWithoutEndIsEnded) {
    const auto begin = Deadline::Clock::now();
    EXPECT_EQ(run(busy(), busyData()), "error: the document took too long to process");
    EXPECT_LT(Deadline::Clock::now() - begin, 10s);
    EXPECT_EQ(run(rootSheet("fine")), "fine");
}

TEST_F(XmlWorkersTest, WhatTookTooLongIsRefusedAtOnceForAWhile) {
    limits.patience = 700ms;
    run(busy(), busyData());
    const auto begin = Deadline::Clock::now();
    for (int n = 0; n < 20; ++n) {
        EXPECT_EQ(run(busy(), busyData(), {{"q", std::to_string(n)}}),
                  "error: the document took too long to process");
    }
    EXPECT_LT(Deadline::Clock::now() - begin, 500ms);
}

TEST_F(XmlWorkersTest, WorkThatTakesTheMachinesMemoryIsEnded) {
    const std::string result = run(growing(28));
    EXPECT_THAT(result, testing::StartsWith("error: "));
    EXPECT_EQ(run(rootSheet("fine")), "fine");
    EXPECT_EQ(run(growing(10)), "16384");
}

TEST_F(XmlWorkersTest, TheDeadlineOfTheRequestCounts) {
    const auto begin = Deadline::Clock::now();
    EXPECT_THROW(workers().transform({busy()}, {busyData()}, {}, Deadline::in(300ms)), XmlError);
    EXPECT_LT(Deadline::Clock::now() - begin, 2s);
}

TEST_F(XmlWorkersTest, ManyThreadsShareTheWorkers) {
    workers();  // made by one thread
    std::vector<std::thread> threads;
    std::atomic<int> right = 0;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&, thread] {
            for (int n = 0; n < 20; ++n) {
                const std::string text = std::to_string(thread) + "." + std::to_string(n);
                right += run(rootSheet(text)) == text ? 1 : 0;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(right, 160);
}

TEST_F(XmlWorkersTest, CancellingEndsWhatIsAtWork) {
    workers();
    std::thread canceller([&] {
        std::this_thread::sleep_for(200ms);
        workers().cancel();
    });
    const auto begin = Deadline::Clock::now();
    EXPECT_THAT(run(busy(), busyData()), testing::StartsWith("error: "));
    EXPECT_LT(Deadline::Clock::now() - begin, 1500ms);
    EXPECT_EQ(run(rootSheet("x")), "error: the server is about to end");
    canceller.join();
}

/// Of the helpers that this process has: the line of a file below /proc/PID that begins with `start`.
std::vector<std::string> ofHelpers(const std::string& file, const std::string& start) {
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream command(entry.path() / "cmdline", std::ios::binary);
        const std::string words{std::istreambuf_iterator<char>(command), {}};
        if (words.find("--xml-worker") == std::string::npos) continue;
        std::string parent;
        std::ifstream status(entry.path() / "status");
        while (std::getline(status, parent) && !parent.starts_with("PPid:")) {
        }
        if (parent != "PPid:\t" + std::to_string(::getpid())) continue;
        std::ifstream asked(entry.path() / file);
        for (std::string line; std::getline(asked, line);) {
            if (line.starts_with(start)) lines.push_back(line);
        }
    }
    return lines;
}

TEST_F(XmlWorkersTest, HelpersAreConfined) {
    using testing::Each;
    using testing::HasSubstr;
    using testing::SizeIs;
    run(rootSheet("x"));
    EXPECT_THAT(ofHelpers("status", "NoNewPrivs:"),
                testing::AllOf(testing::Not(testing::IsEmpty()), Each("NoNewPrivs:\t1")));
    EXPECT_THAT(ofHelpers("status", "Seccomp:"), Each("Seccomp:\t2"));
    EXPECT_THAT(ofHelpers("limits", "Max open files"), Each(HasSubstr(isSanitized ? " 5 " : " 3 ")));
    EXPECT_THAT(ofHelpers("limits", "Max cpu time"), Each(HasSubstr(" 60 ")));
    EXPECT_THAT(ofHelpers("limits", "Max address space"), Each(testing::Not(HasSubstr("unlimited"))));
    EXPECT_THAT(ofHelpers("limits", "Max core file size"), Each(HasSubstr(" 0 ")));
}

TEST_F(XmlWorkersTest, AProgramThatCantBeStartedIsAnError) {
    program = "/nonexistent/torvex";
    EXPECT_EQ(run(rootSheet("x")), "error: the helper for XML can't be started");
}

TEST_F(XmlWorkersTest, AProgramThatEndsIsAnError) {
    program = "/bin/true";
    EXPECT_EQ(run(rootSheet("x")), "error: the helper for XML ended");
}

}  // namespace
}  // namespace torvex
