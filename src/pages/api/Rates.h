#pragma once

#include <chrono>
#include <mutex>
#include <string>
#include <unordered_map>

namespace torvex::api {

/// How often somebody may call: `perSecond` for long, `atOnce` in a burst.
struct Rate {
    double perSecond;
    double atOnce;
};

namespace rate {
inline constexpr Rate ofSessions{20, 100};
inline constexpr Rate ofTokens{10, 50};
}  // namespace rate

/// Counts the calls of each caller. Safe to share between threads. Remembers a bounded number of callers: those
/// who haven't called for longest are forgotten first, which gives them their burst back.
class Rates {
  public:
    using Clock = std::chrono::steady_clock;

    /// How long the caller has to wait; 0 when this call, which then counts, may go on. `caller` names a session,
    /// a token or an address.
    std::chrono::seconds take(const std::string& caller, const Rate& rate,
                              Clock::time_point now = Clock::now());

    std::size_t callers() const;

    static constexpr std::size_t mostCallers = 20'000;

  private:
    struct Allowance {
        double calls;
        Clock::time_point at;
    };

    void forgetOld(Clock::time_point now);

    mutable std::mutex mutex_;
    std::unordered_map<std::string, Allowance> callers_;
};

}  // namespace torvex::api
