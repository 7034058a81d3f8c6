#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/OperatorLog.h"

namespace spdlog {
class logger;
}

namespace torvex {

/// The program's log, as all but the start of the program writes it. Each entry is one line, whatever the
/// text holds, and cut; lines that come again and again are counted in place of being repeated, so that no
/// visitor can fill the disk. Safe to share between threads.
class LineLog final : public OperatorLog {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Now = std::function<TimePoint()>;

    /// `log` outlives the object.
    explicit LineLog(spdlog::logger& log, Now now = &std::chrono::steady_clock::now);
    LineLog(const LineLog&) = delete;
    LineLog& operator=(const LineLog&) = delete;
    /// Writes the counts that are left.
    ~LineLog() override;

    /// The same line is written once in a minute.
    void warn(std::string_view line) override;
    void note(std::string_view line) override;
    void info(std::string_view line);
    void error(std::string_view line);

    /// One of a kind of errors that visitors can bring about at will, each with a text of its own: ten of a
    /// kind are written in a minute.
    void failure(std::string_view kind, std::string_view line);

    /// Writes how many lines were left out in the minutes that are over; to be called about every second.
    void writeCounts();

  private:
    enum class Level { Info, Warning, Error };
    struct Kind {
        Level level;
        TimePoint since;
        std::string line;  ///< the first of the kind
        std::uint64_t written = 0;
        std::uint64_t leftOut = 0;
    };

    void add(Level level, std::string kind, std::uint64_t most, const std::string& line);
    void put(Level level, const std::string& line);
    void putCount(const Kind& kind);
    void endMinutes(TimePoint now);

    spdlog::logger& log_;
    Now now_;
    std::mutex mutex_;
    std::unordered_map<std::string, Kind> kinds_;
};

}  // namespace torvex
