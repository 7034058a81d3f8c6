#include "operations/register/DeskRows.h"
#include "operations/register/SecondFactorLabels.h"

namespace torvex::operations {

namespace {

std::vector<Row<desk>> ownFactor() {
    return {
        reads("getSecondFactor", &desk::getSecondFactor, {},
              "Whether the caller's login has a second factor, since when, how many recovery codes are left, "
              "and "
              "whether a role demands one.",
              anyLogin())
            .lists({{"isOn", Number}, {"since", Date}, {"codesLeft", Number}, {"isDemanded", Number}}),
        enters("beginSecondFactor", &desk::beginSecondFactor, {},
               "A new secret for the caller's telephone, as the address that an application reads. It counts "
               "when "
               "`confirmSecondFactor` got a code of it within ten minutes.",
               anyLogin())
            .codes({notLoggedIn(), refusal(-3, "The login has a second factor.", label::hasFactor)}),
        writes("confirmSecondFactor", &desk::confirmSecondFactor, {argument("code")},
               "Gives the caller's login the second factor that was begun: ten recovery codes divided by "
               "blanks, "
               "told this once.",
               anyLogin())
            .codes({notLoggedIn(), refusal(-1, "The code is wrong.", label::codeWrong),
                    refusal(-2, "None was begun, or too long ago.", label::notBegun),
                    refusal(-3, "The login has a second factor.", label::hasFactor), failed()}),
    };
}

/// A code is guessed like a password, and slowed down like one.
std::vector<Row<desk>> withProof() {
    return {
        writes("dropSecondFactor", &desk::dropSecondFactor, {argument("username"), argument("proof")},
               "Takes the second factor from the caller's own login, by its password or a code.", anyLogin())
            .codes({code("", "It is gone."), notLoggedIn(),
                    refusal(-1, "The name, the password or the code is wrong.", label::proofWrong),
                    refusal(-2, "A role of the login demands one.", label::factorDemanded),
                    refusal(-3, "The login has no second factor.", label::hasNoFactor), failed()})
            .testsPassword({"username", "", "-1"}),
        writes("renewRecoveryCodes", &desk::renewRecoveryCodes, {argument("username"), argument("code")},
               "Ten new recovery codes for the caller's own login in place of the others, divided by blanks, "
               "told "
               "this once; by a code of the telephone.",
               anyLogin())
            .codes({notLoggedIn(), refusal(-1, "The name or the code is wrong.", label::codeWrong),
                    refusal(-3, "The login has no second factor.", label::hasNoFactor), failed()})
            .testsPassword({"username", "", "-1"}),
        writes(
            "proveSecond", &desk::proveSecond,
            {argument("username"), argument("code"), argument("takeOver", false)},
            "The second step of a login, after a login asked for a code: one of the telephone, or a recovery "
            "code. With `takeOver` a session at another address is ended; after a 3 without the code again.",
            visitor())
            .codes({code(0, "The session has the login."),
                    refusal(1, "Name and password are to be given anew.", label::proveAgain),
                    refusal(2, "Logging in isn't allowed from this address.", label::otherAddress),
                    refusal(3, "A session at another address has this login.", label::heldElsewhere),
                    refusal(5, "The code is wrong, or was used before.", label::codeWrong)})
            .testsPassword({"username", 0, 5}),
    };
}

}  // namespace

std::vector<Row<desk>> deskSecondFactorRows() {
    return joined({ownFactor(), withProof()});
}

}  // namespace torvex::operations
