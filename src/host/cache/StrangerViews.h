#pragma once

#include <array>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_set>

namespace torvex {

class Exchange;

/// Who of the visitors without a session has viewed what today. They are told apart by what their requests show of them
/// (address, browser, languages), of which nothing is kept but a hash that can't be turned back and means nothing on the
/// next day. All operations are safe from any thread.
class StrangerViews {
  public:
    StrangerViews();

    /// Whether the exchange's visitor is new to the node on the day (yyyymmdd); notes the view. Of more views than are
    /// kept the older half is forgotten, whose visitors are then new again.
    bool isFirst(const Exchange& exchange, std::string_view nodeId, std::string_view day);

    static constexpr std::size_t mostKept = 500'000;  ///< some 16 MB

  private:
    using Views = std::unordered_set<std::uint64_t>;

    std::uint64_t hashOf(std::string_view text) const;
    void beginDay(std::string_view day);

    std::mutex mutex_;
    std::array<unsigned char, 16> key_{};  ///< another one each day
    std::string day_;
    Views newer_;
    Views older_;
};

}  // namespace torvex
