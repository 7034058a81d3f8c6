#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "accounts/SecondFactor.h"
#include "desk/desk.h"
#include "support/DoorTest.h"
#include "support/TimeCodes.h"

namespace torvex::test {

/// What tests of second factors do, on top of a base at the door.
template <typename Base>
class WithSecondFactor : public WithTimeCodes<Base> {
  protected:
    using Base::anna;
    using WithTimeCodes<Base>::secret;

    torvex::desk desk() {
        torvex::desk made(this->host.context());
        made.connect(this->connection());
        return made;
    }
    /// The login has a factor, whose last step lies far back: its codes on paper.
    std::vector<std::string> enrolled(int loginId) {
        giveSecondFactor(this->connection(), ofLogin(loginId), secret, 1, this->host.clock.now());
        return renewRecoveryCodes(this->connection(), ofLogin(loginId));
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
};

using SecondFactorTest = WithSecondFactor<DoorTest>;

}  // namespace torvex::test
