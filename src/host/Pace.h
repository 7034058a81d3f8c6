#pragma once

#include <chrono>
#include <cstdint>

namespace torvex {

struct ServerOptions;
struct SpeedLimits;

/// Whether so many bytes since that time are more than a trickle.
bool isFastEnough(const SpeedLimits& limits, std::uint64_t bytes, std::chrono::steady_clock::time_point since,
                  std::chrono::steady_clock::time_point now);

/// Whether a reader takes what it is sent. What our system has taken over from us says nothing, as it may hold
/// megabytes: what counts is what the reader's has acknowledged.
class ReaderPace {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// From here on, when so many bytes had been written before.
    void begin(std::uint64_t written, TimePoint now);
    /// `written` bytes in all have been given to the socket by now.
    bool isKept(const ServerOptions& options, int socket, std::uint64_t written, TimePoint now);

  private:
    std::uint64_t before_ = 0;
    std::uint64_t taken_ = 0;
    TimePoint since_{};
    TimePoint lastTaken_{};
};

}  // namespace torvex
