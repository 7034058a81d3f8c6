// Whatever may be wrong with a request, at every address of the interface for programs: the problem is told in the
// caller's language, and no deed has been begun. In place of the deeds the rows only say that they were reached.

#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "pages/api/Problem.h"
#include "records/Vocabulary.h"
#include "support/ApiTest.h"

namespace torvex {
namespace {

namespace json = boost::json;
namespace kind = api::kind;
using operations::Argument;
using operations::Effect;
using operations::Operation;
using test::ApiClient;
using test::ApiReply;
using testing::HasSubstr;

class ApiBadInput : public test::ApiTest {
  protected:
    void SetUp() override {
        ApiTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_SETUP", {{"loginId", sa},
                             {"parameter", "torvex_interface_language"},
                             {"value", "de"},
                             {"dataType", "C"}});
        api = std::make_shared<api::Api>(throttle, operations::Register(onlyReached()));
        api->ofSessions = {1e9, 1e9};
        start();
    }
    ApiClient german(const std::string& address = "127.0.0.1") {
        ApiClient made = loggedIn("sa", address);
        made.language = "de";
        return made;
    }

    /// Asks at the address of each row that can be asked for.
    template <typename Ask>
    void atEachRow(Ask ask) {
        for (const auto& entry : api->classes.classes()) {
            for (const auto& operation : entry.operations) {
                if (operation.right.kind == operations::Right::Kind::Nobody) continue;
                SCOPED_TRACE(entry.name + '.' + operation.name);
                ask(entry.name + '/' + operation.name, operation);
                if (HasFatalFailure()) return;
            }
        }
    }
    /// A problem of this kind in German, by which nothing was begun.
    void expectProblem(const ApiReply& reply, const api::ProblemKind& expected) {
        ASSERT_EQ(reply.status(), expected.status) << reply.raw.body;
        EXPECT_EQ(reply.kind(), expected.name);
        EXPECT_EQ(reply.raw.field("Content-Type"), "application/problem+json");
        const std::string sentence = vocabularyText(connection(), "de", expected.label);
        ASSERT_NE(sentence, "");
        if (sentence.find('{') == std::string::npos) {
            EXPECT_EQ(reply.text("/detail"), sentence);
        }
        EXPECT_EQ(reached, 0);
    }
    void expectNotFitting(const ApiReply& reply, const std::string& argument) {
        expectProblem(reply, kind::notFitting);
        EXPECT_EQ(reply.text("/argument"), argument);
        EXPECT_THAT(reply.text("/detail"), HasSubstr(" passt nicht: "));
    }
};
// What is refused here comes to no database.
INSTANTIATE_TEST_SUITE_P(Engines, ApiBadInput, testing::Values(db::Engine::Sqlite), test::engineName);

TEST_P(ApiBadInput, WhatIsNoJsonObject) {
    ApiClient browser = german();
    const std::string deep = R"({"pageIdent": )" + std::string(10'000, '[') + std::string(10'000, ']') + "}";
    std::string nested;
    for (int i = 0; i < 10'000; ++i) nested += R"({"a":)";
    atEachRow([&](const std::string& path, const Operation&) {
        for (const std::string& body :
             {std::string("x"), std::string("[{}]"), std::string("{"), deep, nested,
              std::string(R"({"a": 1, "b": 2, "a": 1})"), std::string("{\"a\": \"\xC3\"}"),
              std::string("{\"a\": \"\xED\xA0\x80\"}"), std::string(R"({"a": "\ud800"})")}) {
            SCOPED_TRACE(body.substr(0, 30));
            expectProblem(browser.post(path, body), kind::notUnderstood);
        }
    });
}

TEST_P(ApiBadInput, NamesAndValuesThatDontFit) {
    ApiClient browser = german();
    atEachRow([&](const std::string& path, const Operation& operation) {
        expectNotFitting(browser.post(path, R"({"no such argument": 1})"), "no such argument");
        expectNotFitting(browser.post(path, R"({"a": 1e999})"), "");
        for (const Argument& argument : operation.arguments) {
            if (argument.withheld || operation.isFilledByGate(argument)) continue;
            SCOPED_TRACE(argument.name);
            for (const std::string value : {"[]", "{}", R"("a\u0000b")"}) {
                expectNotFitting(browser.post(path, "{\"" + argument.name + "\": " + value + "}"),
                                 argument.name);
            }
        }
    });
}

TEST_P(ApiBadInput, AHundredMegabytesAndBodiesThatAreNoJson) {
    ApiClient browser = german();
    const std::string fields = "X-Torvex-Token: " + browser.token + "\r\n";
    const auto at = [&](const std::string& path) {
        expectProblem(browser.ask("POST", path,
                                  fields + "Content-Type: application/json\r\nContent-Length: 104857600\r\n"),
                      kind::tooLarge);
        for (const std::string type :
             {"application/x-www-form-urlencoded", "text/plain", "multipart/form-data; boundary=x"}) {
            expectProblem(browser.ask("POST", path, fields + "Content-Type: " + type + "\r\n", "a=1"),
                          kind::otherType);
        }
    };
    at("batch");
    atEachRow([&](const std::string& path, const Operation&) { at(path); });
}

TEST_P(ApiBadInput, WhoeverCantShowThatItIsThePagesOwn) {
    ApiClient browser = german();
    ApiClient other = german("127.0.0.2");
    const std::string json = "Content-Type: application/json\r\n";
    const std::string token = "X-Torvex-Token: " + browser.token + "\r\n";
    const auto at = [&](const std::string& path, const std::string& body) {
        for (const std::string& fields :
             {json, json + "X-Torvex-Token: " + other.token + "\r\n",
              json + token + "Origin: https://evil.test\r\n", json + token + "Origin: null\r\n",
              json + token + "Sec-Fetch-Site: cross-site\r\n"}) {
            SCOPED_TRACE(fields);
            expectProblem(browser.ask("POST", path, fields, body), kind::foreign);
        }
    };
    at("batch", R"({"calls": [{"on": "desk", "do": "leave"}]})");
    atEachRow([&](const std::string& path, const Operation&) { at(path, "{}"); });
}

TEST_P(ApiBadInput, MethodsThatAnAddressHasNot) {
    ApiClient browser = german();
    const std::string token = "X-Torvex-Token: " + browser.token + "\r\n";
    const auto refuses = [&](const std::string& method, const std::string& path, const std::string& allowed) {
        SCOPED_TRACE(method);
        const ApiReply reply = browser.ask(method, path, token);
        expectProblem(reply, kind::otherMethod);
        EXPECT_EQ(reply.raw.field("Allow"), allowed);
    };
    atEachRow([&](const std::string& path, const Operation& operation) {
        const bool isRead = operation.effect == Effect::Reads;
        const std::string allowed = isRead ? "GET, HEAD, POST" : "POST";
        for (const std::string method : {"PUT", "PATCH", "DELETE", "OPTIONS"}) refuses(method, path, allowed);
        if (!isRead) refuses("GET", path, allowed);
    });
    for (const std::string method : {"GET", "PUT", "DELETE"}) refuses(method, "batch", "POST");
    for (const std::string path : {"session", "labels?lang=de", "openapi.json", "export/users.csv"})
        for (const std::string method : {"PUT", "PATCH", "DELETE"}) refuses(method, path, "GET, HEAD");
}

}  // namespace
}  // namespace torvex
