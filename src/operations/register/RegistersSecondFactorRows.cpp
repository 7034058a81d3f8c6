#include "accounts/AdminEntries.h"
#include "operations/register/RegistersRows.h"
#include "operations/register/SecondFactorLabels.h"

namespace torvex::operations {

std::vector<Row<registers>> registersSecondFactorRows() {
    return {
        writes("resetSecondFactor", &registers::resetSecondFactor,
               {argument("loginId"), argument("advId", 0)},
               "Takes the second factor and its recovery codes from a login whose owner has lost them.",
               editAccess(adminEntry::logins))
            .codes({code("", "It is gone."), notLoggedIn(),
                    refusal(-1, "There is no such login.", label::loginGone),
                    refusal(-2, "It is the system administrator's.", label::factorOfSa),
                    refusal(-3, "The login has no second factor.", label::hasNoFactor), failed()}),
        writes(
            "demandSecondFactor", &registers::demandSecondFactor,
            {argument("roleId"), argument("isDemanded"), argument("advId", 0)},
            "Decides whether logins with a role must have a second factor: those without can do nothing over "
            "the network until they have set one up.",
            editAccess(adminEntry::roles))
            .codes({code(0, "It is saved."), refusal(-1, "The role is gone.", label::gone),
                    refusal(-4, "Another login has it open.", label::openElsewhere), notLoggedIn(),
                    failed()}),
    };
}

}  // namespace torvex::operations
