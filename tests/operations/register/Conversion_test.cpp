#include "operations/register/Conversion.h"

#include <gtest/gtest.h>

#include "platform/Errors.h"

namespace torvex::operations {
namespace {

std::string refusal(const Value& given, ArgumentType type) {
    try {
        convert(given, type);
    } catch (const Error& error) {
        return error.what();
    }
    return "accepted";
}

Value oneCellGrid() {
    return std::make_shared<const ResultGrid>(1);
}

TEST(Conversion, ATextStaysWithAllItsBytes) {
    const std::string withNul("a\0b", 3);
    EXPECT_EQ(convert(withNul, ArgumentType::Text), Value(withNul));
}

TEST(Conversion, ANumberBecomesItsPlainTextWhereATextIsWanted) {
    EXPECT_EQ(convert(12, ArgumentType::Text), Value("12"));
    EXPECT_EQ(convert(1.5, ArgumentType::Text), Value("1.5"));
}

TEST(Conversion, EmptyIsTheEmptyTextZeroAndFalse) {
    EXPECT_EQ(convert({}, ArgumentType::Text), Value(""));
    EXPECT_EQ(convert({}, ArgumentType::Number), Value(0.0));
    EXPECT_EQ(convert({}, ArgumentType::Integer), Value(0.0));
    EXPECT_EQ(convert({}, ArgumentType::Boolean), Value(false));
}

TEST(Conversion, ANumberMayComeAsAText) {
    EXPECT_EQ(convert("12.25", ArgumentType::Number), Value(12.25));
    EXPECT_EQ(convert("-7", ArgumentType::Integer), Value(-7));
}

TEST(Conversion, ATextThatIsNoNumberIsRefusedByName) {
    EXPECT_EQ(refusal("twelve", ArgumentType::Number), "must be a number, not \"twelve\"");
    EXPECT_EQ(refusal("", ArgumentType::Number), "must be a number, not \"\"");
    EXPECT_EQ(refusal("1e3", ArgumentType::Number), "must be a number, not \"1e3\"");
}

TEST(Conversion, AnIntegerIsRoundedWithHalvesToTheEvenSide) {
    EXPECT_EQ(convert(2.5, ArgumentType::Integer), Value(2));
    EXPECT_EQ(convert(3.5, ArgumentType::Integer), Value(4));
    EXPECT_EQ(convert(2.6, ArgumentType::Integer), Value(3));
}

TEST(Conversion, AnIntegerHasSixteenBits) {
    EXPECT_EQ(convert(32767, ArgumentType::Integer), Value(32767));
    EXPECT_EQ(convert(-32768, ArgumentType::Integer), Value(-32768));
    EXPECT_EQ(refusal(32768, ArgumentType::Integer),
              "must be a whole number from -32768 to 32767, not \"32768\"");
    EXPECT_EQ(refusal(-32769, ArgumentType::Integer),
              "must be a whole number from -32768 to 32767, not \"-32769\"");
    EXPECT_NE(refusal(1e300, ArgumentType::Integer), "accepted");
}

TEST(Conversion, ABooleanMayBeAWordOrANumber) {
    EXPECT_EQ(convert("TRUE", ArgumentType::Boolean), Value(true));
    EXPECT_EQ(convert("false", ArgumentType::Boolean), Value(false));
    EXPECT_EQ(convert(-1, ArgumentType::Boolean), Value(true));
    EXPECT_EQ(convert("0", ArgumentType::Boolean), Value(false));
    EXPECT_EQ(refusal("yes", ArgumentType::Boolean), "must be true or false, not \"yes\"");
}

TEST(Conversion, ATextFormatIsOneOfThree) {
    EXPECT_EQ(convert("-1", ArgumentType::TextFormat), Value(-1));
    EXPECT_NE(refusal(1, ArgumentType::TextFormat), "accepted");
    EXPECT_NE(refusal(-1.5, ArgumentType::TextFormat), "accepted");
    EXPECT_NE(refusal("unicode", ArgumentType::TextFormat), "accepted");
}

TEST(Conversion, AGridIsNoArgument) {
    for (const auto type : {ArgumentType::Text, ArgumentType::Number, ArgumentType::Integer,
                            ArgumentType::Boolean, ArgumentType::TextFormat}) {
        EXPECT_NE(refusal(oneCellGrid(), type).find("not a grid"), std::string::npos) << typeName(type);
    }
}

TEST(Conversion, AMomentIsNoNumber) {
    EXPECT_EQ(refusal(DateTime{2026, 6, 15, 12, 0, 0}, ArgumentType::Number),
              "must be a number, not \"2026-06-15T12:00:00\"");
}

TEST(Conversion, ARefusalShowsOnlyTheStartOfALongText) {
    const std::string refused = refusal(std::string(1000, 'x'), ArgumentType::Number);
    EXPECT_EQ(refused, "must be a number, not \"" + std::string(40, 'x') + "...\"");
}

}  // namespace
}  // namespace torvex::operations
