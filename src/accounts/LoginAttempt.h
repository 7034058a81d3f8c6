#pragma once

#include <chrono>
#include <string_view>

#include "accounts/GuessThrottle.h"

namespace torvex {

/// One try to log in, which begins before its password is looked at.
class LoginAttempt {
  public:
    /// Whose names they are: a visitor and an author of one name are two people.
    enum class Kind { Visitor, Author };

    /// `throttle` must outlive the attempt. Names count as one when a database would take them for one:
    /// without regard to case, "ſ" like "s", and to blanks around them. The empty one is nobody's and only
    /// counts for the address.
    LoginAttempt(GuessThrottle& throttle, Kind kind, std::string_view address, std::string_view name);
    LoginAttempt(const LoginAttempt&) = delete;
    LoginAttempt& operator=(const LoginAttempt&) = delete;
    /// Leaves its place among the tests that run at once.
    ~LoginAttempt();

    /// 0, and the try counts as a failure until it is told otherwise; or how long it has to wait, and it
    /// mustn't be made. Called once. Waits a moment itself while many passwords are tested.
    std::chrono::seconds begin();
    /// How long the next try has to wait: to be asked after a failure.
    std::chrono::seconds waitAfterwards() const;
    void succeeded() { throttle_.succeeded(guess_); }
    /// No password was tested.
    void takeBack() { throttle_.takeBack(guess_); }

  private:
    GuessThrottle& throttle_;
    GuessThrottle::Guess guess_;
    bool hasPlace_ = false;
};

}  // namespace torvex
