#pragma once

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace torvex {

/// Failures that took long, each remembered for twelve times as long as it took and a minute at most: whoever
/// wants the same meanwhile is told at once, so that what fails slowly takes less than a tenth of anybody's
/// time. A quick failure costs nobody anything and is forgotten. Not safe to share between threads.
template <typename Failure>
class SlowFailures {
  public:
    using Clock = std::chrono::steady_clock;

    void add(const std::string& key, Clock::duration took, Failure failure) {
        if (took < quick) return;
        makeRoom();
        const auto until = Clock::now() + std::min<Clock::duration>(took * factor, longest);
        failures_.insert_or_assign(key, Entry{until, std::move(failure)});
    }
    void forget(const std::string& key) { failures_.erase(key); }

    std::optional<Failure> find(const std::string& key) {
        const auto found = failures_.find(key);
        if (found == failures_.end()) return std::nullopt;
        if (Clock::now() < found->second.until) return found->second.failure;
        failures_.erase(found);
        return std::nullopt;
    }

  private:
    static constexpr std::chrono::milliseconds quick{500};
    static constexpr int factor = 12;
    static constexpr std::chrono::seconds longest{60};
    static constexpr std::size_t most = 1000;

    struct Entry {
        Clock::time_point until;
        Failure failure;
    };

    /// At most so many: the one that ends first goes.
    void makeRoom() {
        if (failures_.size() < most) return;
        std::erase_if(failures_, [](const auto& entry) { return entry.second.until <= Clock::now(); });
        if (failures_.size() < most) return;
        failures_.erase(
            std::min_element(failures_.begin(), failures_.end(),
                             [](const auto& a, const auto& b) { return a.second.until < b.second.until; }));
    }

    std::map<std::string, Entry> failures_;
};

}  // namespace torvex
