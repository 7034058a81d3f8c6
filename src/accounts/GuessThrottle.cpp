#include "accounts/GuessThrottle.h"

#include <algorithm>

namespace torvex {

std::chrono::seconds GuessThrottle::wait(std::string_view key, Clock::time_point now) {
    const std::scoped_lock guard(mutex_);
    const auto found = records_.find(std::string(key));
    if (found == records_.end() || found->second.mayTryAt <= now) return std::chrono::seconds(0);
    return std::chrono::ceil<std::chrono::seconds>(found->second.mayTryAt - now);
}

void GuessThrottle::failed(std::string_view key, Clock::time_point now) {
    const std::scoped_lock guard(mutex_);
    if (records_.size() >= options_.keys) makeRoom(now);
    Record& record = records_[std::string(key)];
    if (record.failures > 0 && now - record.last > options_.forgetAfter) record.failures = 0;
    ++record.failures;
    record.last = now;
    const int doublings = std::min(record.failures - options_.freeFailures, 16);
    record.mayTryAt = doublings <= 0
                          ? now
                          : now + std::min(options_.longestWait, options_.firstWait * (1 << (doublings - 1)));
}

void GuessThrottle::succeeded(std::string_view key) {
    const std::scoped_lock guard(mutex_);
    records_.erase(std::string(key));
}

/// Drops what is old; and everything when nothing is, which only a flood of keys can bring about.
void GuessThrottle::makeRoom(Clock::time_point now) {
    std::erase_if(records_,
                  [&](const auto& entry) { return now - entry.second.last > options_.forgetAfter; });
    if (records_.size() < options_.keys) return;
    std::erase_if(records_, [&](const auto& entry) { return entry.second.mayTryAt <= now; });
    if (records_.size() >= options_.keys) records_.clear();
}

}  // namespace torvex
