#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace torvex {

class GuessThrottle;

/// One try to log in. The address that it comes from and the name that it is for are slowed down together:
/// neither many names from one place nor one name from many places can be guessed fast.
class LoginAttempt {
  public:
    /// Whose names they are: a visitor and an author of one name are two people.
    enum class Kind { Visitor, Author };

    /// `throttle` must outlive the attempt. Names ignore case and blanks around them; the empty one is
    /// nobody's and only counts for the address.
    LoginAttempt(GuessThrottle& throttle, Kind kind, std::string_view address, std::string_view name);

    /// How long it still has to wait; 0 when it may be made now.
    std::chrono::seconds wait() const;
    void failed();
    /// Forgives the name. Not the address: a guesser may have a login of its own.
    void succeeded();

  private:
    GuessThrottle& throttle_;
    std::string address_;
    std::string name_;
};

}  // namespace torvex
