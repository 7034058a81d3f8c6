#include "cli/CallTable.h"

#include <gtest/gtest.h>

namespace torvex::cli {
namespace {

TEST(CallTable, AlignsColumnsByCharacters) {
    ResultGrid grid(3);
    grid.add({1, "\xC3\x89t\xC3\xA9", "x"});
    grid.add({100, "ab", {}});
    EXPECT_EQ(alignedTable(grid), "1    \xC3\x89t\xC3\xA9  x\n100  ab\n");
}

TEST(CallTable, ARowIsOneLine) {
    ResultGrid grid(1);
    grid.add({"a\r\nb\tc"});
    EXPECT_EQ(alignedTable(grid), "a  b c\n");
}

}  // namespace
}  // namespace torvex::cli
