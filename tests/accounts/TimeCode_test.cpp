#include "accounts/TimeCode.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

/// The secret of the published examples.
constexpr std::string_view published = "12345678901234567890";

TEST(TimeCode, GivesThePublishedCodes) {
    const std::vector<std::pair<std::int64_t, std::string>> examples{
        {59, "94287082"},         {1111111109, "07081804"}, {1111111111, "14050471"},
        {1234567890, "89005924"}, {2000000000, "69279037"}, {20000000000, "65353130"}};
    for (const auto& [moment, code] : examples) {
        EXPECT_EQ(timeCode(published, stepAt(moment), 8), code);
        EXPECT_EQ(timeCode(published, stepAt(moment)), code.substr(2));
    }
}

TEST(TimeCode, AStepLastsThirtySeconds) {
    EXPECT_EQ(stepAt(59), 1);
    EXPECT_EQ(stepAt(60), 2);
    EXPECT_EQ(stepAt(89), 2);
}

TEST(TimeCode, TheCodesOfTheNeighboursAreTakenAndNoOthers) {
    for (const std::int64_t step : {999, 1000, 1001})
        EXPECT_EQ(typedStep(published, timeCode(published, step), 1000, 0), step);
    for (const std::int64_t step : {997, 998, 1002, 1003})
        EXPECT_FALSE(typedStep(published, timeCode(published, step), 1000, 0));
}

TEST(TimeCode, AStepThatWasTakenIsNotTakenAgainNorOneBefore) {
    EXPECT_FALSE(typedStep(published, timeCode(published, 1000), 1000, 1000));
    EXPECT_FALSE(typedStep(published, timeCode(published, 999), 1000, 1000));
    EXPECT_EQ(typedStep(published, timeCode(published, 1001), 1000, 1000), 1001);
}

TEST(TimeCode, WhatIsNoCodeIsNone) {
    const std::string code = timeCode(published, 1000);
    for (const std::string& typed :
         {std::string(), code.substr(1), code + "0", " " + code, std::string("abcdef"), std::string(6, '\0')})
        EXPECT_FALSE(typedStep(published, typed, 1000, 0)) << typed;
    EXPECT_FALSE(typedStep("another secret", code, 1000, 0));
}

TEST(TimeCode, ReadsThePublishedTextsOfBase32) {
    EXPECT_EQ(bytesOfBase32(""), "");
    EXPECT_EQ(bytesOfBase32("MY"), "f");
    EXPECT_EQ(bytesOfBase32("MZXW6"), "foo");
    EXPECT_EQ(bytesOfBase32("MZXW6YTB"), "fooba");
    EXPECT_EQ(bytesOfBase32("MZXW6YTBOI"), "foobar");
    EXPECT_EQ(bytesOfBase32("GEZDGNBVGY3TQOJQGEZDGNBVGY3TQOJQ"), published);
    EXPECT_FALSE(bytesOfBase32("MZXW1"));
    EXPECT_FALSE(bytesOfBase32("mzxw6"));
}

TEST(TimeCode, SecretsHaveTwentyBytesAndDiffer) {
    EXPECT_EQ(newSecret().size(), 32U);
    EXPECT_EQ(bytesOfBase32(newSecret())->size(), 20U);
    EXPECT_NE(newSecret(), newSecret());
}

TEST(TimeCode, TheAddressForApplicationsHasAllTheyNeedAndIsEscaped) {
    EXPECT_EQ(enrolmentAddress("Torvex", "anna & co - www.site.test:8080", "MZXW6YTB"),
              "otpauth://totp/Torvex:anna%20%26%20co%20%2D%20www%2Esite%2Etest%3A8080?secret=MZXW6YTB&"
              "issuer=Torvex&algorithm=SHA1&digits=6&period=30");
}

}  // namespace
}  // namespace torvex
