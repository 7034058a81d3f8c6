#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <unordered_map>

namespace torvex {

/// How often something has failed, by keys, and how long the next try of a key has to wait for it: not at all
/// after the first few failures, then twice as long after each further one. Remembers a bounded number of
/// keys, and forgets each a while after its last failure. Not safe to share: whoever owns it locks.
class FailureCounts {
  public:
    using Clock = std::chrono::steady_clock;

    struct Options {
        int freeFailures;
        std::chrono::seconds firstWait;
        std::chrono::seconds longestWait;
        std::chrono::seconds forgetAfter;
        std::size_t keys;  ///< at some 150 bytes each
    };

    explicit FailureCounts(const Options& options) : options_(options) {}

    /// How long the key still has to wait; 0 when it may try now.
    std::chrono::seconds wait(const std::string& key, Clock::time_point now) const;
    /// Counts one more; gives when the one before was, as `takeBack` wants it.
    Clock::time_point count(const std::string& key, Clock::time_point now);
    /// The failure that was counted at `counted` was none. What waits for others goes on waiting.
    void takeBack(const std::string& key, Clock::time_point counted, Clock::time_point before);
    void forget(const std::string& key) { records_.erase(key); }
    std::size_t size() const { return records_.size(); }

  private:
    struct Record {
        int failures = 0;
        Clock::time_point last{};
    };

    std::chrono::seconds waitAfter(int failures) const;
    void makeRoom(Clock::time_point now);

    Options options_;
    std::unordered_map<std::string, Record> records_;
};

}  // namespace torvex
