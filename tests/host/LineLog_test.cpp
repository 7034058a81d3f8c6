#include "host/LineLog.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/ostream_sink.h>
#include <sstream>

namespace torvex {
namespace {

using testing::HasSubstr;
using namespace std::chrono_literals;

class LineLogTest : public testing::Test {
  protected:
    LineLogTest() { logger_.set_pattern("%l %v"); }

    std::string said() { return out_.str(); }
    std::size_t lines() {
        const std::string text = said();
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }

    std::ostringstream out_;
    spdlog::logger logger_{"test", std::make_shared<spdlog::sinks::ostream_sink_mt>(out_)};
    LineLog::TimePoint now_ = std::chrono::steady_clock::now();
    LineLog log_{logger_, [this] { return now_; }};
};

TEST_F(LineLogTest, WritesAWarningOfOneLine) {
    log_.warn("server \"b\"\r\nx\x01y: {} %s");
    EXPECT_EQ(said(), "warning server \"b\" | x\\x01y: {} %s\n");
}

TEST_F(LineLogTest, TheSameLineIsCountedInPlaceOfBeingRepeated) {
    for (int i = 0; i < 20'604; ++i) log_.warn("the disk is full");
    log_.warn("another thing");
    EXPECT_EQ(said(), "warning the disk is full\nwarning another thing\n");
    now_ += 61s;
    log_.writeCounts();
    EXPECT_THAT(said(), HasSubstr("warning and 20,603 more of these: the disk is full\n"));
    log_.warn("the disk is full");
    EXPECT_EQ(lines(), 4U);
}

TEST_F(LineLogTest, ANoteIsCountedLikewise) {
    for (int i = 0; i < 11; ++i) log_.note("somebody\nleft");
    EXPECT_EQ(said(), "info somebody | left\n");
    now_ += 61s;
    log_.writeCounts();
    EXPECT_THAT(said(), HasSubstr("info and 10 more of these: somebody | left\n"));
}

TEST_F(LineLogTest, FailuresOfOneKindAreCountedAlthoughTheirTextsDiffer) {
    for (int i = 0; i < 10'010; ++i) log_.failure("/a.asp getPage!", "reference " + std::to_string(i));
    log_.failure("/b.asp getPage!", "reference b");
    EXPECT_EQ(lines(), 11U);
    now_ += 61s;
    log_.warn("later");
    EXPECT_THAT(said(), HasSubstr("error and 10,000 more of these: reference 0\n"));
    EXPECT_EQ(lines(), 13U);
}

TEST_F(LineLogTest, ManyKindsDontFillTheLogEither) {
    for (int i = 0; i < 10'000; ++i) log_.failure("kind " + std::to_string(i), "failure");
    EXPECT_LT(lines(), 300U);
}

TEST_F(LineLogTest, WarningsOfARunOverManyPagesAreAllWritten) {
    for (int i = 0; i < 1000; ++i) log_.warn("page " + std::to_string(i) + " was not copied");
    EXPECT_EQ(lines(), 1000U);
}

TEST_F(LineLogTest, ALineIsCut) {
    log_.warn(std::string(2'000'000, 'x'));
    log_.failure("kind", std::string(2'000'000, 'x'));
    log_.error(std::string(2'000'000, 'x'));
    EXPECT_LT(said().size(), 5'000U);
}

TEST(LineLog, WritesTheCountsThatAreLeftAtItsEnd) {
    std::ostringstream out;
    spdlog::logger logger("test", std::make_shared<spdlog::sinks::ostream_sink_mt>(out));
    {
        LineLog log(logger);
        for (int i = 0; i < 3; ++i) log.error("again");
    }
    EXPECT_THAT(out.str(), HasSubstr("and 2 more of these: again"));
}

}  // namespace
}  // namespace torvex
