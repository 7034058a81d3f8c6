#include <array>
#include <barrier>
#include <chrono>
#include <gmock/gmock.h>
#include <thread>

#include "accounts/Proof.h"
#include "accounts/StrongPassword.h"
#include "support/DoorTest.h"
#include "support/ThreadTime.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class StrongLogins : public DoorTest {
  protected:
    void SetUp() override {
        DoorTest::SetUp();
        host.application.set("torvex_password_store", "strong");
    }
    /// Anna's row has its hash and is free again.
    void moveAnna(const std::string& typed = "Secret") {
        ASSERT_EQ(manager().login("anna", typed), 0);
        ASSERT_TRUE(isStrongMark(stored(anna)));
        set(anna, "sessionId", "");
        comeFrom("10.0.0.1", "session-b");
    }
    int tryIn(const std::string& username, const std::string& password) {
        return nextRequest().login(username, password);
    }
    /// The shortest of a few attempts: what else the machine does only makes them longer.
    std::chrono::duration<double, std::milli> timeOf(const std::string& username,
                                                     PasswordStore store = PasswordStore::Strong) {
        auto best = std::chrono::duration<double, std::milli>::max();
        for (int i = 0; i < 5; ++i) {
            best = std::min(
                best, threadTimeOf([&] { EXPECT_FALSE(proofOf(connection(), store, username, "wrong")); }));
        }
        return best;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, StrongLogins, bothEngines(), engineName);

TEST_P(StrongLogins, WithoutTheSettingNoRowGetsAHash) {
    for (const auto* setting : {"", "weak", "1"}) {
        host.application.set("torvex_password_store", setting);
        EXPECT_EQ(tryIn("anna", "Secret"), 0);
        EXPECT_EQ(stored(anna), encodePassword("Secret"));
        EXPECT_EQ(hash(anna), "");
    }
}

TEST_P(StrongLogins, TheSettingIgnoresCaseAndBlanks) {
    host.application.set("torvex_password_store", " Strong ");
    tryIn("anna", "Secret");
    EXPECT_TRUE(isStrongMark(stored(anna)));
}

TEST_P(StrongLogins, TheNextRightLoginMovesARow) {
    EXPECT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_TRUE(isStrongMark(stored(anna)));
    EXPECT_TRUE(isPasswordOf(hash(anna), "Secret"));
    EXPECT_EQ(manager().password(), stored(anna));
    EXPECT_EQ(kept(), "7|anna|" + stored(anna) + "|Anna Author");
    EXPECT_EQ(holder(anna), "session-a|10.0.0.1|||20260615|12:00");
    EXPECT_TRUE(host.session.takeTokenRequest());
}

TEST_P(StrongLogins, ARefusedLoginMovesNothing) {
    EXPECT_EQ(tryIn("anna", "wrong"), 1);
    set(anna, "validTo", "20260614");
    EXPECT_EQ(tryIn("anna", "Secret"), 1);
    set(anna, "validTo", "");
    set(anna, "sessionId", "session-b");
    set(anna, "ipAddress", "10.0.0.2");
    EXPECT_EQ(tryIn("anna", "Secret"), 3);
    host.application.set("torvex_access_IP_filter", "10.0.0.2");
    EXPECT_EQ(tryIn("anna", "Secret"), 2);
    EXPECT_EQ(stored(anna), encodePassword("Secret"));
    EXPECT_EQ(hash(anna), "");
}

TEST_P(StrongLogins, AMovedRowIsVerifiedByItsHash) {
    moveAnna();
    const std::string mark = stored(anna);
    EXPECT_EQ(tryIn("anna", "wrong"), 1);
    EXPECT_EQ(tryIn("anna", encodePassword("Secret")), 1);
    EXPECT_EQ(tryIn("anna", mark), 1);
    EXPECT_EQ(tryIn("anna", ""), 1);
    EXPECT_EQ(tryIn("ANNA ", " sECRET"), 0);
    // The hash is made once.
    EXPECT_EQ(stored(anna), mark);
}

TEST_P(StrongLogins, TheCodesAreThoseOfTheOldForm) {
    moveAnna();
    set(anna, "sessionId", "session-c");
    set(anna, "ipAddress", "10.0.0.2");
    EXPECT_EQ(tryIn("anna", "Secret"), 3);
    set(anna, "validFrom", "20270101");
    EXPECT_EQ(tryIn("anna", "Secret"), 1);
    EXPECT_EQ(tryIn("bob", "Secret"), 1);
}

TEST_P(StrongLogins, WhatWasTypedAtTheMoveIsThePasswordFromThenOn) {
    author(8, "bob", "correct horse battery staple", "Bob");
    EXPECT_EQ(tryIn("bob", "correct horse battery stable"), 0);
    EXPECT_EQ(tryIn("bob", "correct horse battery staple"), 1);
    EXPECT_EQ(tryIn("bob", "Correct Horse Battery Stable"), 0);
}

TEST_P(StrongLogins, AMovedRowStaysStrongWhenTheSettingGoes) {
    moveAnna();
    host.application.set("torvex_password_store", "");
    EXPECT_EQ(tryIn("anna", "wrong"), 1);
    EXPECT_EQ(tryIn("anna", "Secret"), 0);
    EXPECT_TRUE(isStrongMark(stored(anna)));
}

TEST_P(StrongLogins, ANewPasswordInTheOldFormTakesThePlaceOfTheHash) {
    moveAnna();
    const std::string oldHash = hash(anna);
    set(anna, "password", encodePassword("Changed"));
    EXPECT_EQ(tryIn("anna", "Secret"), 1);
    EXPECT_EQ(hash(anna), oldHash);
    EXPECT_EQ(tryIn("anna", "Changed"), 0);
    EXPECT_TRUE(isPasswordOf(hash(anna), "Changed"));
}

TEST_P(StrongLogins, AMarkWithoutAHashIsNobodys) {
    set(anna, "password", "strong:abcdefghijklm");
    for (const auto* typed : {"", "x", "strong:abcdefghijklm"}) EXPECT_EQ(tryIn("anna", typed), 1) << typed;
}

TEST_P(StrongLogins, ALoginThatIsLockedByAWordStaysLocked) {
    set(anna, "password", "locked");
    for (const auto* typed : {"", "locked", "LOCKED"}) EXPECT_EQ(tryIn("anna", typed), 1) << typed;
}

TEST_P(StrongLogins, AnotherLoginsHashOpensNothing) {
    moveAnna();
    author(8, "bob", "x", "Bob");
    EXPECT_EQ(tryIn("bob", "Secret"), 1);
    EXPECT_EQ(tryIn("bob", "x"), 0);
}

TEST_P(StrongLogins, TwoSessionsThatMoveARowAtOnceBothGetIn) {
    for (int round = 0; round < 3; ++round) {
        set(anna, "password", encodePassword("Secret"));
        set(anna, "sessionId", "");
        std::barrier start(2);
        std::array<int, 2> codes{};
        const auto logIn = [&](std::size_t which) {
            TestHost own;
            own.session = Session("session-" + std::to_string(which));
            own.database.target = &database();
            own.application.set("torvex_odbc", connectionText());
            own.application.set("torvex_password_store", "strong");
            own.request.setServerVariable("remote_addr", "10.0.1.1");
            cManager other(own.context());
            other.connect(connectionText());
            start.arrive_and_wait();
            codes[which] = other.login("anna", "Secret");
        };
        std::thread first(logIn, 0);
        std::thread second(logIn, 1);
        first.join();
        second.join();
        EXPECT_THAT(codes, testing::ElementsAre(0, 0));
        EXPECT_TRUE(isPasswordOf(hash(anna), "Secret"));
    }
}

// ---- Verifying the session again ----

TEST_P(StrongLogins, TheSessionIsVerifiedWithoutTheClearText) {
    manager().login("anna", "Secret");
    EXPECT_EQ(nextRequest().login(), 0);
    EXPECT_EQ(nextRequest().login(), 0);
    EXPECT_EQ(auditTrail().size(), 3U);
}

TEST_P(StrongLogins, AChangedPasswordEndsTheSession) {
    manager().login("anna", "Secret");
    set(anna, "password", encodePassword("Changed"));
    EXPECT_EQ(nextRequest().login(), 1);
}

TEST_P(StrongLogins, ASessionOfTheOldPasswordStaysOutAfterTheNextMove) {
    manager().login("anna", "Secret");
    const Session old = host.session;
    set(anna, "password", encodePassword("Secret"));
    set(anna, "sessionId", "");
    comeFrom("10.0.0.1", "session-b");
    ASSERT_EQ(tryIn("anna", "Secret"), 0);
    // Even the same password, set anew, is another one.
    host.session = old;
    EXPECT_EQ(nextRequest().login(), 1);
}

TEST_P(StrongLogins, VerifyingTheSessionAsksNoHash) {
    manager().login("anna", "Secret");
    set(anna, "passwordHash", "");
    EXPECT_EQ(nextRequest().login(), 0);
    EXPECT_EQ(nextRequest().login("anna", "Secret"), 1);
}

// ---- Time ----

TEST_P(StrongLogins, AWrongNameTakesAsLongAsAWrongPassword) {
    moveAnna();
    author(8, "bob", "x", "Bob");
    const auto moved = timeOf("anna");
    for (const auto* other : {"nobody", "bob"}) {
        EXPECT_GT(timeOf(other), moved / 2) << other;
        EXPECT_LT(timeOf(other), moved * 2) << other;
    }
    EXPECT_LT(timeOf("nobody", PasswordStore::Given), moved / 2);
}

// ---- Failures ----

TEST_P(StrongLogins, AFailureOnTheWayMovesNothing) {
    author(8, "bob", "x", "Bob", {{"sessionId", "session-a"}});
    refuseChangesOf(8);
    const std::string error = errorOf([&] { manager().login("anna", "Secret"); });
    EXPECT_THAT(error, StartsWith(chain({"login !"})));
    EXPECT_EQ(stored(anna), encodePassword("Secret"));
    EXPECT_EQ(hash(anna), "");
    EXPECT_EQ(kept(), "|||");
}

TEST_P(StrongLogins, NoErrorAndNoLineShowsAStoredForm) {
    moveAnna();
    const std::string mark = stored(anna);
    const std::string hashed = hash(anna);
    refuseChangesOf(anna);
    const std::string error = errorOf([&] { tryIn("anna", "Secret"); });
    for (const std::string& secret : {mark, hashed, encodePassword("Secret")}) {
        EXPECT_THAT(error, Not(HasSubstr(secret)));
        for (const std::string& line : auditTrail()) EXPECT_THAT(line, Not(HasSubstr(secret)));
    }
}

}  // namespace
}  // namespace torvex::test
