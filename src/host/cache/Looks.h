#pragma once

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/db/TableStates.h"

namespace torvex {

class Clock;

/// The state of things at one moment, by which kept pages are judged.
struct Look {
    std::uint64_t number = 0;  ///< higher than that of every look, of any loop, that was begun before
    db::SharedStates content;  ///< null while it can't be told
    std::string today;         ///< yyyymmdd
};

/// The looks of one event loop. A request may be answered by any look that was begun after its first byte had come, and
/// of the requests that the system reports together all have come before the first of them is read. So one look serves
/// them all: it ends when the loop has gone through what waited for it when the look was begun, and before the loop
/// asks the system for more. Belongs to the loop's thread.
class Looks {
  public:
    using OpenWatch = std::function<std::unique_ptr<db::ContentWatch>()>;

    /// `open` may throw; it is tried again a while later. What `loop` runs must be run by one thread, in the order in
    /// which it was posted.
    Looks(boost::asio::io_context& loop, const Clock& clock, OpenWatch open)
        : loop_(loop), clock_(clock), open_(std::move(open)) {}

    /// For a request whose first byte had come before the loop was told of it.
    const Look& now();
    /// Whether the content must be asked for its state, which takes a while.
    bool mustAsk();
    /// The same for one request, when that is so: calls back on the loop.
    void ask(std::function<void(const Look&)> done);
    /// Before requests of which only that can be said that they have come by now.
    void end() { look_.reset(); }

  private:
    db::SharedStates content();
    db::ContentWatch* watch();

    boost::asio::io_context& loop_;
    const Clock& clock_;
    const OpenWatch open_;
    std::optional<Look> look_;
    std::unique_ptr<db::ContentWatch> watch_;
    std::chrono::steady_clock::time_point triedAt_{};
};

}  // namespace torvex
