#include "records/PageKind.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(PageKind, IsToldByItsLetterInEitherCaseAndWithBlanksAroundIt) {
    EXPECT_EQ(kindOf("P"), PageKind::Page);
    EXPECT_EQ(kindOf("a"), PageKind::Application);
    EXPECT_EQ(kindOf(" f "), PageKind::Folder);
    EXPECT_EQ(kindOf("S"), PageKind::SystemBranch);
}

TEST(PageKind, IsUnknownForAnythingElse) {
    for (const char* type : {"", " ", "X", "PA", "1", "\x10", "\xC3\x90"}) {
        EXPECT_EQ(kindOf(type), PageKind::Unknown) << type;
    }
}

TEST(PageKind, HasTheLetterThatItIsToldBy) {
    for (const auto kind :
         {PageKind::Page, PageKind::Application, PageKind::Folder, PageKind::SystemBranch}) {
        EXPECT_EQ(kindOf(letterOf(kind)), kind);
    }
    EXPECT_EQ(letterOf(PageKind::Unknown), "");
}

TEST(PageKind, SaysWhatAPageMay) {
    EXPECT_TRUE(hasBodies(PageKind::Page));
    EXPECT_FALSE(hasBodies(PageKind::Folder));
    EXPECT_TRUE(hasNavigation(PageKind::Page));
    EXPECT_FALSE(hasNavigation(PageKind::Application));
    EXPECT_TRUE(hasApplication(PageKind::Application));
    EXPECT_FALSE(hasApplication(PageKind::Page));
    EXPECT_TRUE(isStructure(PageKind::Folder));
    EXPECT_TRUE(isStructure(PageKind::SystemBranch));
    EXPECT_FALSE(isStructure(PageKind::Page));
}

}  // namespace
}  // namespace torvex
