#include "modules/forum/PostRates.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>

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

std::string networkOf(std::string_view address) {
    boost::system::error_code error;
    const auto parsed = boost::asio::ip::make_address(std::string(address), error);
    if (error) return std::string(address);
    if (parsed.is_v4()) return parsed.to_string();
    const auto v6 = parsed.to_v6();
    if (v6.is_v4_mapped()) return make_address_v4(boost::asio::ip::v4_mapped, v6).to_string();
    auto bytes = v6.to_bytes();
    std::fill(bytes.begin() + 8, bytes.end(), static_cast<unsigned char>(0));
    return boost::asio::ip::address_v6(bytes).to_string();
}

}  // namespace torvex
