#include "accounts/StrongPassword.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "accounts/StoredPassword.h"

namespace torvex {
namespace {

TEST(StrongPassword, HashIsArgon2idAndHoldsNothingOfThePassword) {
    const StrongForm form = makeStrongForm("Open Sesame");
    EXPECT_TRUE(form.hash.starts_with("$argon2id$v=19$m=32768,t=3,p=1$")) << form.hash;
    EXPECT_EQ(form.hash.find("SESAME"), std::string::npos);
    EXPECT_EQ(form.hash.find(encodePassword("Open Sesame")), std::string::npos);
}

TEST(StrongPassword, ThePasswordAloneIsRecognised) {
    const StrongForm form = makeStrongForm("open sesame");
    EXPECT_TRUE(isPasswordOf(form.hash, "open sesame"));
    EXPECT_FALSE(isPasswordOf(form.hash, "open barley"));
    EXPECT_FALSE(isPasswordOf(form.hash, ""));
}

TEST(StrongPassword, CaseAndBlanksAroundAreIgnored) {
    const StrongForm form = makeStrongForm("École d'été");
    EXPECT_TRUE(isPasswordOf(form.hash, "  ÉCOLE D'ÉTÉ "));
    EXPECT_FALSE(isPasswordOf(form.hash, "École d'été!"));
}

TEST(StrongPassword, WhatFollowsTheTwentiethCharacterCounts) {
    const StrongForm form = makeStrongForm("correct horse battery staple");
    EXPECT_TRUE(isPasswordOf(form.hash, "Correct horse battery staple"));
    EXPECT_FALSE(isPasswordOf(form.hash, "correct horse battery stable"));
    EXPECT_FALSE(isPasswordOf(form.hash, "correct horse batter"));
}

TEST(StrongPassword, EachHashHasASaltAndAMarkOfItsOwn) {
    const StrongForm one = makeStrongForm("same");
    const StrongForm other = makeStrongForm("same");
    EXPECT_NE(one.hash, other.hash);
    EXPECT_NE(one.mark, other.mark);
}

TEST(StrongPassword, NoTypedPasswordEncodesToAMark) {
    const StrongForm form = makeStrongForm("word");
    EXPECT_TRUE(isStrongMark(form.mark));
    EXPECT_EQ(form.mark.size(), 20U);
    for (const std::string& typed : {std::string("strong:"), form.mark, form.hash}) {
        EXPECT_FALSE(isStrongMark(encodePassword(typed)));
    }
    EXPECT_FALSE(isStrongMark(""));
    EXPECT_FALSE(isStrongMark("locked"));
}

TEST(StrongPassword, ABrokenHashIsNobodysPassword) {
    for (const auto* hash : {"", "x", "$argon2id$", "9514121031514491"}) {
        EXPECT_FALSE(isPasswordOf(hash, "")) << hash;
        EXPECT_FALSE(isPasswordOf(hash, hash)) << hash;
    }
}

TEST(StrongPassword, BytesOfAnyKindMakeAPassword) {
    const std::string odd("a\0b\xff\xfe", 5);
    const StrongForm form = makeStrongForm(odd);
    EXPECT_TRUE(isPasswordOf(form.hash, odd));
    EXPECT_FALSE(isPasswordOf(form.hash, "a"));
}

}  // namespace
}  // namespace torvex
