#include "administration/SearchProperties.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(SearchProperties, TakesANameOutOfAnyPlace) {
    EXPECT_EQ(withoutSearchProperty("company,author2,topic", "company"), "author2,topic");
    EXPECT_EQ(withoutSearchProperty("company,author2,topic", "author2"), "company,topic");
    EXPECT_EQ(withoutSearchProperty("company,author2,topic", "topic"), "company,author2");
    EXPECT_EQ(withoutSearchProperty("company", "company"), "");
}

TEST(SearchProperties, TakesOutNeighboursOfOneName) {
    EXPECT_EQ(withoutSearchProperty("a,a,b,a", "a"), "b");
}

TEST(SearchProperties, ComparesWholeNamesIgnoringCase) {
    EXPECT_EQ(withoutSearchProperty(" Company,company2 ", "COMPANY"), "company2");
    EXPECT_EQ(withoutSearchProperty("company2,mycompany", "company"), "company2,mycompany");
}

TEST(SearchProperties, BlanksWithinTheListCount) {
    EXPECT_EQ(withoutSearchProperty("a, company", "company"), "a, company");
}

TEST(SearchProperties, LeavesAListWithoutTheNameAsItIs) {
    EXPECT_EQ(withoutSearchProperty("", "company"), "");
    EXPECT_EQ(withoutSearchProperty(" a,b ", "company"), " a,b ");
}

TEST(SearchProperties, KeepsWhatIsReserved) {
    for (const auto* name : {"ALL", "- template defined -", "CONTENTS", "Author", "Filename", "Keywords",
                             "Subject", "Title", "keywords", "TITLE"}) {
        EXPECT_EQ(withoutSearchProperty(std::string("a,") + name, name), std::string("a,") + name);
    }
}

}  // namespace
}  // namespace torvex
