#pragma once

#include <chrono>
#include <cstdint>

namespace torvex::http2 {

/// Frames that cost work and bring no request forward. A client has a purse of them, which fills up again with
/// time, and faster as it takes what it asked for. Who has spent it means harm.
class FrameBudget {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    static constexpr std::int64_t full = 10'000;
    static constexpr std::int64_t perSecond = 1000;

    // What is paid for a frame. Browsers drop some dozen requests at once when a visitor leaves a page, and give room for
    // every other frame that they get; all else comes a few times in the life of a connection.
    static constexpr std::int64_t reset = 20;
    static constexpr std::int64_t settings = 100;
    static constexpr std::int64_t ping = 50;
    static constexpr std::int64_t other = 10;
    static constexpr std::int64_t window = 2;
    /// What is given for a frame of an answer that has been sent.
    static constexpr std::int64_t sent = 16;

    explicit FrameBudget(TimePoint now) : since_(now) {}

    /// False when there isn't so much left.
    bool spend(std::int64_t cost, TimePoint now) {
        refill(now);
        left_ -= cost;
        return left_ >= 0;
    }
    void earn(std::int64_t gain) { left_ = left_ + gain > full ? full : left_ + gain; }

  private:
    void refill(TimePoint now) {
        const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(now - since_);
        if (passed.count() <= 0) return;
        since_ += passed;
        earn(passed.count() * perSecond / 1000);
    }

    std::int64_t left_ = full;
    TimePoint since_;
};

}  // namespace torvex::http2
