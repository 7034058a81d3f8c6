#pragma once

#include <ctime>
#include <string>

#include "accounts/TimeCode.h"
#include "platform/DateTime.h"

namespace torvex::test {

/// A telephone with a secret, and a clock that goes on, on top of a base with a `host`.
template <typename Base>
class WithTimeCodes : public Base {
  protected:
    /// The time goes on.
    void wait(std::int64_t seconds) {
        const std::int64_t wanted = this->host.clock.unixSeconds() + seconds;
        std::time_t moment = wanted;
        std::tm local{};
        localtime_r(&moment, &local);
        this->host.clock = FixedClock(DateTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                               local.tm_hour, local.tm_min, local.tm_sec});
    }
    std::int64_t step() { return stepAt(this->host.clock.unixSeconds()); }
    std::string code(std::int64_t stepsAhead = 0) {
        return timeCode(*bytesOfBase32(secret), step() + stepsAhead);
    }
    /// A code that none of the steps around has.
    std::string wrongCode() {
        for (int number = 0;; ++number) {
            const std::string one = std::to_string(100000 + number);
            if (one != code(-1) && one != code() && one != code(1)) return one;
        }
    }

    std::string secret = "GEZDGNBVGY3TQOJQGEZDGNBVGY3TQOJQ";
};

}  // namespace torvex::test
