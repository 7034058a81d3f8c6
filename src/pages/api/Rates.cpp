#include "pages/api/Rates.h"

#include <algorithm>
#include <cmath>

namespace torvex::api {

namespace {

/// By then every rate has given its whole burst back.
constexpr std::chrono::seconds forgotten{30};

}  // namespace

std::chrono::seconds Rates::take(const std::string& caller, const Rate& rate, Clock::time_point now) {
    const std::scoped_lock guard(mutex_);
    if (callers_.size() >= mostCallers && !callers_.contains(caller)) forgetOld(now);
    Allowance& own = callers_.try_emplace(caller, Allowance{rate.atOnce, now}).first->second;
    const double passed = std::chrono::duration<double>(now - own.at).count();
    own.calls = std::min(rate.atOnce, own.calls + std::max(passed, 0.0) * rate.perSecond);
    own.at = now;
    if (own.calls < 1)
        return std::chrono::seconds(static_cast<int>(std::ceil((1 - own.calls) / rate.perSecond)));
    own.calls -= 1;
    return std::chrono::seconds(0);
}

void Rates::forgetOld(Clock::time_point now) {
    std::erase_if(callers_, [now](const auto& one) { return now - one.second.at > forgotten; });
    if (callers_.size() < mostCallers) return;
    const auto oldest = std::min_element(callers_.begin(), callers_.end(), [](const auto& a, const auto& b) {
        return a.second.at < b.second.at;
    });
    callers_.erase(oldest);
}

std::size_t Rates::callers() const {
    const std::scoped_lock guard(mutex_);
    return callers_.size();
}

}  // namespace torvex::api
