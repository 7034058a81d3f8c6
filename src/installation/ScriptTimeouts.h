#pragma once

#include <initializer_list>

#include "platform/Deadline.h"
#include "platform/Value.h"

namespace torvex {
struct HostContext;

/// The first of the values that reads as a number above 0, as seconds that a program can wait; else the last
/// argument.
double secondsOf(std::initializer_list<Value> values, double otherwise);

/// How many seconds an ordinary request may take, in the same way; what the request has now where neither says.
/// At least one.
int normalTimeout(const HostContext& host);

/// How many seconds a long request may take: by the login's own setting, or the installation's where it has
/// none.
double longTimeout(const HostContext& host);

/// The request may take the long time while this lives, and the normal one after it, for which the time in
/// between doesn't count.
class LongScript {
  public:
    explicit LongScript(HostContext& host);
    LongScript(const LongScript&) = delete;
    LongScript& operator=(const LongScript&) = delete;
    ~LongScript();

  private:
    HostContext& host_;
    int normal_;
    Deadline::Clock::time_point begin_ = Deadline::Clock::now();
};

}  // namespace torvex
