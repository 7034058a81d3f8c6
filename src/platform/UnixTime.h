#pragma once

#include <cstdint>

namespace torvex {
class Clock;

/// Seconds since 1970 by the clock's time. Of the machine's clock it is exact also in the hour that comes twice
/// when summer time ends, which a civil time can't tell.
std::int64_t unixSeconds(const Clock& clock);

}  // namespace torvex
