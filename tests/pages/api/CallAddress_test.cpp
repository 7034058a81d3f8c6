// One call over HTTP: the order of tests, values, problems.

#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "support/ApiTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using test::ApiReply;
using testing::HasSubstr;
using testing::Not;

class ApiCall : public test::ApiTest {
  protected:
    void SetUp() override {
        ApiTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_SITES_LANGUAGES", {{"site", "aa"}, {"lang", "en"}, {"title", "Garden"}});
        page("aa.en").id(10).title("Garden").set("editStatus", "P").insert();
        page("aa.en.01").id(12).title("Roses").set("editStatus", "P").insert();
        role(1);
        editRights(1, "aa", "en", {"edit"});
        start();
    }

    static std::string text(const boost::json::value& value) { return boost::json::serialize(value); }
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiCall, test::bothEngines(), test::engineName);

// ---- What goes well ----

TEST_P(ApiCall, ALoginLogsInAndItsCallsAreAnswered) {
    ApiClient browser = visitor();
    const ApiReply entered = browser.login("anna", "secret");
    EXPECT_EQ(entered.status(), 200);
    EXPECT_EQ(text(entered.body), R"({"result":0})");
    EXPECT_EQ(entered.raw.field("Content-Type"), "application/json");
    EXPECT_EQ(entered.raw.field("Torvex-Api"), "1");
    EXPECT_THAT(entered.raw.field("Cache-Control"), HasSubstr("no-store"));
    EXPECT_EQ(text(browser.post("cManager/checkOut", R"({"pageIdent": 12})").body), R"({"result":"P100"})");
}

TEST_P(ApiCall, NamesIgnoreCase) {
    ApiClient browser = loggedIn();
    EXPECT_EQ(text(browser.post("CMANAGER/CHECKOUT", R"({"PAGEIDENT": "12"})").body), R"({"result":"P100"})");
}

TEST_P(ApiCall, WhatReadsIsAlsoAnsweredToAQuery) {
    ApiClient browser = loggedIn();
    const ApiReply reply = browser.get("cManager/getLoginState?loginId=7");
    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(text(reply.body), R"({"result":true})");
    EXPECT_EQ(browser.ask("HEAD", "cManager/getLoginState?loginId=7", "").status(), 200);
}

TEST_P(ApiCall, AGridHasItsNamedColumnsAlsoWithoutRows) {
    advancedRight(1, 212, "aa", "en", true, false);
    ApiClient browser = loggedIn();
    const std::string columns =
        R"([{"name":"pageId","type":"number"},{"name":"nodeId","type":"text"},{"name":"title","type":"text"},)"
        R"({"name":"name","type":"text"},{"name":"lockingDate","type":"date"}])";
    const auto list = [&] { return text(browser.get("cManager/getLockList?site=aa&lang=en").at("/result")); };
    EXPECT_EQ(list(), R"({"columns":)" + columns + R"(,"rows":[]})");
    browser.post("cManager/checkOut", R"({"pageIdent": 12})");
    EXPECT_EQ(list(), R"({"columns":)" + columns +
                          R"(,"rows":[[12,"aa.en.01","Roses","Anna Author","2026-06-15T12:00:00"]]})");
}

TEST_P(ApiCall, AByteOrderMarkIsPassedOver) {
    ApiClient browser = loggedIn();
    EXPECT_EQ(browser.post("cManager/checkOut", "\xEF\xBB\xBF{\"pageIdent\": 12}").status(), 200);
}

// ---- 404 ----

TEST_P(ApiCall, WhatIsNotThereAndWhatIsOutOfReachLookTheSame) {
    ApiClient browser = loggedIn("sa");
    const auto missing = browser.post("cManager/nothing");
    EXPECT_EQ(missing.status(), 404);
    EXPECT_EQ(missing.kind(), "not-there");
    EXPECT_EQ(missing.raw.field("Content-Type"), "application/problem+json");
    for (const std::string path :
         {"cManager/lockItem", "cManager/connect", "cNobody/checkOut", "cManager", "cManager/", "/checkOut",
          "cManager/checkOut/more", "cManager%23a/checkOut"}) {
        const ApiReply reply = browser.post(path);
        EXPECT_EQ(reply.status(), 404) << path;
        EXPECT_EQ(reply.body, missing.body) << path;
    }
}

TEST_P(ApiCall, NothingElseIsSaidOfWhatIsNotThere) {
    ApiClient nobody(running, "127.0.0.1");
    EXPECT_EQ(nobody.post("cManager/lockItem", "no JSON").status(), 404);
    EXPECT_EQ(nobody.get("cManager/lockItem").status(), 404);
}

// ---- 405 ----

TEST_P(ApiCall, AMethodThatAnOperationHasNotIsRefusedWithThoseThatItHas) {
    ApiClient browser = loggedIn();
    for (const std::string method : {"GET", "HEAD", "PUT", "DELETE", "PATCH", "OPTIONS", "TRACE"}) {
        const ApiReply reply = browser.ask(method, "cManager/checkOut?pageIdent=12", "");
        EXPECT_EQ(reply.status(), 405) << method;
        EXPECT_EQ(reply.raw.field("Allow"), "POST") << method;
    }
    EXPECT_EQ(browser.ask("PUT", "cManager/getLoginState", "").raw.field("Allow"), "GET, HEAD, POST");
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiCall, WhatEntersIsNotAnsweredToAQuery) {
    EXPECT_EQ(loggedIn().get("cManager/getSitemap?site=aa&lang=en").raw.field("Allow"), "POST");
}

// ---- 400, 413, 415, 422 ----

TEST_P(ApiCall, ABodyThatIsNoJsonObjectIsRefused) {
    ApiClient browser = loggedIn();
    const std::string deep(10000, '[');
    for (const std::string& body :
         {std::string("x"), std::string("[]"), std::string("12"), std::string("null"), std::string("{"),
          std::string(R"({"pageIdent": 12} x)"), std::string(R"({"pageIdent": 12, "pageIdent": 13})"),
          std::string("{\"pageIdent\": \"\xff\"}"), std::string(R"({"pageIdent": "\ud800"})"),
          std::string(R"({"pageIdent": "\udc00\ud800"})"), std::string(R"({"pageIdent": NaN})"), deep,
          R"({"pageIdent": )" + deep + "}", std::string("{'pageIdent': 12}"), std::string(" ")}) {
        const ApiReply reply = browser.post("cManager/checkOut", body);
        EXPECT_EQ(reply.status(), 400) << body.substr(0, 40);
        EXPECT_EQ(reply.kind(), "not-understood") << body.substr(0, 40);
    }
    EXPECT_EQ(browser.ask("POST", "cManager/checkOut", "X-Torvex-Token: " + browser.token + "\r\n").status(),
              400);
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiCall, AQueryThatIsNoTextOrNamesAValueTwiceIsRefused) {
    ApiClient browser = loggedIn();
    EXPECT_EQ(browser.get("cManager/getLoginState?loginId=%ff").status(), 400);
    EXPECT_EQ(browser.get("cManager/getLoginState?loginId=7&loginId=7").status(), 400);
}

TEST_P(ApiCall, ArgumentsThatDoNotFitAreRefusedWithTheirNames) {
    ApiClient browser = loggedIn();
    const auto argument = [&](const std::string& body) {
        const ApiReply reply = browser.post("cManager/approvePage", body);
        EXPECT_EQ(reply.status(), 422) << body;
        EXPECT_EQ(reply.kind(), "not-fitting") << body;
        EXPECT_EQ(reply.text("/operation"), "cManager.approvePage");
        return reply.text("/argument");
    };
    EXPECT_EQ(argument(R"({"pageIdent": 12})"), "state");
    EXPECT_EQ(argument(R"({"pageIdent": 12, "state": 1, "more": 1})"), "more");
    EXPECT_EQ(argument(R"({"pageIdent": 12, "state": "one"})"), "state");
    EXPECT_EQ(argument(R"({"pageIdent": [12], "state": 1})"), "pageIdent");
    EXPECT_EQ(argument(R"({"pageIdent": {"a": 1}, "state": 1})"), "pageIdent");
    EXPECT_EQ(argument("{\"pageIdent\": \"12\\u0000\", \"state\": 1}"), "pageIdent");
    EXPECT_EQ(argument(R"({"pageIdent": 12, "state": 40000})"), "state");
    EXPECT_EQ(argument(R"({"pageIdent": 12, "PAGEIDENT": 12, "state": 1})").empty(), false);
    EXPECT_EQ(argument(R"({"pageIdent": 1e999, "state": 1})"), "");
    EXPECT_EQ(argument(R"({"pageIdent": 1e99999999999, "state": 1})"), "");
}

TEST_P(ApiCall, WhatTheHostRefusesIsAProblemToo) {
    ApiClient browser = loggedIn();
    browser.language = "de";
    const std::string fields = "X-Torvex-Token: " + browser.token + "\r\n";
    const ApiReply form =
        browser.ask("POST", "cManager/checkOut",
                    fields + "Content-Type: application/x-www-form-urlencoded\r\n", "pageIdent=12");
    EXPECT_EQ(form.status(), 415);
    EXPECT_EQ(form.kind(), "other-type");
    EXPECT_EQ(form.text("/detail"), "Diese Art von Daten wird hier nicht angenommen.");
    EXPECT_EQ(form.raw.field("Torvex-Api"), "1");
    const ApiReply large =
        browser.ask("POST", "cManager/checkOut",
                    fields + "Content-Type: application/json\r\nContent-Length: 104857600\r\n");
    EXPECT_EQ(large.status(), 413);
    EXPECT_EQ(large.kind(), "too-large");
    EXPECT_EQ(statuses(12), "P000");
}

// ---- 401 ----

TEST_P(ApiCall, WhoIsNotLoggedInLearnsThatFirst) {
    ApiClient nobody = visitor();
    for (const std::string body : {R"({"pageIdent": 12})", R"({"more": 1})", R"({"pageIdent": [1]})"}) {
        const ApiReply reply = nobody.post("cManager/checkOut", body);
        EXPECT_EQ(reply.status(), 401) << body;
        EXPECT_EQ(reply.kind(), "not-logged-in") << body;
    }
    EXPECT_EQ(nobody.post("cManager/checkOut", "x").status(), 400);
}

TEST_P(ApiCall, WhoHasNeitherCookieNorTokenIsNotLoggedInEither) {
    ApiClient nobody(running, "127.0.0.1");
    EXPECT_EQ(nobody.post("cManager/checkOut", R"({"pageIdent": 12})").status(), 401);
}

TEST_P(ApiCall, ALostLoginIsToldAtTheNextCall) {
    ApiClient browser = loggedIn();
    connection().execute("update TORVEX_LOGINS set sessionId = 'another' where loginId = 7");
    const ApiReply reply = browser.post("cManager/checkOut", R"({"pageIdent": 12})");
    EXPECT_EQ(reply.status(), 401);
    EXPECT_EQ(reply.kind(), "login-lost");
    EXPECT_EQ(reply.text("/detail"), "You are no longer logged in.");
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiCall, WhoHasLoggedOutIsNobody) {
    ApiClient browser = loggedIn();
    EXPECT_EQ(browser.post("cManager/logout").status(), 200);
    EXPECT_EQ(browser.post("cManager/checkOut", R"({"pageIdent": 12})").status(), 401);
}

// ---- 403: the token and the origin ----

TEST_P(ApiCall, NothingIsDoneWithoutTheTokenOfTheSession) {
    ApiClient browser = loggedIn();
    ApiClient other = loggedIn("sa", "127.0.0.2");
    const std::string own = browser.token;
    for (const std::string& token : {std::string(), std::string("x"), other.token, own + "x", own.substr(1),
                                     std::string(own.size(), 'a')}) {
        browser.token = token;
        const ApiReply reply = browser.post("cManager/checkOut", R"({"pageIdent": 12})");
        EXPECT_EQ(reply.status(), 403) << token;
        EXPECT_EQ(reply.kind(), "foreign") << token;
    }
    EXPECT_EQ(
        browser.ask("POST", "cManager/checkOut", "Content-Type: application/json\r\n", R"({"pageIdent": 12})")
            .status(),
        403);
    EXPECT_EQ(statuses(12), "P000");
}

TEST_P(ApiCall, NothingIsDoneForAnotherSite) {
    ApiClient browser = loggedIn();
    const std::string fields = "Content-Type: application/json\r\nX-Torvex-Token: " + browser.token + "\r\n";
    const auto status = [&](const std::string& more) {
        return browser.ask("POST", "cManager/checkOut", fields + more, R"({"pageIdent": 12})").status();
    };
    EXPECT_EQ(status("Origin: https://evil.test\r\n"), 403);
    EXPECT_EQ(status("Origin: null\r\n"), 403);
    EXPECT_EQ(status("Sec-Fetch-Site: cross-site\r\n"), 403);
    EXPECT_EQ(status("Sec-Fetch-Site: same-site\r\n"), 403);
    EXPECT_EQ(statuses(12), "P000");
    EXPECT_EQ(status("Origin: http://site.test\r\nSec-Fetch-Site: same-origin\r\n"), 200);
}

TEST_P(ApiCall, AVisitorLogsInWithATokenOnly) {
    ApiClient nobody(running, "127.0.0.1");
    const ApiReply reply = nobody.login("anna", "secret");
    EXPECT_EQ(reply.status(), 403);
    EXPECT_EQ(reply.kind(), "foreign");
    EXPECT_EQ(cell("select coalesce(sessionId, '') from TORVEX_LOGINS where loginId = 7"), "");
}

TEST_P(ApiCall, TheTokenIsAnotherOneAfterALogin) {
    ApiClient browser = visitor();
    const std::string before = browser.token;
    EXPECT_EQ(browser.login("anna", "secret").status(), 200);
    const std::string given = browser.token;
    EXPECT_NE(given, before);
    browser.load();
    EXPECT_EQ(browser.token, given);
    browser.token = before;
    EXPECT_EQ(browser.post("cManager/checkOut", R"({"pageIdent": 12})").status(), 403);
}

TEST_P(ApiCall, OnlyALoginGivesTheTokenOut) {
    ApiClient browser = loggedIn();
    const ApiReply reply = browser.post("cManager/checkOut", R"({"pageIdent": 12})");
    EXPECT_EQ(reply.raw.field("X-Torvex-Token"), "");
    EXPECT_THAT(reply.raw.body, Not(HasSubstr(browser.token)));
}

// ---- 403: the gate ----

TEST_P(ApiCall, WhoHasNotTheRightIsRefused) {
    ApiClient browser = loggedIn();
    const ApiReply reply = browser.post("cManager/publishPage", R"({"pageIdent": 12})");
    EXPECT_EQ(reply.status(), 403);
    EXPECT_EQ(reply.kind(), "no-right");
    EXPECT_EQ(reply.text("/operation"), "cManager.publishPage");
    EXPECT_EQ(reply.text("/detail"), "You do not have the right to do this.");
}

TEST_P(ApiCall, AWithheldArgumentIsRefusedAlsoWithItsDefault) {
    ApiClient browser = loggedIn("sa");
    for (const std::string value : {"\"x\"", "\"\"", "0"}) {
        const ApiReply reply =
            browser.post("cServer/getPage", R"({"pageIdent": 12, "username": )" + value + "}");
        EXPECT_EQ(reply.status(), 403) << reply.raw.body;
        EXPECT_EQ(reply.kind(), "withheld");
        EXPECT_EQ(reply.text("/argument"), "username");
    }
}

// ---- 409 ----

TEST_P(ApiCall, ARefusalSaysItsCodeItsSentenceAndWho) {
    ApiClient browser = loggedIn();
    author(8, "basil", "Basil Brook");
    connection().execute(
        "update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 8, lockingDate = '2026-06-15 09:12:00' "
        "where pageId = 12");
    const ApiReply reply = browser.post("cManager/checkOut", R"({"pageIdent": 12})");
    EXPECT_EQ(reply.status(), 409);
    EXPECT_EQ(reply.text("/type"), "/torvex/api/problems/locked-by-other");
    EXPECT_EQ(reply.text("/operation"), "cManager.checkOut");
    EXPECT_EQ(reply.text("/code"), "-1");
    EXPECT_EQ(reply.text("/holder"), "Basil Brook");
    EXPECT_THAT(reply.text("/detail"), HasSubstr("Basil Brook has this page since"));
    EXPECT_EQ(reply.at("/status"), 409);
    EXPECT_EQ(reply.raw.field("Content-Type"), "application/problem+json");
}

TEST_P(ApiCall, ARefusalSaysWhoHasARecordOpen) {
    author(8, "basil", "Basil Brook");
    author(9, "reed", "Reed Marsh");
    connection().execute("update TORVEX_LOGINS set sessionId = 'basils' where loginId = 8");
    connection().execute("update TORVEX_LOGINS set lock = 'basils' where loginId = 9");
    const ApiReply reply = loggedIn("sa").post("cManager/deleteLogin", R"({"loginId": 9})");
    EXPECT_EQ(reply.kind(), "open-elsewhere");
    EXPECT_EQ(reply.text("/holder"), "Basil Brook");
    EXPECT_EQ(reply.text("/detail"), "Basil Brook has it open.");
}

TEST_P(ApiCall, ALoginThatIsHeldElsewhereSaysWhereToWhoKnowsThePassword) {
    ApiClient first = loggedIn("anna", "127.0.0.3");
    const ApiReply reply = visitor().login("anna", "secret");
    EXPECT_EQ(reply.status(), 409);
    EXPECT_EQ(reply.at("/code"), 3);
    EXPECT_EQ(reply.text("/detail"), "Somebody is logged in as you from 127.0.0.3 since 12:00.");
    EXPECT_EQ(visitor().login("anna", "wrong").text("/detail"),
              "Name or password is wrong, or this login isn't valid today.");
}

TEST_P(ApiCall, AParentThatIsNotLiveIsNamed) {
    page("aa.en.05").id(15).title("Programme").set("editStatus", "N").insertInDesignOnly();
    page("aa.en.05.01")
        .id(16)
        .title("Evenings")
        .set("editStatus", "N")
        .set("approveStatus", 1)
        .insertInDesignOnly();
    const ApiReply reply = loggedIn("sa").post("cManager/publishPage", R"({"pageIdent": 16})");
    EXPECT_EQ(reply.kind(), "parent-not-live") << reply.raw.body;
    EXPECT_EQ(reply.text("/detail"), "Its parent “Programme” isn't live yet.");
}

TEST_P(ApiCall, AWrongPasswordIsARefusal) {
    ApiClient browser = visitor();
    const ApiReply reply = browser.login("anna", "wrong");
    EXPECT_EQ(reply.status(), 409);
    EXPECT_EQ(reply.at("/code"), 1);
    EXPECT_EQ(reply.text("/detail"), "Name or password is wrong, or this login isn't valid today.");
}

TEST_P(ApiCall, WhatIsNoRefusalIsAResult) {
    const ApiReply reply = loggedIn().get("cManager/getPageId?nodeId=aa.en.77");
    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(text(reply.body), R"({"result":0})");
}

// ---- The language ----

TEST_P(ApiCall, VisitorsAreToldInTheLanguageOfTheirBrowsers) {
    ApiClient nobody = visitor();
    const auto detail = [&](const std::string& language) {
        nobody.language = language;
        return nobody.post("cManager/checkOut").text("/detail");
    };
    EXPECT_EQ(detail("de"), "Sie sind nicht angemeldet.");
    EXPECT_EQ(detail("de-AT,en;q=0.5"), "Sie sind nicht angemeldet.");
    EXPECT_EQ(detail("fr,en;q=0.5,de;q=0.8"), "Sie sind nicht angemeldet.");
    EXPECT_EQ(detail("fr"), "You are not logged in.");
    EXPECT_EQ(detail(";;q=,,"), "You are not logged in.");
}

TEST_P(ApiCall, AuthorsAreToldInTheLanguageOfTheirInterface) {
    row("TORVEX_SETUP",
        {{"loginId", 7}, {"parameter", "torvex_interface_language"}, {"value", "de"}, {"dataType", "C"}});
    ApiClient browser = loggedIn();
    EXPECT_EQ(browser.post("cManager/publishPage", R"({"pageIdent": 12})").text("/detail"),
              "Dazu haben Sie nicht das Recht.");
}

TEST_P(ApiCall, WhatAnArgumentNeedsIsToldInTheLanguageOfTheInterface) {
    row("TORVEX_SETUP",
        {{"loginId", 7}, {"parameter", "torvex_interface_language"}, {"value", "de"}, {"dataType", "C"}});
    ApiClient browser = loggedIn();
    const auto detail = [&](const std::string& body) {
        return browser.post("cManager/approvePage", body).text("/detail");
    };
    EXPECT_EQ(detail(R"({"pageIdent": 12})"), "„state“ passt nicht: Es fehlt.");
    EXPECT_EQ(detail(R"({"pageIdent": 12, "state": "one"})"),
              "„state“ passt nicht: Es muss eine ganze Zahl von -32768 bis 32767 sein.");
    EXPECT_EQ(detail(R"({"pageIdent": [12], "state": 1})"),
              "„pageIdent“ passt nicht: Es muss ein Text, eine Zahl, true, false oder null sein.");
    EXPECT_EQ(browser.batch(R"({"on": 1, "do": "checkOut"})").text("/detail"),
              "„on“ passt nicht: Es muss ein Text sein.");
}

// ---- 429 ----

TEST_P(ApiCall, AHundredCallsAtOnceAreTooFastAndOneMoreIsToldToWait) {
    ApiClient browser = loggedIn();
    ApiReply reply = browser.get("cManager/getLoginState?loginId=7");
    for (int i = 0; i < 400 && reply.status() == 200; ++i)
        reply = browser.get("cManager/getLoginState?loginId=7");
    EXPECT_EQ(reply.status(), 429);
    EXPECT_EQ(reply.kind(), "too-fast");
    EXPECT_EQ(reply.raw.field("Retry-After"), "1");
    EXPECT_EQ(loggedIn("sa").get("cManager/getLoginState?loginId=7").status(), 200);
}

TEST_P(ApiCall, GuessesAreSlowedDown) {
    ApiReply reply;
    for (int i = 0; i < 30 && reply.status() != 429; ++i) reply = visitor().login("anna", "wrong");
    EXPECT_EQ(reply.status(), 429);
    EXPECT_EQ(reply.kind(), "locked-out");
    EXPECT_GT(std::stoi("0" + reply.raw.field("Retry-After")), 0);
}

// ---- 500 ----

TEST_P(ApiCall, AFailureGivesItsReferenceAndTheLogHasTheRest) {
    ApiClient browser = loggedIn("sa");
    drop("TORVEX_PAGES_LIVE");
    const ApiReply reply = browser.get("cServer/getPageTitle?pageIdent=12");
    EXPECT_EQ(reply.status(), 500);
    EXPECT_EQ(reply.kind(), "failed");
    const std::string reference = reply.text("/reference");
    EXPECT_EQ(reference.size(), 9U);
    EXPECT_THAT(reply.text("/detail"), HasSubstr(reference));
    EXPECT_THAT(reply.raw.body, Not(HasSubstr("TORVEX_PAGES_LIVE")));
    EXPECT_THAT(running.logged(),
                testing::Contains(testing::AllOf(HasSubstr(reference), HasSubstr("getPageTitle"))));
}

}  // namespace
}  // namespace torvex
