#include "host/LineLog.h"

#include <gtest/gtest.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/ostream_sink.h>
#include <sstream>

namespace torvex {
namespace {

TEST(LineLog, WritesAWarningOfOneLine) {
    std::ostringstream out;
    spdlog::logger log("test", std::make_shared<spdlog::sinks::ostream_sink_mt>(out));
    log.set_pattern("%l %v");
    LineLog(log).warn("server \"b\"\r\nx\x01y: {} %s");
    EXPECT_EQ(out.str(), "warning server \"b\" | xy: {} %s\n");
}

}  // namespace
}  // namespace torvex
