#include "cli/GeneratedPassword.h"

#include <gmock/gmock.h>
#include <set>

namespace torvex::cli {
namespace {

TEST(GeneratedPassword, IsReadableAndKeptWhole) {
    const std::string password = generatePassword();
    // Stored passwords keep 20 characters.
    EXPECT_THAT(password, testing::MatchesRegex("[a-z2-9]{4}-[a-z2-9]{4}-[a-z2-9]{4}-[a-z2-9]{4}"));
    EXPECT_EQ(password.find_first_of("ilo01"), std::string::npos);
}

TEST(GeneratedPassword, IsNewEachTime) {
    std::set<std::string> made;
    for (int i = 0; i < 1000; ++i) made.insert(generatePassword());
    EXPECT_EQ(made.size(), 1000U);
}

}  // namespace
}  // namespace torvex::cli
