#include "operations/calls/BatchRequest.h"

#include <gtest/gtest.h>

#include "platform/Errors.h"

namespace torvex::operations {
namespace {

std::string refusalOf(std::string_view line) {
    try {
        parseBatchRequest(line);
    } catch (const Error& error) {
        return error.what();
    }
    return "accepted";
}

TEST(BatchRequest, AnEmptyObjectIsTheFirstVisitorWhoCallsNothing) {
    const auto request = parseBatchRequest("{}");
    EXPECT_EQ(request.visitor, "1");
    EXPECT_FALSE(request.now);
    EXPECT_FALSE(request.login);
    EXPECT_TRUE(request.steps.empty());
}

TEST(BatchRequest, ReadsTheClockTheVisitorAndTheLogin) {
    const auto request = parseBatchRequest(R"({"now":"2026-06-15T12:30:05","visitor":"anna","login":"sa"})");
    ASSERT_TRUE(request.now);
    EXPECT_EQ(*request.now, (DateTime{2026, 6, 15, 12, 30, 5}));
    EXPECT_EQ(request.visitor, "anna");
    EXPECT_EQ(request.login, "sa");
}

TEST(BatchRequest, AVisitorMayBeANumber) {
    EXPECT_EQ(parseBatchRequest(R"({"visitor":2})").visitor, "2");
}

TEST(BatchRequest, ReadsEveryKindOfValue) {
    const auto request = parseBatchRequest(R"({"session":{"a":null,"b":true,"c":12,"d":-1.5,"e":"x"}})");
    ASSERT_EQ(request.session.size(), 5U);
    EXPECT_TRUE(request.session[0].second.isEmpty());
    EXPECT_EQ(request.session[1].second, Value(true));
    EXPECT_EQ(request.session[2].second, Value(12));
    EXPECT_EQ(request.session[3].second, Value(-1.5));
    EXPECT_EQ(request.session[4].second, Value("x"));
}

TEST(BatchRequest, ReadsWhatTheVisitorSends) {
    const auto request = parseBatchRequest(
        R"({"request":{"query":"a=1&b=%32","form":{"name":"x","n":7,"many":["p","q"]},"server":{"HTTP_HOST":"h"}}})");
    EXPECT_EQ(request.query, "a=1&b=%32");
    const NamedValues form{{"name", "x"}, {"n", "7"}, {"many", "p"}, {"many", "q"}};
    EXPECT_EQ(request.form, form);
    const NamedValues server{{"HTTP_HOST", "h"}};
    EXPECT_EQ(request.serverVariables, server);
}

TEST(BatchRequest, ReadsEveryKindOfCallInOrder) {
    const auto request = parseBatchRequest(R"({"calls":[
        {"on":"cServer","do":"getPage","with":{"pageIdent":"12"}}, {"on":"cServer#2","get":"pgAccess"},
        {"on":"HTMLTemplate","set":"strVal","to":"text"}, {"session":"a"}, {"application":"b"}]})");
    ASSERT_EQ(request.steps.size(), 5U);
    const auto& call = std::get<Call>(request.steps[0]);
    EXPECT_EQ(call.object, "cServer");
    EXPECT_EQ(call.operation, "getPage");
    ASSERT_EQ(call.arguments.size(), 1U);
    EXPECT_EQ(call.arguments[0].second, Value("12"));
    EXPECT_EQ(std::get<PropertyRead>(request.steps[1]).object, "cServer#2");
    EXPECT_EQ(std::get<PropertyWrite>(request.steps[2]).value, Value("text"));
    EXPECT_EQ(std::get<SessionRead>(request.steps[3]).key, "a");
    EXPECT_EQ(std::get<ApplicationRead>(request.steps[4]).key, "b");
}

TEST(BatchRequest, KeepsANulInAText) {
    const auto request =
        parseBatchRequest(R"({"calls":[{"on":"HTMLTemplate","set":"strVal","to":"a\u0000b"}]})");
    EXPECT_EQ(std::get<PropertyWrite>(request.steps[0]).value, Value(std::string("a\0b", 3)));
}

TEST(BatchRequest, ReadsALineOfSeveralMegabytes) {
    const std::string text(8U << 20U, 'x');
    const auto request =
        parseBatchRequest(R"({"calls":[{"on":"HTMLTemplate","set":"strVal","to":")" + text + "\"}]}");
    EXPECT_EQ(std::get<PropertyWrite>(request.steps[0]).value.text().size(), text.size());
}

TEST(BatchRequest, RefusesWhatIsNoJson) {
    for (const std::string_view line :
         {"", "   ", "{", "getPage", "{\"calls\":[}", "{} {}", "{\"visitor\":\"\xFF\"}"}) {
        EXPECT_TRUE(refusalOf(line).starts_with("the line is not JSON: ")) << line;
    }
}

TEST(BatchRequest, RefusesNestingWithoutEnd) {
    EXPECT_TRUE(refusalOf(std::string(100000, '[')).starts_with("the line is not JSON: "));
}

TEST(BatchRequest, RefusesWhatIsNoObject) {
    for (const auto* line : {"[]", "12", "\"x\"", "null", "true"}) {
        EXPECT_EQ(refusalOf(line), "the line must be an object") << line;
    }
}

TEST(BatchRequest, RefusesUnknownFields) {
    EXPECT_EQ(refusalOf(R"({"vistor":"1"})"),
              "the line has no field \"vistor\"; the fields are now, visitor, login, session, application, "
              "request, "
              "calls");
    EXPECT_NE(refusalOf(R"({"request":{"cookies":{}}})"), "accepted");
    EXPECT_NE(refusalOf(R"({"calls":[{"on":"cServer","do":"getPage","args":{}}]})"), "accepted");
}

TEST(BatchRequest, RefusesValuesOfTheWrongKind) {
    EXPECT_EQ(refusalOf(R"({"now":"yesterday"})"), "\"now\" must be a moment like 2026-06-15T12:00:00");
    EXPECT_EQ(refusalOf(R"({"visitor":true})"), "\"visitor\" must be a text");
    EXPECT_EQ(refusalOf(R"({"login":null})"), "\"login\" must be a text");
    EXPECT_EQ(refusalOf(R"({"session":{"a":[1]}})"),
              "\"session\": \"a\" must be null, true, false, a number or a text");
    EXPECT_EQ(refusalOf(R"({"calls":{}})"), "\"calls\" must be a list");
    EXPECT_EQ(refusalOf(R"({"request":"a=1"})"), "\"request\" must be an object");
}

TEST(BatchRequest, NamesTheCallThatIsNone) {
    EXPECT_EQ(refusalOf(R"({"calls":[{"session":"a"}, 7]})"), "call 1 must be an object");
    EXPECT_EQ(refusalOf(R"({"calls":[{"do":"getPage"}]})"), "call 0 has no field \"on\"");
    EXPECT_EQ(refusalOf(R"({"calls":[{"on":"HTMLTemplate","set":"strVal"}]})"), "call 0 has no field \"to\"");
    EXPECT_NE(refusalOf(R"({"calls":[{"on":"cServer"}]})"), "accepted");
}

}  // namespace
}  // namespace torvex::operations
