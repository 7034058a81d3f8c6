#include "operations/calls/BatchAnswer.h"

#include <gtest/gtest.h>
#include <limits>

#include "platform/Errors.h"

namespace torvex::operations {
namespace {

std::string resultsJson(std::vector<Value> results) {
    BatchAnswer answer;
    answer.results = std::move(results);
    return toJson(answer);
}

TEST(BatchAnswer, NoCallsGiveNoResults) {
    EXPECT_EQ(resultsJson({}), R"({"results":[]})");
}

TEST(BatchAnswer, SimpleValuesStandAsSuch) {
    EXPECT_EQ(resultsJson({{}, true, false, "a\"b", 12}), R"({"results":[null,true,false,"a\"b",12]})");
}

TEST(BatchAnswer, WholeNumbersHaveNoFraction) {
    EXPECT_EQ(resultsJson({-1, 0.0, 100000, 9007199254740992.0}),
              R"({"results":[-1,0,100000,9007199254740992]})");
}

TEST(BatchAnswer, ANumberThatJsonDoesNotKnowIsNull) {
    EXPECT_EQ(
        resultsJson({std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}),
        R"({"results":[null,null]})");
}

TEST(BatchAnswer, AMomentIsItsIsoText) {
    EXPECT_EQ(resultsJson({DateTime{2026, 6, 15, 12, 0, 0}}), R"({"results":["2026-06-15T12:00:00"]})");
}

TEST(BatchAnswer, AGridShowsItsColumnsAndNullsWhereNothingIsFilled) {
    ResultGrid grid(3);
    grid.add({1, "one"});
    grid.add({2, {}, DateTime{2026, 1, 2, 3, 4, 5}});
    EXPECT_EQ(resultsJson({gridOrEmpty(std::move(grid))}),
              R"({"results":[{"columns":3,"rows":[[1,"one",null],[2,null,"2026-01-02T03:04:05"]]}]})");
}

TEST(BatchAnswer, AnEmptyGridIsNull) {
    EXPECT_EQ(resultsJson({gridOrEmpty(ResultGrid(3))}), R"({"results":[null]})");
}

TEST(BatchAnswer, MalformedTextIsMadeValid) {
    EXPECT_EQ(resultsJson({std::string("a\xFF")}), "{\"results\":[\"a\xEF\xBF\xBD\"]}");
}

TEST(BatchAnswer, ANulStaysInAText) {
    EXPECT_EQ(resultsJson({std::string("a\0b", 3)}), R"({"results":["a\u0000b"]})");
}

TEST(BatchAnswer, AFailureStandsBesideTheResultsSoFar) {
    BatchAnswer answer;
    answer.results = {1};
    answer.failure = BatchFailure{40000, "Error in function getPage!\r\nno table", 1};
    EXPECT_EQ(
        toJson(answer),
        R"({"results":[1],"error":{"number":40000,"description":"Error in function getPage!\r\nno table","call":1}})");
}

TEST(BatchAnswer, AFailureBeforeTheFirstCallNamesNone) {
    BatchAnswer answer;
    answer.failure = BatchFailure{40000, "the line must be an object", std::nullopt};
    EXPECT_EQ(toJson(answer),
              R"({"results":[],"error":{"number":40000,"description":"the line must be an object"}})");
}

TEST(BatchAnswer, ATouchedResponseIsShownWhole) {
    BatchAnswer answer;
    answer.response.charset = "utf-8";
    answer.response.write("<p>");
    EXPECT_EQ(
        toJson(answer),
        R"({"results":[],"response":{"status":200,"contentType":"text/html","charset":"utf-8","headers":{},)"
        R"("expires":null,"cacheControl":"","body":"<p>"}})");
}

TEST(BatchAnswer, ARepeatedHeaderIsAList) {
    BatchAnswer answer;
    answer.response.addHeader("X-One", "1");
    answer.response.addHeader("X-Two", "a");
    answer.response.addHeader("X-Two", "b");
    EXPECT_NE(toJson(answer).find(R"("headers":{"X-One":"1","X-Two":["a","b"]})"), std::string::npos);
}

TEST(BatchAnswer, ABinaryBodyIsBase64) {
    BatchAnswer answer;
    answer.response.binaryWrite(std::string("\0\xFF\x10", 3));
    const std::string json = toJson(answer);
    EXPECT_NE(json.find(R"("bodyBase64":"AP8Q")"), std::string::npos) << json;
    EXPECT_EQ(json.find(R"("body":)"), std::string::npos);
}

TEST(BatchAnswer, TheEndOfResponseAndSessionAreMarked) {
    BatchAnswer answer;
    answer.abandoned = true;
    answer.ended = true;
    EXPECT_EQ(toJson(answer), R"({"results":[],"ended":true,"abandoned":true})");
}

}  // namespace
}  // namespace torvex::operations
