#include "platform/text/RandomSecret.h"

#include <gtest/gtest.h>
#include <set>

namespace torvex {
namespace {

TEST(RandomSecret, IsLettersThatNeedNoEscapeAndEachIsAnother) {
    std::set<std::string> drawn;
    for (int i = 0; i < 100; ++i) {
        const std::string secret = randomSecret();
        EXPECT_EQ(secret.size(), 43U);
        EXPECT_EQ(
            secret.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_"),
            std::string::npos)
            << secret;
        drawn.insert(secret);
    }
    EXPECT_EQ(drawn.size(), 100U);
}

}  // namespace
}  // namespace torvex
