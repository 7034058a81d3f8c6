#include "host/LineLog.h"

#include <fmt/format.h>
#include <spdlog/logger.h>

#include "platform/text/LogText.h"

namespace torvex {

namespace {

constexpr std::chrono::minutes window{1};
constexpr std::uint64_t mostFailures = 10;    ///< enough to see what they have in common
constexpr std::uint64_t mostOthers = 1000;    ///< a run over many pages may have as much to say
constexpr std::size_t mostKinds = 256;        ///< what comes beyond them in one minute counts as one kind
constexpr std::size_t lineCharacters = 1000;  ///< of one line of a text; texts from outside are cut before

/// 20603 as "20,603".
std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3;) digits.insert(at -= 3, 1, ',');
    return digits;
}

}  // namespace

LineLog::LineLog(spdlog::logger& log, Now now) : log_(log), now_(std::move(now)) {}

LineLog::~LineLog() {
    const std::scoped_lock guard(mutex_);
    for (const auto& [name, kind] : kinds_) putCount(kind);
}

void LineLog::warn(std::string_view line) {
    const std::string safe = chainForLog(line, lineCharacters);
    add(Level::Warning, safe, 1, safe);
}

void LineLog::note(std::string_view line) {
    const std::string safe = chainForLog(line, lineCharacters);
    add(Level::Info, safe, 1, safe);
}

void LineLog::error(std::string_view line) {
    const std::string safe = chainForLog(line, lineCharacters);
    add(Level::Error, safe, 1, safe);
}

/// What the program tells of itself: never many, and none may be missed.
void LineLog::info(std::string_view line) {
    const std::string safe = chainForLog(line, lineCharacters);
    const std::scoped_lock guard(mutex_);
    put(Level::Info, safe);
}

void LineLog::failure(std::string_view kind, std::string_view line) {
    add(Level::Error, chainForLog(kind), mostFailures, chainForLog(line, lineCharacters * 2));
}

void LineLog::add(Level level, std::string kind, std::uint64_t most, const std::string& line) {
    const std::scoped_lock guard(mutex_);
    const TimePoint now = now_();
    endMinutes(now);
    if (kinds_.size() >= mostKinds && kinds_.find(kind) == kinds_.end()) {
        most = most == 1 ? mostOthers : most;
        kind = std::to_string(most);
    }
    Kind& entry = kinds_.try_emplace(std::move(kind), Kind{level, now, line}).first->second;
    if (entry.written >= most) {
        ++entry.leftOut;
        return;
    }
    ++entry.written;
    put(level, line);
}

void LineLog::writeCounts() {
    const std::scoped_lock guard(mutex_);
    endMinutes(now_());
}

void LineLog::endMinutes(TimePoint now) {
    std::erase_if(kinds_, [&](const auto& entry) {
        if (now - entry.second.since < window) return false;
        putCount(entry.second);
        return true;
    });
}

void LineLog::putCount(const Kind& kind) {
    if (kind.leftOut == 0) return;
    put(kind.level, fmt::format("and {} more of these: {}", grouped(kind.leftOut), forLog(kind.line)));
}

void LineLog::put(Level level, const std::string& line) {
    const auto spoken = level == Level::Info      ? spdlog::level::info
                        : level == Level::Warning ? spdlog::level::warn
                                                  : spdlog::level::err;
    log_.log(spoken, "{}", line);
}

}  // namespace torvex
