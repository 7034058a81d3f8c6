#pragma once

#include <chrono>

namespace torvex {

/// The moment by which something has to be done. As made, it never comes. A value; safe to copy everywhere.
class Deadline {
  public:
    using Clock = std::chrono::steady_clock;

    Deadline() = default;
    explicit Deadline(Clock::time_point until) : until_(until) {}
    static Deadline in(Clock::duration time) { return Deadline(Clock::now() + time); }

    Clock::time_point until() const { return until_; }
    bool isNever() const { return until_ == Clock::time_point::max(); }
    bool hasPassed() const { return !isNever() && Clock::now() >= until_; }
    Clock::duration left() const { return isNever() ? Clock::duration::max() : until_ - Clock::now(); }
    Deadline orEarlier(Deadline other) const { return until_ <= other.until_ ? *this : other; }

    /// Throws `Error` once it has passed. For loops and waits: the text reaches operators with the line of
    /// the operation that was at work.
    void check() const;

  private:
    Clock::time_point until_ = Clock::time_point::max();
};

}  // namespace torvex
