#include "modules/forum/PostRates.h"

#include <algorithm>

#include "platform/net/Peer.h"

namespace torvex {

bool PostRates::take(std::string_view address, std::string_view session, Clock::time_point now) {
    const std::scoped_lock guard(mutex_);
    if (taken_.size() + 2 > options_.keys) makeRoom(now);
    Times& ofAddress = timesOf("address " + networkOf(address), now);
    if (ofAddress.size() >= options_.ofAddress) return false;
    Times& ofSession = timesOf("session " + std::string(session), now);
    if (ofSession.size() >= options_.ofSession) return false;
    ofAddress.push_back(now);
    ofSession.push_back(now);
    return true;
}

/// Without those that are over.
PostRates::Times& PostRates::timesOf(const std::string& key, Clock::time_point now) {
    Times& times = taken_[key];
    while (!times.empty() && now - times.front() >= options_.window) times.pop_front();
    return times;
}

/// Drops what is over; and everything when nothing is, which only a flood of addresses can bring about.
void PostRates::makeRoom(Clock::time_point now) {
    std::erase_if(taken_, [&](const auto& entry) {
        return entry.second.empty() || now - entry.second.back() >= options_.window;
    });
    if (taken_.size() + 2 > options_.keys) taken_.clear();
}

}  // namespace torvex
