#pragma once

#include <chrono>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace torvex {

/// Slows down whoever guesses passwords: after a few failures of one key (an address, a name) its next try
/// has to wait, twice as long after each further failure. A success forgets the key. Safe to share between
/// threads; remembers a bounded number of keys and forgets each a while after its last failure.
class GuessThrottle {
  public:
    using Clock = std::chrono::steady_clock;

    struct Options {
        int freeFailures = 5;  ///< people mistype; guessing programs need thousands of tries
        std::chrono::seconds firstWait{2};
        std::chrono::seconds longestWait{300};  ///< longer would let a guesser lock a person out for hours
        std::chrono::seconds forgetAfter{3600};
        std::size_t keys = 100'000;  ///< at some 100 bytes each
    };

    GuessThrottle() : GuessThrottle(Options()) {}
    explicit GuessThrottle(const Options& options) : options_(options) {}

    /// How long the key still has to wait; 0 when it may try now.
    std::chrono::seconds wait(std::string_view key, Clock::time_point now = Clock::now());
    void failed(std::string_view key, Clock::time_point now = Clock::now());
    void succeeded(std::string_view key);

  private:
    struct Record {
        int failures = 0;
        Clock::time_point last;
        Clock::time_point mayTryAt;
    };

    void makeRoom(Clock::time_point now);

    const Options options_;
    std::mutex mutex_;
    std::unordered_map<std::string, Record> records_;
};

}  // namespace torvex
