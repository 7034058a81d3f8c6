#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace torvex {

/// How many reports of content policies are taken: a few in each minute, which is enough to see what breaks a
/// policy, however many visitors' browsers send them. Shared by all requests; safe from any thread.
class PolicyReports {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    static constexpr std::uint32_t mostInMinute = 20;

    /// Whether a further one would be taken.
    bool areWanted(TimePoint now = std::chrono::steady_clock::now()) const;
    /// Counts one; false when there were enough.
    bool take(TimePoint now = std::chrono::steady_clock::now());

  private:
    /// Minute and count in one, so that both change together.
    std::atomic<std::uint64_t> taken_ = 0;
};

}  // namespace torvex
