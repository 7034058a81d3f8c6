#pragma once

#include <ctime>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "accounts/SecondFactor.h"
#include "accounts/TimeCode.h"
#include "desk/desk.h"
#include "platform/DateTime.h"
#include "support/DoorTest.h"

namespace torvex::test {

/// What tests of second factors do, on top of a base at the door.
template <typename Base>
class WithSecondFactor : public Base {
  protected:
    using Base::anna;

    torvex::desk desk() {
        torvex::desk made(this->host.context());
        made.connect(this->connection());
        return made;
    }
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
    /// The login has a factor, whose last step lies far back: its codes on paper.
    std::vector<std::string> enrolled(int loginId) {
        giveSecondFactor(this->connection(), loginId, secret, 1, this->host.clock.now());
        return renewRecoveryCodes(this->connection(), loginId);
    }
    void demandOf(int loginId, int roleId = 33) {
        this->row("TORVEX_ROLES", {{"roleId", roleId}, {"roleName", "Careful"}, {"secondFactor", 1}});
        this->row("TORVEX_ROLES_LOGINS", {{"roleId", roleId}, {"loginId", loginId}});
    }
    std::string factorsAndCodes() {
        return this->cell("select count(*) from TORVEX_SECOND_FACTORS") + "|" +
               this->cell("select count(*) from TORVEX_RECOVERY_CODES");
    }
    static std::vector<std::string> words(const std::string& text) {
        std::istringstream stream(text);
        return {std::istream_iterator<std::string>(stream), {}};
    }

    std::string secret = "GEZDGNBVGY3TQOJQGEZDGNBVGY3TQOJQ";
};

using SecondFactorTest = WithSecondFactor<DoorTest>;

}  // namespace torvex::test
