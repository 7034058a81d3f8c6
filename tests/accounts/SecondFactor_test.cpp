#include <gtest/gtest.h>
#include <set>

#include "accounts/Actor.h"
#include "accounts/ProgramTokens.h"
#include "platform/text/Text.h"
#include "support/SecondFactorTest.h"

namespace torvex {
namespace {

class SecondFactors : public test::SecondFactorTest {
  protected:
    TypedCode take(const std::string& typed, int loginId = anna) {
        return takeCode(connection(), ofLogin(loginId), *secondFactorOf(connection(), ofLogin(loginId)),
                        typed, host.clock.unixSeconds());
    }
    bool mustEnrol() { return torvex::mustEnrol(connection(), actorOf(host.context())); }
};
INSTANTIATE_TEST_SUITE_P(Engines, SecondFactors, test::bothEngines(), test::engineName);

TEST_P(SecondFactors, ACodeOfTheTelephoneIsTakenOnce) {
    enrolled(anna);
    const std::string now = code();
    EXPECT_EQ(take(now.substr(0, 3) + " " + now.substr(3)), TypedCode::OfTelephone);
    EXPECT_EQ(take(now), TypedCode::Wrong);
    EXPECT_EQ(take(code(-1)), TypedCode::Wrong);
    wait(30);
    EXPECT_EQ(take(code()), TypedCode::OfTelephone);
}

/// Who read the factor before another one spent the code doesn't spend it again.
TEST_P(SecondFactors, OfTwoThatComeAtOnceOnlyOneIsTaken) {
    enrolled(anna);
    const auto read = secondFactorOf(connection(), ofLogin(anna));
    EXPECT_TRUE(takeTimeCode(connection(), ofLogin(anna), *read, code(), host.clock.unixSeconds()));
    EXPECT_FALSE(takeTimeCode(connection(), ofLogin(anna), *read, code(), host.clock.unixSeconds()));
}

TEST_P(SecondFactors, WrongCodesAreNotTakenAndSpendNothing) {
    enrolled(anna);
    for (const std::string& typed :
         {wrongCode(), std::string(), std::string("-"), code(2), code(-2), std::string(1000, '1')})
        EXPECT_EQ(take(typed), TypedCode::Wrong) << typed;
    EXPECT_EQ(take(code()), TypedCode::OfTelephone);
    EXPECT_EQ(factorsAndCodes(), "1|10");
}

TEST_P(SecondFactors, EachCodeOnPaperIsTakenOnceHoweverItIsTyped) {
    const auto codes = enrolled(anna);
    EXPECT_EQ(take(codes[0]), TypedCode::OfPaper);
    EXPECT_EQ(take(codes[0]), TypedCode::Wrong);
    std::string plain = text::lower(codes[1]);
    std::erase(plain, '-');
    EXPECT_EQ(take(" " + plain), TypedCode::OfPaper);
    EXPECT_EQ(factorsAndCodes(), "1|8");
}

TEST_P(SecondFactors, ThereAreTenCodesOnPaperOfEightyBitsAndOnlyTheirHashesAreKept) {
    const auto codes = enrolled(anna);
    EXPECT_EQ(std::set<std::string>(codes.begin(), codes.end()).size(), 10U);
    for (const auto& one : codes) {
        EXPECT_EQ(one.size(), 19U);
        EXPECT_EQ(cell("select count(*) from TORVEX_RECOVERY_CODES where codeHash = '" + one + "'"), "0");
    }
    EXPECT_EQ(cell("select min(length(codeHash)) from TORVEX_RECOVERY_CODES"), "64");
}

TEST_P(SecondFactors, AnothersCodesAreNone) {
    author(8, "bert", "Secret", "Bert");
    const auto hers = enrolled(anna);
    secret = newSecret();
    enrolled(8);
    EXPECT_EQ(take(hers[0], 8), TypedCode::Wrong);
    EXPECT_EQ(take(code(), anna), TypedCode::Wrong);
    EXPECT_EQ(take(code(), 8), TypedCode::OfTelephone);
}

TEST_P(SecondFactors, ALoginHasOneAtMost) {
    enrolled(anna);
    EXPECT_FALSE(giveSecondFactor(connection(), ofLogin(anna), newSecret(), 1, host.clock.now()));
    EXPECT_EQ(secondFactorOf(connection(), ofLogin(anna))->secret, secret);
    EXPECT_TRUE(dropSecondFactor(connection(), ofLogin(anna)));
    EXPECT_FALSE(dropSecondFactor(connection(), ofLogin(anna)));
    EXPECT_EQ(factorsAndCodes(), "0|0");
}

TEST_P(SecondFactors, NewCodesOnPaperTakeThePlaceOfTheOthers) {
    const auto before = enrolled(anna);
    const auto codes = renewRecoveryCodes(connection(), ofLogin(anna));
    EXPECT_EQ(take(before[0]), TypedCode::Wrong);
    EXPECT_EQ(take(codes[0]), TypedCode::OfPaper);
}

TEST_P(SecondFactors, WhoseRoleDemandsOneMustSetOneUp) {
    actAs(anna, "anna", "Anna Author");
    EXPECT_FALSE(mustEnrol());
    demandOf(anna);
    EXPECT_TRUE(mustEnrol());
    enrolled(anna);
    EXPECT_FALSE(mustEnrol());
}

TEST_P(SecondFactors, ProgramsNeverHaveTo) {
    author(9, "robot", "Secret", "Robot", {{"kind", "program"}});
    demandOf(9);
    host.session = Session(programSession(9));
    host.session.set("torvex_loginId", 9);
    EXPECT_FALSE(mustEnrol());
    host.session = Session("session-a");
    host.session.set("torvex_loginId", 9);
    EXPECT_TRUE(mustEnrol());
}

TEST_P(SecondFactors, ALoginThatIsRemovedTakesItAlong) {
    author(8, "bert", "Secret", "Bert");
    enrolled(8);
    EXPECT_EQ(factorsAndCodes(), "1|10");
    author(2, "sa", "Secret", "The Administrator");
    actAs(2, "sa", "The Administrator");
    EXPECT_EQ(nextRequest().deleteLogin(8, 21), "");
    EXPECT_EQ(factorsAndCodes(), "0|0");
}

}  // namespace
}  // namespace torvex
