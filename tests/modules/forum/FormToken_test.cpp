#include "modules/forum/FormToken.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

constexpr DateTime noon{2026, 6, 15, 12, 0, 0};
constexpr DateTime seconds(int second) {
    return {2026, 6, 15, 12, 0, second};
}

TEST(FormToken, IsGoodForItsPurposeAfterAMoment) {
    const FormTokens tokens;
    const std::string token = tokens.make("1/2/3", noon);
    EXPECT_EQ(tokens.check(token, "1/2/3", seconds(3)), TokenState::Good);
    EXPECT_EQ(tokens.check(token, "1/2/3", {2026, 6, 16, 12, 0, 0}), TokenState::Good);
}

TEST(FormToken, NobodyTypesInLessThanThreeSeconds) {
    const FormTokens tokens;
    const std::string token = tokens.make("1/2/3", noon);
    EXPECT_EQ(tokens.check(token, "1/2/3", noon), TokenState::TooYoung);
    EXPECT_EQ(tokens.check(token, "1/2/3", seconds(2)), TokenState::TooYoung);
    EXPECT_EQ(tokens.check(token, "1/2/3", {2026, 6, 15, 11, 59, 59}), TokenState::TooYoung);
}

TEST(FormToken, IsOldAfterADay) {
    const FormTokens tokens;
    const std::string token = tokens.make("1/2/3", noon);
    EXPECT_EQ(tokens.check(token, "1/2/3", {2026, 6, 16, 12, 0, 1}), TokenState::TooOld);
    EXPECT_EQ(tokens.check(token, "1/2/3", {2027, 1, 1, 0, 0, 0}), TokenState::TooOld);
}

TEST(FormToken, IsForNoOtherPurposeAndOfNoOtherServer) {
    const FormTokens tokens;
    const std::string token = tokens.make("1/2/3", noon);
    EXPECT_EQ(tokens.check(token, "1/2/4", seconds(9)), TokenState::Foreign);
    EXPECT_EQ(FormTokens().check(token, "1/2/3", seconds(9)), TokenState::Foreign);
}

TEST(FormToken, AnyOtherTextIsForeign) {
    const FormTokens tokens;
    const std::string token = tokens.make("1/2/3", noon);
    for (std::size_t at = 0; at < token.size(); at += 7) {
        std::string changed = token;
        changed[at] = changed[at] == '0' ? '1' : '0';
        EXPECT_EQ(tokens.check(changed, "1/2/3", seconds(9)), TokenState::Foreign) << at;
    }
    for (const std::string& text :
         {std::string(), token.substr(0, 36), token + "0", std::string(5000, 'a')}) {
        EXPECT_EQ(tokens.check(text, "1/2/3", seconds(9)), TokenState::Foreign);
    }
}

TEST(FormToken, EachShowingHasANameOfItsOwn) {
    const FormTokens tokens;
    const std::string one = tokens.make("1/2/3", noon);
    const std::string other = tokens.make("1/2/3", noon);
    EXPECT_NE(FormTokens::nameIn(one), FormTokens::nameIn(other));
    EXPECT_EQ(FormTokens::nameIn(one).size(), 24U);
}

}  // namespace
}  // namespace torvex
