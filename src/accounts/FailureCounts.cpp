#include "accounts/FailureCounts.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace torvex {

std::chrono::seconds FailureCounts::wait(const std::string& key, Clock::time_point now) const {
    const auto found = records_.find(key);
    if (found == records_.end()) return std::chrono::seconds(0);
    const auto mayTryAt = found->second.last + waitAfter(found->second.failures);
    return mayTryAt <= now ? std::chrono::seconds(0)
                           : std::chrono::ceil<std::chrono::seconds>(mayTryAt - now);
}

std::chrono::seconds FailureCounts::waitAfter(int failures) const {
    const int doublings = std::min(failures - options_.freeFailures, 16);
    if (doublings <= 0) return std::chrono::seconds(0);
    return std::min(options_.longestWait, options_.firstWait * (1 << (doublings - 1)));
}

FailureCounts::Clock::time_point FailureCounts::count(const std::string& key, Clock::time_point now) {
    if (records_.size() >= options_.keys && !records_.contains(key)) makeRoom(now);
    Record& record = records_[key];
    if (record.failures > 0 && now - record.last > options_.forgetAfter) record = {};
    ++record.failures;
    return std::exchange(record.last, now);
}

void FailureCounts::takeBack(const std::string& key, Clock::time_point counted, Clock::time_point before) {
    const auto found = records_.find(key);
    if (found == records_.end()) return;
    Record& record = found->second;
    if (--record.failures <= 0) {
        records_.erase(found);
    } else if (record.last == counted) {
        record.last = before;
    }
}

/// Drops what is old, and of the rest the half with the fewest failures: a flood of keys brings each of its
/// own a failure or two, and a key that is being guessed has more.
void FailureCounts::makeRoom(Clock::time_point now) {
    std::erase_if(records_,
                  [&](const auto& entry) { return now - entry.second.last > options_.forgetAfter; });
    if (records_.size() < options_.keys) return;
    using Rank = std::tuple<int, Clock::time_point, std::string>;
    std::vector<Rank> ranks;
    ranks.reserve(records_.size());
    for (const auto& [key, record] : records_) ranks.emplace_back(record.failures, record.last, key);
    const auto middle = ranks.begin() + static_cast<std::ptrdiff_t>((ranks.size() + 1) / 2);
    std::nth_element(ranks.begin(), middle, ranks.end());
    std::for_each(ranks.begin(), middle, [this](const Rank& rank) { records_.erase(std::get<2>(rank)); });
}

}  // namespace torvex
