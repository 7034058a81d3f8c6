#pragma once

#include <chrono>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace torvex {

/// How often one address, or one session, has posted lately. Safe to share between threads; remembers a
/// bounded number of keys.
class PostRates {
  public:
    using Clock = std::chrono::steady_clock;

    struct Options {
        std::chrono::seconds window{600};
        std::size_t ofAddress = 20;  ///< a school class sits behind one address
        std::size_t ofSession = 6;
        std::size_t keys = 50'000;  ///< at some 200 bytes each
    };

    PostRates() : PostRates(Options()) {}
    explicit PostRates(const Options& options) : options_(options) {}

    /// Whether one more may be posted; if so, it is counted for both. Addresses of one network are one.
    bool take(std::string_view address, std::string_view session, Clock::time_point now = Clock::now());

  private:
    using Times = std::deque<Clock::time_point>;

    Times& timesOf(const std::string& key, Clock::time_point now);
    void makeRoom(Clock::time_point now);

    const Options options_;
    std::mutex mutex_;
    std::unordered_map<std::string, Times> taken_;
};

}  // namespace torvex
