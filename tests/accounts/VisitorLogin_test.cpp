// Logging in as a visitor whose account has a second factor, or has to have one.

#include "accounts/VisitorLogin.h"

#include <gmock/gmock.h>

#include "accounts/BegunFactor.h"
#include "support/VisitorFactorTest.h"

namespace torvex::test {
namespace {

constexpr const char* factorPage = "/torvex_secondFactor/?pageId=11&from=11";

class VisitorLogins : public VisitorFactorTest {
  protected:
    ShownCode show(const std::string& typed) { return showVisitorCode(host.context(), typed); }
    FactorChange enrol(const std::string& typed) { return enrolPendingVisitor(host.context(), typed, codes); }
    void expectNobody() {
        EXPECT_EQ(kept("tvx_username") + kept("tvx_password") + kept("tvx_target"), "");
        EXPECT_EQ(open(), "-|-");
    }
    void begin() { secret = beginFactor(host.context(), ofVisitor(ben)); }

    std::vector<std::string> codes;
};
INSTANTIATE_TEST_SUITE_P(Engines, VisitorLogins, bothEngines(), engineName);

TEST_P(VisitorLogins, TheRightPasswordAloneLogsNobodyIn) {
    guardDocuments();
    enrolled();
    for (const auto* target : {"", "group", "sitemap", "12"}) {
        EXPECT_EQ(post("ben", target), factorPage) << target;
        EXPECT_FALSE(host.session.takeTokenRequest());
        expectNobody();
    }
}

TEST_P(VisitorLogins, ACodeLetsInAndLeadsWhereThePasswordWouldHave) {
    guardDocuments();
    enrolled();
    post("ben", "12");
    EXPECT_EQ(pendingVisitor(host.context())->address, "/tvx.asp?pageId=12");
    EXPECT_EQ(show(code()), ShownCode::LetIn);
    EXPECT_TRUE(isIn());
    EXPECT_TRUE(host.session.takeTokenRequest());
    EXPECT_EQ(kept("tvx_loginTrials"), "0");
    EXPECT_EQ(open(), "page|document");
    EXPECT_FALSE(pendingVisitor(host.context()));
}

TEST_P(VisitorLogins, ThePageThatWasAppliedForIsNotForgotten) {
    enrolled();
    check("12");
    post("ben");
    check("11");
    EXPECT_EQ(pendingVisitor(host.context())->address, "/tvx.asp?pageId=12");
}

TEST_P(VisitorLogins, ACodeCountsOnce) {
    enrolled();
    post();
    const std::string now = code();
    EXPECT_EQ(show(now), ShownCode::LetIn);
    host.session = Session("another");
    post();
    EXPECT_EQ(show(now), ShownCode::Wrong);
    EXPECT_FALSE(isIn());
    wait(30);
    EXPECT_EQ(show(code()), ShownCode::LetIn);
}

TEST_P(VisitorLogins, ACodeOnPaperCountsOnce) {
    const auto paper = enrolled();
    post();
    EXPECT_EQ(show(text::lower(paper[3])), ShownCode::LetIn);
    EXPECT_EQ(factorsAndCodes(), "1|9");
    host.session = Session("another");
    post();
    EXPECT_EQ(show(paper[3]), ShownCode::Wrong);
    EXPECT_FALSE(isIn());
}

TEST_P(VisitorLogins, AnAuthorsCodeIsNoVisitors) {
    enrolled();
    const std::string visitors = secret;
    secret = newSecret();
    giveSecondFactor(connection(), ofLogin(ben), secret, 1, host.clock.now());
    const auto authors = renewRecoveryCodes(connection(), ofLogin(ben));
    post();
    EXPECT_EQ(show(code()), ShownCode::Wrong);
    EXPECT_EQ(show(authors[0]), ShownCode::Wrong);
    EXPECT_EQ(cell("select count(*) from TORVEX_RECOVERY_CODES"), "10");
}

TEST_P(VisitorLogins, AfterFiveWrongCodesThePasswordIsToBeGivenAgain) {
    enrolled();
    post();
    for (int i = 0; i < 4; ++i) EXPECT_EQ(show(wrongCode()), ShownCode::Wrong);
    EXPECT_EQ(show(wrongCode()), ShownCode::ProveAgain);
    EXPECT_EQ(show(code()), ShownCode::ProveAgain);
    expectNobody();
}

TEST_P(VisitorLogins, TheLoginWaitsForTenMinutes) {
    enrolled();
    post();
    wait(600);
    EXPECT_TRUE(pendingVisitor(host.context()));
    wait(1);
    EXPECT_FALSE(pendingVisitor(host.context()));
    EXPECT_EQ(show(code()), ShownCode::ProveAgain);
    expectNobody();
}

TEST_P(VisitorLogins, AnotherSessionShowsNothingForIt) {
    enrolled();
    post();
    const Session first = std::exchange(host.session, Session("another"));
    EXPECT_EQ(show(code()), ShownCode::ProveAgain);
    expectNobody();
    host.session = first;
    EXPECT_EQ(show(code()), ShownCode::LetIn);
}

TEST_P(VisitorLogins, WhatWasProvedMustStillBeTrue) {
    enrolled();
    post();
    connection().execute("update TORVEX_USERS set password = 'other' where userId = 102");
    EXPECT_EQ(show(code()), ShownCode::ProveAgain);
    expectNobody();
}

TEST_P(VisitorLogins, WithoutAFactorAnyMoreThePasswordIsToBeGivenAgain) {
    enrolled();
    post();
    dropSecondFactor(connection(), ofVisitor(ben));
    EXPECT_EQ(show(code()), ShownCode::ProveAgain);
    expectNobody();
}

TEST_P(VisitorLogins, AWrongPasswordIsToldNothingOfFactors) {
    enrolled();
    ask("", {{"torvex_pageId", "11"}, {"torvex_username", "ben"}, {"torvex_password", "wrong"}},
        {{"HTTP_Referer", ownPage}});
    EXPECT_EQ(server().getLoginURL(), ownPage);
    EXPECT_EQ(kept("tvx_loginTrials"), "1");
    EXPECT_FALSE(pendingVisitor(host.context()));
}

TEST_P(VisitorLogins, ALoginInBetweenTakesItsPlace) {
    enrolled();
    post("ben");
    EXPECT_EQ(post("ann"), ownPage);
    EXPECT_EQ(kept("tvx_username"), "ann");
    EXPECT_EQ(show(code()), ShownCode::ProveAgain);
    EXPECT_EQ(kept("tvx_username"), "ann");
}

TEST_P(VisitorLogins, AStronglyKeptPasswordWaitsAsItsMark) {
    host.application.set("torvex_password_store", "strong");
    enrolled();
    EXPECT_EQ(post(), factorPage);
    EXPECT_EQ(show(code()), ShownCode::LetIn);
    EXPECT_EQ(kept("tvx_password"), cell("select password from TORVEX_USERS where userId = 102"));
    EXPECT_EQ(kept("tvx_password").substr(0, 7), "strong:");
    EXPECT_TRUE(server().hasAccess("12"));
}

// ---- The setting ----

TEST_P(VisitorLogins, WhereThereAreNoFactorsNobodyIsAsked) {
    enrolled();
    for (const auto* off : {"", "off", " OFF "}) {
        factors(off);
        host.session = Session("another");
        EXPECT_EQ(post(), ownPage);
        EXPECT_TRUE(isIn());
        EXPECT_TRUE(server().hasAccess("12"));
    }
}

TEST_P(VisitorLogins, WhereTheyAreOfferedWhoHasNoneLogsInAsBefore) {
    EXPECT_EQ(post(), ownPage);
    EXPECT_TRUE(isIn());
    EXPECT_TRUE(host.session.takeTokenRequest());
    EXPECT_EQ(kept("tvx_target"), "current");
    EXPECT_TRUE(server().hasAccess("12"));
}

TEST_P(VisitorLogins, AMistypedSettingOpensNoDoor) {
    factors("demand");
    EXPECT_EQ(visitorFactors(host.context()), VisitorFactors::Demanded);
}

TEST_P(VisitorLogins, WhereTheyAreDemandedOneIsSetUpFirst) {
    guardDocuments();
    factors("demanded");
    EXPECT_EQ(post("ben", "group"), factorPage);
    expectNobody();
    EXPECT_EQ(show("123456"), ShownCode::ProveAgain);
    post("ben", "group");
    EXPECT_EQ(enrol(code()), FactorChange::Impossible);
    begin();
    EXPECT_EQ(enrol(wrongCode()), FactorChange::Wrong);
    expectNobody();
    EXPECT_EQ(factorsAndCodes(), "0|0");
    EXPECT_EQ(enrol(code()), FactorChange::Done);
    EXPECT_EQ(codes.size(), 10U);
    EXPECT_TRUE(isIn());
    EXPECT_EQ(kept("tvx_target"), "group");
    EXPECT_EQ(open(), "page|document");
    EXPECT_EQ(factorsAndCodes(), "1|10");
}

TEST_P(VisitorLogins, ASessionThatHasShownNoneIsShutOutWhenOneIsDemanded) {
    guardDocuments();
    post();
    EXPECT_EQ(open(), "page|document");
    factors("demanded");
    EXPECT_EQ(open(), "-|-");
    EXPECT_EQ(server().getUserId(), 0);
    factors("offered");
    EXPECT_EQ(open(), "page|document");
}

TEST_P(VisitorLogins, ASecretThatWasBegunTooLongAgoIsNone) {
    factors("demanded");
    post();
    begin();
    wait(601);
    post();
    EXPECT_EQ(enrol(code()), FactorChange::Impossible);
    EXPECT_EQ(factorsAndCodes(), "0|0");
}

TEST_P(VisitorLogins, NobodySetsOneUpForAnother) {
    factors("demanded");
    post("ann");
    begin();
    EXPECT_EQ(enrol(code()), FactorChange::Impossible);
    EXPECT_EQ(factorsAndCodes(), "0|0");
}

// ---- Keeping it ----

class VisitorsFactor : public VisitorFactorTest {
  protected:
    void SetUp() override {
        VisitorFactorTest::SetUp();
        if (HasFatalFailure()) return;
        paper = enrolled();
        post();
        showVisitorCode(host.context(), paper[9]);
        EXPECT_EQ(factorsAndCodes(), "1|9");
    }
    FactorChange drop(const std::string& proof) { return dropVisitorFactor(host.context(), identity, proof); }
    FactorChange renew(const std::string& typed) {
        return renewVisitorCodes(host.context(), identity, typed, codes);
    }

    VisitorIdentity identity{ben, "ben", "benpw"};
    std::vector<std::string> paper;
    std::vector<std::string> codes;
};
INSTANTIATE_TEST_SUITE_P(Engines, VisitorsFactor, bothEngines(), engineName);

TEST_P(VisitorsFactor, IsDroppedByThePasswordOrACode) {
    for (int way = 0; way < 3; ++way) {
        const std::string proofs[] = {" BenPw ", code(), paper[0]};
        EXPECT_EQ(drop(proofs[way]), FactorChange::Done) << way;
        EXPECT_EQ(factorsAndCodes(), "0|0");
        if (way < 2) paper = enrolled();
    }
    EXPECT_EQ(drop("benpw"), FactorChange::Impossible);
}

TEST_P(VisitorsFactor, IsDroppedByNothingElse) {
    for (const auto& proof : {std::string(), wrongCode(), std::string("annpw")})
        EXPECT_EQ(drop(proof), FactorChange::Wrong) << proof;
    EXPECT_EQ(factorsAndCodes(), "1|9");
}

TEST_P(VisitorsFactor, StaysWhereItIsDemanded) {
    factors("demanded");
    EXPECT_EQ(drop("benpw"), FactorChange::IsDemanded);
    EXPECT_EQ(factorsAndCodes(), "1|9");
}

TEST_P(VisitorsFactor, GetsNewCodesByOneOfTheTelephone) {
    EXPECT_EQ(renew(paper[0]), FactorChange::Wrong);
    EXPECT_EQ(renew("benpw"), FactorChange::Wrong);
    EXPECT_EQ(factorsAndCodes(), "1|9");
    EXPECT_EQ(renew(code()), FactorChange::Done);
    EXPECT_EQ(codes.size(), 10U);
    EXPECT_EQ(factorsAndCodes(), "1|10");
    EXPECT_EQ(renew(code()), FactorChange::Wrong);
}

}  // namespace
}  // namespace torvex::test
