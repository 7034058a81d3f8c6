#include <gmock/gmock.h>

#include "desk/desk.h"
#include "support/DoorTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class OwnPasswordTest : public DoorTest {
  protected:
    void SetUp() override {
        DoorTest::SetUp();
        if (HasFatalFailure()) return;
        manager().login("anna", "Secret");
        connection().execute("delete from TORVEX_AUDIT_TRAIL");
    }
    int change(const std::string& username, const std::string& password, const std::string& newPassword) {
        torvex::desk desk(host.context());
        desk.connect(connection());
        return desk.changePassword(username, password, newPassword);
    }
    int judge(const std::string& password) {
        torvex::desk desk(host.context());
        desk.connect(connection());
        return desk.judgePassword(password);
    }
    void expectRefusal(int code, const std::string& username, const std::string& password,
                       const std::string& newPassword) {
        const std::string before = stored(anna) + hash(anna);
        const std::string session = kept();
        EXPECT_EQ(change(username, password, newPassword), code);
        EXPECT_EQ(stored(anna) + hash(anna), before);
        EXPECT_EQ(kept(), session);
        EXPECT_TRUE(auditTrail().empty());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, OwnPasswordTest, bothEngines(), engineName);

TEST_P(OwnPasswordTest, WhoKnowsTheOldOneGetsTheNewOne) {
    EXPECT_EQ(change(" ANNA ", " secret ", " Fern and moss "), 0);
    EXPECT_EQ(stored(anna), encodePassword("fern and moss"));
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||0|save|Login \"Anna Author\" has a new password"));
    EXPECT_EQ(nextRequest().login("anna", "Secret"), 1);
    EXPECT_EQ(nextRequest().login("anna", "fern and moss"), 0);
}

TEST_P(OwnPasswordTest, TheSessionGoesOn) {
    change("anna", "Secret", "Fern and moss");
    EXPECT_TRUE(nextRequest().getLoginState(0));
    EXPECT_EQ(nextRequest().login(), 0);
}

TEST_P(OwnPasswordTest, TheStrongStoreKeepsAHash) {
    host.application.set("torvex_password_store", "strong");
    EXPECT_EQ(change("anna", "Secret", "Fern and moss"), 0);
    EXPECT_THAT(stored(anna), StartsWith("strong:"));
    EXPECT_EQ(host.session.text("torvex_password"), stored(anna));
    EXPECT_EQ(change("anna", "Secret", "Birch and bark"), 1);
    EXPECT_EQ(change("anna", "Fern and moss", "Birch and bark"), 0);
}

TEST_P(OwnPasswordTest, RefusalsChangeNothing) {
    author(8, "bert", "Broker", "Bert Broker");
    expectRefusal(1, "anna", "wrong", "Fern");
    expectRefusal(1, "anna", "", "Fern");
    expectRefusal(1, "bert", "Broker", "Fern");
    expectRefusal(1, "", "Secret", "Fern");
    expectRefusal(2, "anna", "Secret", "  ");
    expectRefusal(3, "anna", "Secret", " PassWord ");
    EXPECT_EQ(stored(8), encodePassword("Broker"));
    comeFrom("10.0.0.9", "session-z");
    expectRefusal(-10, "anna", "Secret", "Fern");
}

TEST_P(OwnPasswordTest, AWrongOldPasswordOrNoneAnewIsToldBeforeACommonOne) {
    expectRefusal(1, "anna", "wrong", "123456");
    expectRefusal(2, "anna", "wrong", "");
    comeFrom("10.0.0.9", "session-z");
    expectRefusal(-10, "anna", "Secret", "123456");
}

TEST_P(OwnPasswordTest, APasswordIsJudgedAndNothingIsLeftOfIt) {
    const std::string before = stored(anna) + hash(anna);
    const std::string session = kept();
    EXPECT_EQ(judge("fern and moss"), 0);
    EXPECT_EQ(judge(""), 0);
    EXPECT_EQ(judge("123456"), 1);
    EXPECT_EQ(judge("  QWERTY "), 1);
    EXPECT_EQ(stored(anna) + hash(anna), before);
    EXPECT_EQ(kept(), session);
    EXPECT_TRUE(auditTrail().empty());
}

TEST_P(OwnPasswordTest, AFailureChangesNothing) {
    refuseChangesOf(anna);
    const std::string before = stored(anna);
    EXPECT_THAT(errorOf([&] { change("anna", "Secret", "Fern and moss"); }),
                StartsWith(chain({"changePassword !"})));
    EXPECT_EQ(stored(anna), before);
    EXPECT_EQ(host.session.text("torvex_password"), before);
}

}  // namespace
}  // namespace torvex::test
