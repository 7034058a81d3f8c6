#pragma once

#include <string_view>

namespace torvex {

/// What operators should know although the request goes on: a change that did not reach another server, the
/// reason why an operation answered with a refusal. Safe to share between threads.
class OperatorLog {
  public:
    virtual ~OperatorLog() = default;

    /// One line; it says what to do about it where that isn't plain.
    virtual void warn(std::string_view line) = 0;
};

}  // namespace torvex
