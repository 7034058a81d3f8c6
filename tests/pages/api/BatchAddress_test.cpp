// Several calls in one request.

#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "support/ApiTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using test::ApiReply;
using testing::HasSubstr;
using testing::Not;

class ApiBatch : public test::ApiTest {
  protected:
    void SetUp() override {
        ApiTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).title("Garden").set("editStatus", "P").insert();
        page("aa.en.01").id(12).title("Roses").set("editStatus", "P").insert();
        page("aa.en.02").id(13).title("Tulips").set("editStatus", "P").insert();
        role(1);
        editRights(1, "aa", "en", {"edit"});
        start();
    }

    static std::string text(const boost::json::value& value) { return boost::json::serialize(value); }
    static std::string checkOut(int pageId, const std::string& more = "") {
        return R"({"on": "cManager", "do": "checkOut", "with": {"pageIdent": )" + std::to_string(pageId) +
               "}" + more + "}";
    }
    static constexpr const char* read = R"({"on": "cManager", "do": "getPage", "with": {"pageIdent": 12}})";
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiBatch, test::bothEngines(), test::engineName);

TEST_P(ApiBatch, CallsRunInOrderOnOneObjectOfEachClass) {
    ApiClient browser = loggedIn();
    const ApiReply reply =
        browser.batch(std::string(read) + R"(, {"on": "cManager", "get": ["pgTitle", "pgPageId"]},
        {"on": "cManager", "set": "pgTitle", "to": "Lilies"}, {"on": "CMANAGER", "get": "pgTitle"})");
    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(text(reply.at("/results/1")), R"({"result":{"pgTitle":"Roses","pgPageId":12}})");
    EXPECT_EQ(text(reply.at("/results/2")), R"({"result":null})");
    EXPECT_EQ(text(reply.at("/results/3")), R"({"result":"Lilies"})");
    EXPECT_EQ(reply.raw.field("Torvex-Api"), "1");
}

TEST_P(ApiBatch, AnEmptyBatchGivesNothing) {
    EXPECT_EQ(text(loggedIn().batch("").body), R"({"results":[]})");
}

TEST_P(ApiBatch, AStarReadsAllThatCanBeRead) {
    const ApiReply reply = loggedIn().batch(std::string(read) + R"(, {"on": "cManager", "get": "*"})");
    EXPECT_EQ(reply.text("/results/1/result/pgTitle"), "Roses");
    EXPECT_EQ(reply.text("/results/1/result/Fullname"), "Anna Author");
    EXPECT_THAT(reply.raw.body, Not(HasSubstr("password")));
}

TEST_P(ApiBatch, APropertyThatIsNotThereAndOneOutOfReachLookTheSame) {
    ApiClient browser = loggedIn();
    const ApiReply missing = browser.batch(R"({"on": "cManager", "get": "nothing"})");
    EXPECT_EQ(missing.status(), 404);
    EXPECT_EQ(browser.batch(R"({"on": "cManager", "get": "password"})").at("/detail"), missing.at("/detail"));
    EXPECT_EQ(browser.batch(R"({"on": "cManager", "get": ["pgTitle", "password"]})").status(), 404);
    EXPECT_EQ(browser.batch(R"({"on": "cManager", "set": "nothing", "to": 1})").status(), 404);
    EXPECT_EQ(browser.batch(R"({"on": "nothing", "get": "*"})").status(), 404);
}

TEST_P(ApiBatch, WhatCannotBeSetIsNotSet) {
    ApiClient browser = loggedIn();
    for (const std::string one : {R"({"on": "cManager", "set": "Fullname", "to": "x"})",
                                  R"({"on": "cManager", "set": "pgPageId", "to": "x"})",
                                  R"({"on": "cManager", "set": "pgTitle", "to": [1]})"}) {
        const ApiReply reply = browser.batch(one);
        EXPECT_EQ(reply.status(), 422) << one;
        EXPECT_FALSE(reply.text("/argument").empty()) << one;
    }
}

// ---- What stops it ----

TEST_P(ApiBatch, ARefusalStopsItAndIsItsAnswer) {
    connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 2 where pageId = 12");
    const ApiReply reply = loggedIn().batch(checkOut(13) + ", " + checkOut(12) + ", " + checkOut(10));
    EXPECT_EQ(reply.status(), 409);
    EXPECT_EQ(reply.at("/call"), 1);
    EXPECT_EQ(reply.text("/code"), "-1");
    EXPECT_EQ(reply.text("/holder"), "System Administrator");
    EXPECT_EQ(text(reply.at("/results")), R"([{"result":"P100"}])");
    EXPECT_EQ(statuses(13), "P100");
    EXPECT_EQ(statuses(10), "P000");
}

TEST_P(ApiBatch, ACallMayBeRefusedAndTheBatchGoOn) {
    connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 2 where pageId = 12");
    const ApiReply reply = loggedIn().batch(checkOut(12, R"(, "goOn": true)") + ", " + checkOut(13));
    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(reply.text("/results/0/problem/code"), "-1");
    EXPECT_EQ(reply.at("/results/0/problem/status"), 409);
    EXPECT_EQ(text(reply.at("/results/1")), R"({"result":"P100"})");
}

TEST_P(ApiBatch, EachCallPassesTheGate) {
    const ApiReply reply = loggedIn().batch(
        checkOut(12) + R"(, {"on": "cManager", "do": "publishPage", "with": {"pageIdent": 12}}, )" +
        checkOut(13));
    EXPECT_EQ(reply.status(), 403);
    EXPECT_EQ(reply.at("/call"), 1);
    EXPECT_EQ(reply.text("/operation"), "cManager.publishPage");
    EXPECT_EQ(statuses(12), "P100");
    EXPECT_EQ(statuses(13), "P000");
    EXPECT_EQ(loggedIn().batch(R"({"on": "cManager", "do": "lockItem", "with": {}})").status(), 404);
}

TEST_P(ApiBatch, ALoginThatIsGivenUpOnTheWayEndsIt) {
    const ApiReply reply =
        loggedIn().batch(R"({"on": "cManager", "do": "logout"}, )" + checkOut(12, R"(, "goOn": true)"));
    EXPECT_EQ(reply.status(), 401);
    EXPECT_EQ(reply.at("/call"), 1);
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiBatch, AFailureHasItsPlaceAndWhatCameBefore) {
    ApiClient browser = loggedIn("sa");
    drop("TORVEX_PAGES_LIVE");
    const ApiReply reply = browser.batch(
        checkOut(12) + R"(, {"on": "cServer", "do": "getPageTitle", "with": {"pageIdent": 12}})");
    EXPECT_EQ(reply.status(), 500);
    EXPECT_EQ(reply.at("/call"), 1);
    EXPECT_EQ(text(reply.at("/results")), R"([{"result":"P100"}])");
    EXPECT_EQ(reply.text("/reference").size(), 9U);
    EXPECT_EQ(reply.text("/operation"), "cServer.getPageTitle");
}

// ---- Expectations ----

TEST_P(ApiBatch, ItGoesOnWhileACallGivesWhatIsExpected) {
    const ApiReply reply = loggedIn().batch(
        std::string(read) + R"(, {"on": "cManager", "get": "pgTitle", "expect": {"is": "Roses"}}, )" +
        R"({"on": "cManager", "get": ["pgPageId"], "expect": {"is": {"pgPageId": 12.0}}}, )" + checkOut(12));
    EXPECT_EQ(reply.status(), 200) << reply.raw.body;
    EXPECT_EQ(statuses(12), "P100");
}

TEST_P(ApiBatch, ItStopsWhereSomethingElseIsThereAndSaysWhat) {
    const ApiReply reply = loggedIn().batch(
        std::string(read) +
        R"(, {"on": "cManager", "get": "pgTitle", "expect": {"is": "Lilies"}, "goOn": true}, )" +
        checkOut(12));
    EXPECT_EQ(reply.status(), 412);
    EXPECT_EQ(reply.kind(), "changed");
    EXPECT_EQ(reply.text("/now"), "Roses");
    EXPECT_EQ(reply.at("/call"), 1);
    EXPECT_EQ(reply.at("/results").as_array().size(), 1U);
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiBatch, ATextMayBeExpectedByItsHash) {
    const auto status = [&](const std::string& hash) {
        return loggedIn()
            .batch(std::string(read) + R"(, {"on": "cManager", "get": "pgTitle", "expect": {"sha256": ")" +
                   hash + R"("}})")
            .status();
    };
    // printf Roses | sha256sum
    EXPECT_EQ(status("0c6f53e266a7bf766d588d64267e2f94678a2aa9554b776b2762accbeabe01cf"), 412);
    EXPECT_EQ(status("5c6f53e266a7bf766d588d64267e2f94678a2aa9554b776b2762accbeabe01cf"), 200);
}

// ---- What it isn't ----

TEST_P(ApiBatch, ABodyThatIsNoJsonObjectIsRefused) {
    ApiClient browser = loggedIn();
    const std::string deep(10000, '[');
    for (const std::string& body : {std::string("x"), std::string("[]"), std::string("null"),
                                    std::string("{"), std::string(R"({"calls": [], "calls": []})"),
                                    std::string("{\"calls\": \"\xff\"}"), R"({"calls": )" + deep + "}"}) {
        const ApiReply reply = browser.post("batch", body);
        EXPECT_EQ(reply.status(), 400) << body.substr(0, 40);
        EXPECT_EQ(reply.kind(), "not-understood") << body.substr(0, 40);
    }
}

TEST_P(ApiBatch, WhatTheHostRefusesIsAProblemToo) {
    ApiClient browser = loggedIn();
    const std::string fields = "X-Torvex-Token: " + browser.token + "\r\n";
    const ApiReply form = browser.ask(
        "POST", "batch", fields + "Content-Type: application/x-www-form-urlencoded\r\n", "calls=1");
    EXPECT_EQ(form.status(), 415);
    EXPECT_EQ(form.kind(), "other-type");
    const ApiReply large = browser.ask(
        "POST", "batch", fields + "Content-Type: application/json\r\nContent-Length: 104857600\r\n");
    EXPECT_EQ(large.status(), 413);
    EXPECT_EQ(large.kind(), "too-large");
}

TEST_P(ApiBatch, WhatIsNoBatchIsRefusedBeforeAnythingRuns) {
    ApiClient browser = loggedIn();
    const auto refused = [&](const std::string& body) {
        const ApiReply reply = browser.post("batch", body);
        EXPECT_EQ(reply.status(), 422) << body;
        return reply;
    };
    for (const std::string field : {"login", "session", "application", "now", "request", "visitor", "else"})
        EXPECT_EQ(refused(R"({"calls": [)" + checkOut(12) + R"(], ")" + field + R"(": 1})").text("/argument"),
                  field);
    refused("{}");
    refused(R"({"calls": 1})");
    for (const std::string call :
         {R"(1)", R"({})", R"({"on": "cManager"})", R"({"do": "checkOut"})", R"({"on": 1, "do": "checkOut"})",
          R"({"on": "cManager", "do": "checkOut", "with": 1})",
          R"({"on": "cManager", "do": "checkOut", "get": "x"})", R"({"on": "cManager", "get": 1})",
          R"({"on": "cManager", "get": [1]})", R"({"on": "cManager", "set": "pgTitle"})",
          R"({"session": "x"})", R"({"application": "x"})",
          R"({"on": "cManager", "get": "pgTitle", "expect": 1})",
          R"({"on": "cManager", "get": "pgTitle", "expect": {}})",
          R"({"on": "cManager", "get": "pgTitle", "expect": {"is": 1, "sha256": "x"}})",
          R"({"on": "cManager", "get": "pgTitle", "goOn": 1})",
          R"({"on": "cManager", "get": "pgTitle", "gone": 1})"}) {
        EXPECT_EQ(refused(R"({"calls": [)" + checkOut(12) + ", " + call + "]}").at("/call"), 1) << call;
    }
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiBatch, AHundredCallsAreTheMost) {
    std::string calls = read;
    for (int i = 1; i < 100; ++i) calls += std::string(", ") + read;
    ApiClient browser = loggedIn();
    EXPECT_EQ(browser.batch(calls).status(), 200);
    const ApiReply reply = browser.batch(calls + ", " + read);
    EXPECT_EQ(reply.status(), 422);
    EXPECT_EQ(reply.text("/detail"), "A batch has at most 100 calls.");
}

TEST_P(ApiBatch, ArgumentsThatDoNotFitStopItAtTheirCall) {
    const ApiReply reply = loggedIn().batch(
        checkOut(12) + R"(, {"on": "cManager", "do": "checkOut", "with": {"pageIdent": [1]}})");
    EXPECT_EQ(reply.status(), 422);
    EXPECT_EQ(reply.at("/call"), 1);
    EXPECT_EQ(reply.text("/argument"), "pageIdent");
    EXPECT_EQ(reply.at("/results").as_array().size(), 1U);
}

// ---- Who may ----

TEST_P(ApiBatch, WithoutTheTokenNothingRuns) {
    ApiClient browser = loggedIn();
    browser.token = "x";
    EXPECT_EQ(browser.batch(checkOut(12)).status(), 403);
    EXPECT_EQ(browser.post("batch", "{}").status(), 403);
    EXPECT_EQ(statuses(12), "P000");
    ApiClient nobody(running, "127.0.0.1");
    EXPECT_EQ(nobody.batch(checkOut(12)).status(), 401);
    EXPECT_EQ(
        nobody
            .batch(R"({"on": "cManager", "do": "login", "with": {"username": "anna", "password": "secret"}})")
            .status(),
        403);
}

TEST_P(ApiBatch, NothingRunsForAnotherSiteOrWithAnothersToken) {
    ApiClient browser = loggedIn();
    const std::string type = "Content-Type: application/json\r\nX-Torvex-Token: ";
    const std::string calls = R"({"calls": [)" + checkOut(12) + "]}";
    const ApiReply foreign =
        browser.ask("POST", "batch", type + browser.token + "\r\nOrigin: https://evil.test\r\n", calls);
    EXPECT_EQ(foreign.status(), 403);
    EXPECT_EQ(foreign.kind(), "foreign");
    browser.token = loggedIn("sa", "127.0.0.2").token;
    EXPECT_EQ(browser.batch(checkOut(12)).kind(), "foreign");
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiBatch, AVisitorMayLogInAndGoOn) {
    ApiClient browser = visitor();
    const ApiReply reply = browser.batch(
        R"({"on": "cManager", "do": "login", "with": {"username": "anna", "password": "secret"}}, )" +
        checkOut(12));
    EXPECT_EQ(reply.status(), 200) << reply.raw.body;
    EXPECT_EQ(statuses(12), "P100");
    EXPECT_EQ(browser.batch(checkOut(13)).status(), 200);
}

TEST_P(ApiBatch, ItTakesAPostOnly) {
    const ApiReply reply = loggedIn().get("batch");
    EXPECT_EQ(reply.status(), 405);
    EXPECT_EQ(reply.kind(), "other-method");
    EXPECT_EQ(reply.raw.field("Allow"), "POST");
}

}  // namespace
}  // namespace torvex
