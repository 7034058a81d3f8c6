#include "platform/Errors.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

template <typename Work>
std::string errorOf(Work work) {
    try {
        work();
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

TEST(Errors, EachOperationPutsItsLineInFront) {
    const std::string error =
        errorOf([] { asLevel("outer !", [] { asLevel("inner !", [] { throw Error("disk full"); }); }); });
    EXPECT_EQ(error, "Error in function outer !\r\nError in function inner !\r\ndisk full");
}

TEST(Errors, WhatAPartGivesIsHandedOn) {
    int value = 7;
    EXPECT_EQ(asLevel("any !", [] { return 3; }), 3);
    int& same = asLevel("any !", [&]() -> int& { return value; });
    EXPECT_EQ(&same, &value);
}

TEST(Errors, AnEndedResponseIsNoError) {
    EXPECT_THROW(asLevel("any !", [] { throw ResponseEnded(); }), ResponseEnded);
}

}  // namespace
}  // namespace torvex
