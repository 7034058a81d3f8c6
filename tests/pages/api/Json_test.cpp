#include "pages/api/Json.h"

#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "operations/register/PublicObject.h"

namespace torvex::api {
namespace {

namespace json = boost::json;

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

/// As it was read; "?" for what isn't JSON, "∞" for a number that isn't finite.
std::string read(std::string_view text) {
    const auto outcome = readJson(text);
    if (const auto* fault = std::get_if<JsonFault>(&outcome))
        return *fault == JsonFault::NotFinite ? "∞" : "?";
    return json::serialize(std::get<json::value>(outcome));
}

TEST(ApiJson, ValuesAreRead) {
    EXPECT_EQ(read(R"( {"a": [1, "ä", true, null, -0.5]} )"), R"({"a":[1,"ä",true,null,-5E-1]})");
    EXPECT_EQ(read("\"\\ud83c\\udf39\""), "\"🌹\"");
}

TEST(ApiJson, AByteOrderMarkIsPassedOver) {
    EXPECT_EQ(read("\xEF\xBB\xBF{}"), "{}");
    EXPECT_EQ(read("\xEF\xBB\xBF\xEF\xBB\xBF{}"), "?");
}

TEST(ApiJson, WhatIsNoJsonIsNotRead) {
    for (const std::string_view text :
         {"", " ", "x", "{", "[1,]", "{\"a\":1,}", "{a: 1}", "'a'", "01", "+1", ".5", "NaN", "Infinity", "-",
          "// a\n1", "1 2", "\"\n\"", "\"\\x\"", "tru"})
        EXPECT_EQ(read(text), "?") << text;
}

TEST(ApiJson, TextThatIsNoUnicodeIsNotRead) {
    for (const std::string_view text :
         {"\"\xff\"", "\"\xc0\x80\"", "\"\xed\xa0\x80\"", "\"\xf5\x80\x80\x80\"", "\"\xe2\x82\"",
          "\"\\ud800\"", "\"\\ud800x\"", "\"\\udc00\"", "\"\\ud800\\ud800\"", "{\"\xff\": 1}"})
        EXPECT_EQ(read(text), "?") << text;
}

TEST(ApiJson, AKeyStandsOnceInAnObject) {
    EXPECT_EQ(read(R"({"a": 1, "b": 2, "a": 1})"), "?");
    EXPECT_EQ(read("{\"a\": 1, \"\\u0061\": 2}"), "?");
    EXPECT_EQ(read(R"([{"b": {"a": 1, "a": 2}}])"), "?");
    EXPECT_EQ(read(R"({"a": {"a": 1}, "A": [{"a": 1}, {"a": 2}]})"),
              R"({"a":{"a":1},"A":[{"a":1},{"a":2}]})");
}

TEST(ApiJson, ItIsAtMost64LevelsDeep) {
    EXPECT_EQ(read(nested(64)), nested(64));
    EXPECT_EQ(read(nested(65)), "?");
    EXPECT_EQ(read(nested(10000)), "?");
    EXPECT_EQ(read(std::string(1'000'000, '[')), "?");
}

TEST(ApiJson, ANumberThatIsNotFiniteIsTold) {
    EXPECT_EQ(read("1e999"), "∞");
    EXPECT_EQ(read("[-1e999]"), "∞");
    EXPECT_EQ(read("1e99999999999999999999"), "∞");
    EXPECT_EQ(read(std::string(400, '9')), "∞");
    EXPECT_EQ(read("1e-999"), "0E0");
}

/// What is read of texts that are nearly JSON can be written and read again.
TEST(ApiJson, RandomChangesOfTextsAreReadOrNot) {
    const std::vector<std::string> texts{
        R"({"calls": [{"on": "a", "do": "b", "with": {"c": [1, -2.5e3, "\u00e4"]}}]})", nested(60),
        R"({"a": "\ud83c\udf39", "b": [true, null, {"a": ""}]})"};
    std::mt19937 random(1);
    for (int i = 0; i < 60'000; ++i) {
        std::string text = texts[random() % texts.size()];
        for (unsigned changes = random() % 4 + 1; changes > 0; --changes) {
            const std::size_t at = random() % text.size();
            if (random() % 3 == 0) {
                text.insert(at, text.substr(random() % text.size(), random() % 20));
            } else {
                text[at] = static_cast<char>(random() % 256);
            }
        }
        const auto outcome = readJson(text);
        const auto* value = std::get_if<json::value>(&outcome);
        if (!value) continue;
        const std::string written = json::serialize(*value);
        ASSERT_NE(read(written), "?") << text;
    }
}

TEST(ApiJson, ArgumentsAreSingleValues) {
    EXPECT_EQ(argumentOf(nullptr, "a"), Value());
    EXPECT_EQ(argumentOf(true, "a"), Value(true));
    EXPECT_EQ(argumentOf(12, "a"), Value(12));
    EXPECT_EQ(argumentOf(json::string("x"), "a"), Value("x"));
    EXPECT_THROW(argumentOf(json::array{}, "a"), operations::ArgumentError);
    EXPECT_THROW(argumentOf(json::object{}, "a"), operations::ArgumentError);
    EXPECT_THROW(argumentOf(json::string(std::string_view("x\0", 2)), "a"), operations::ArgumentError);
}

TEST(ApiJson, ValuesAreWritten) {
    EXPECT_EQ(json::serialize(jsonOf(Value())), "null");
    EXPECT_EQ(json::serialize(jsonOf(Value(12.0))), "12");
    EXPECT_EQ(json::serialize(jsonOf(Value(-0.25))), "-2.5E-1");
    EXPECT_EQ(json::serialize(jsonOf(Value(std::numeric_limits<double>::infinity()))), "null");
    EXPECT_EQ(json::serialize(jsonOf(Value(DateTime{2026, 6, 15, 12, 0, 0}))), "\"2026-06-15T12:00:00\"");
    EXPECT_EQ(json::serialize(jsonOf(Value("a\xff"))), "\"a\xEF\xBF\xBD\"");
}

TEST(ApiJson, AGridHasTheColumnsThatAreFilled) {
    operations::Operation operation{};
    operation.columns = {{"id", operations::ColumnType::Number}, {"since", operations::ColumnType::Date}};
    ResultGrid grid(3);
    grid.add({12, DateTime{2026, 6, 15, 12, 0, 0}, "never"});
    grid.add({13});
    const std::string columns =
        R"({"columns":[{"name":"id","type":"number"},{"name":"since","type":"date"}],"rows":)";
    EXPECT_EQ(json::serialize(jsonOf(gridOrEmpty(std::move(grid)), operation)),
              columns + R"([[12,"2026-06-15T12:00:00"],[13,null]]})");
    EXPECT_EQ(json::serialize(jsonOf(Value(), operation)), columns + "[]}");
    EXPECT_EQ(json::serialize(jsonOf(Value("-1"), operation)), "\"-1\"");
}

}  // namespace
}  // namespace torvex::api
