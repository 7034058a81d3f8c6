// Programs that call with a token.

#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "accounts/ProgramTokens.h"
#include "support/ApiTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using test::ApiReply;
using testing::HasSubstr;

class ApiTokens : public test::ApiTest {
  protected:
    static constexpr int robot = 9;

    void SetUp() override {
        ApiTest::SetUp();
        if (HasFatalFailure()) return;
        author(robot, "robot", "Robot");
        connection().execute("update TORVEX_LOGINS set kind = 'program' where loginId = 9");
        page("aa.en").id(10).title("Garden").set("editStatus", "P").insert();
        page("aa.en.01").id(12).title("Roses").set("editStatus", "P").insert();
        role(1, robot);
        editRights(1, "aa", "en", {"edit"});
        start();
    }
    ApiClient program(const std::string& operations, const std::string& addresses = "") {
        ApiClient made(running, "127.0.0.1");
        made.bearer = makeToken(connection(), {robot, "test", operations, addresses, ""});
        return made;
    }
    static std::string text(const boost::json::value& value) { return boost::json::serialize(value); }
    static constexpr const char* twelve = R"({"pageIdent": 12})";
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiTokens, test::bothEngines(), test::engineName);

TEST_P(ApiTokens, AProgramDoesWhatItsTokenCovers) {
    ApiClient caller = program("cManager.checkOut, cManager.checkIn");
    const ApiReply reply = caller.post("cManager/checkOut", twelve);
    EXPECT_EQ(text(reply.body), R"({"result":"P100"})");
    EXPECT_EQ(caller.post("cManager/checkIn", twelve).status(), 200);
    const ApiReply other = caller.post("cManager/deletePage", R"({"pageIdent": 12, "state": 1})");
    EXPECT_EQ(other.status(), 403);
    EXPECT_EQ(other.kind(), "not-covered");
    EXPECT_EQ(auditTrail().back().substr(0, 8), "9|Robot|");
}

TEST_P(ApiTokens, ReadsLeavesOutWhatEntersAndWhatWrites) {
    ApiClient caller = program("reads");
    EXPECT_EQ(caller.get("cManager/getPageParameters?pageIdent=12").status(), 200);
    EXPECT_EQ(caller.post("cManager/getSitemap", R"({"site": "aa", "lang": "en"})").kind(), "not-covered");
    EXPECT_EQ(caller.post("cManager/checkOut", twelve).kind(), "not-covered");
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiTokens, ItPassesTheGateLikeItsLogin) {
    ApiClient caller = program("cManager.publishPage, cManager.lockItem");
    EXPECT_EQ(caller.post("cManager/publishPage", twelve).kind(), "no-right");
    EXPECT_EQ(caller.post("cManager/lockItem").status(), 404);
}

TEST_P(ApiTokens, ItMayCallInBatchesAndReadWhatItsOperationsGive) {
    const ApiReply reply =
        program("cManager.getPage")
            .batch(
                R"({"on": "cManager", "do": "getPage", "with": {"pageIdent": 12}}, {"on": "cManager", "get": "pgTitle"})");
    EXPECT_EQ(reply.text("/results/1/result"), "Roses");
    EXPECT_EQ(program("desk.getWork").batch(R"({"on": "cManager", "get": "pgTitle"})").kind(), "not-covered");
}

TEST_P(ApiTokens, WhatIsNoTokenIsRefused) {
    ApiClient caller = program("reads");
    for (const std::string& token : {std::string("tvx_" + std::string(43, 'a')), std::string("x"),
                                     caller.bearer + "x", std::string(5000, 'a')}) {
        caller.bearer = token;
        const ApiReply reply = caller.get("cManager/getPageParameters?pageIdent=12");
        EXPECT_EQ(reply.status(), 401) << token;
        EXPECT_EQ(reply.kind(), "bad-token") << token;
        EXPECT_EQ(reply.raw.field("WWW-Authenticate"), "Bearer") << token;
    }
}

TEST_P(ApiTokens, ItHoldsForItsAddressesAndUntilItIsRevoked) {
    EXPECT_EQ(program("reads", "10.0.0.1").get("session").status(), 401);
    ApiClient caller = program("reads", "127.0.0.1");
    EXPECT_EQ(caller.get("session").text("/login/name"), "Robot");
    connection().execute("delete from TORVEX_API_TOKENS");
    EXPECT_EQ(caller.get("session").status(), 401);
}

TEST_P(ApiTokens, BesideATokenACookieIsIgnored) {
    ApiClient browser = loggedIn();
    const std::string cookie = browser.cookie;
    browser.bearer = program("reads").bearer;
    const ApiReply reply = browser.get("session");
    EXPECT_EQ(reply.text("/login/name"), "Robot");
    EXPECT_EQ(reply.raw.sessionCookie(), "");
    browser.bearer = "wrong";
    EXPECT_EQ(browser.get("session").status(), 401);
    browser.bearer.clear();
    EXPECT_EQ(browser.cookie, cookie);
    EXPECT_EQ(browser.get("session").text("/login/name"), "Anna Author");
}

TEST_P(ApiTokens, ItsCallsLeaveNoSessionAndKeepNobodyOut) {
    ApiClient caller = program("reads");
    const std::size_t before = running.server->sessionCount();
    for (int i = 0; i < 5; ++i) EXPECT_EQ(caller.get("session").raw.sessionCookie(), "");
    EXPECT_EQ(running.server->sessionCount(), before);
    EXPECT_EQ(cell("select coalesce(sessionId, '') from TORVEX_LOGINS where loginId = 9"), "");
}

TEST_P(ApiTokens, FiftyCallsAtOnceAreTooFast) {
    ApiClient caller = program("reads");
    ApiClient other = program("reads");
    int answered = 0;
    ApiReply reply = caller.get("session");
    for (; reply.status() == 200 && answered < 300; ++answered) reply = caller.get("session");
    EXPECT_EQ(reply.status(), 429);
    EXPECT_EQ(reply.raw.field("Retry-After"), "1");
    EXPECT_GE(answered, 50);
    EXPECT_EQ(other.get("session").status(), 200);
}

TEST_P(ApiTokens, NobodyLogsInAsAProgram) {
    EXPECT_EQ(visitor().login("robot", "secret").status(), 409);
}

TEST_P(ApiTokens, ATokenIsMadeOverTheNetworkByWhoAdministersLogins) {
    role(2);
    ApiClient browser = loggedIn();
    const std::string wish = R"({"loginId": 9, "name": "menu", "operations": "reads"})";
    EXPECT_EQ(browser.post("desk/makeToken", wish).status(), 403);
    advancedRight(2, 21, "", "", true, true);
    const ApiReply made = browser.post("desk/makeToken", wish);
    EXPECT_EQ(made.status(), 200) << made.raw.body;
    ApiClient caller(running, "127.0.0.1");
    caller.bearer = made.text("/result");
    EXPECT_EQ(caller.get("session").text("/login/name"), "Robot");
    EXPECT_THAT(auditTrail().back(), HasSubstr("|21|new|Token \"menu\""));
    const ApiReply list = browser.get("desk/getTokens?loginId=9");
    EXPECT_EQ(list.at("/result/rows").as_array().size(), 1U);
    EXPECT_THAT(list.raw.body, testing::Not(HasSubstr(made.text("/result"))));
    EXPECT_EQ(
        browser.post("desk/makeToken", R"({"loginId": 7, "name": "menu", "operations": "reads"})").kind(),
        "no-program");
}

}  // namespace
}  // namespace torvex
