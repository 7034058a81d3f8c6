#include "authoring/BranchMove.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(MovedScope, NodesOfTheBranchGetTheirNewBeginning) {
    EXPECT_EQ(movedScope("aa.en.01", "aa.en.01", "aa.en.02.01"), "aa.en.02.01");
    EXPECT_EQ(movedScope("aa.en.01.05,aa.en.03,aa.en.01", "aa.en.01", "aa.en.02.01"),
              "aa.en.02.01.05,aa.en.03,aa.en.02.01");
}

TEST(MovedScope, BlanksAndSignsStay) {
    EXPECT_EQ(movedScope(" aa.en.01++ , ,aa.en.01.02+", "aa.en.01", "aa.en.02"),
              " aa.en.02++ , ,aa.en.02.02+");
}

TEST(MovedScope, CaseDoesNotMatter) {
    EXPECT_EQ(movedScope("AA.EN.01.02", "aa.en.01", "aa.en.03"), "aa.en.03.02");
}

TEST(MovedScope, WhatOnlyHoldsTheNodeStays) {
    // With codes of digits one tree's node may stand within another's.
    for (const char* scope : {"02.01.01.01", "01.01.011", "allsites", "", ","}) {
        EXPECT_EQ(movedScope(scope, "01.01.01", "01.01.02"), scope);
    }
    EXPECT_EQ(movedScope("01.01.01.01.01.01", "01.01.01", "01.01.02"), "01.01.02.01.01.01");
}

}  // namespace
}  // namespace torvex
