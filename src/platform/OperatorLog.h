#pragma once

#include <exception>
#include <string_view>

namespace torvex {

/// What operators should know although the request goes on: a change that did not reach another server, the
/// reason why an operation answered with a refusal, who came to the door. Safe to share between threads.
class OperatorLog {
  public:
    virtual ~OperatorLog() = default;

    /// One line; it says what to do about it where that isn't plain.
    virtual void warn(std::string_view line) = 0;
    /// One line about what is as it should be.
    virtual void note(std::string_view line) = 0;
};

/// Tells the cause of what failed; `what` names it, as in "publishPage of page 12".
void warnOf(OperatorLog& log, std::string_view what, const std::exception& error);

/// Runs what follows on a change and can't undo it any more: a failure is told and does no harm.
template <typename Work>
void followUp(OperatorLog& log, std::string_view what, Work&& work) {
    try {
        work();
    } catch (const std::exception& error) {
        warnOf(log, what, error);
    }
}

}  // namespace torvex
