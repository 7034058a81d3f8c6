#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace torvex {

/// How many passwords are tested at once. A hash costs 50 ms and 32 MB, so that many visitors who log in at
/// once, or pretend to, would leave the pages no processor and no memory. Further ones wait, and only so many
/// of them, as each who waits holds a worker. Safe to share between threads.
class CheckPlaces {
  public:
    struct Options {
        std::size_t atOnce = 8;
        std::size_t waiting = 16;  ///< of 64 workers, a quarter
        /// Of all: where a name is known, others don't take the last place.
        std::size_t waitingKnown = 32;
        std::chrono::milliseconds patience{3000};
    };

    CheckPlaces() : CheckPlaces(Options()) {}
    explicit CheckPlaces(const Options& options) : options_(options) {}

    /// Waits for a place; false when too many do, or for too long. Each true wants its `leave`.
    bool enter(bool isKnown);
    void leave();

  private:
    Options options_;
    std::mutex mutex_;
    std::condition_variable left_;
    std::size_t inside_ = 0;
    std::size_t waiting_ = 0;
};

}  // namespace torvex
