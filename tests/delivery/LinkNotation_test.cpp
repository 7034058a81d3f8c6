#include "delivery/LinkNotation.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

TEST(LinkNotation, QuotesOfOneKindAroundAValueAreNoPartOfIt) {
    EXPECT_EQ(linkNotation::withoutQuotes("'12'"), "12");
    EXPECT_EQ(linkNotation::withoutQuotes("\"12\""), "12");
    EXPECT_EQ(linkNotation::withoutQuotes("'12\""), "'12\"");
    EXPECT_EQ(linkNotation::withoutQuotes("12"), "12");
    EXPECT_EQ(linkNotation::withoutQuotes("'"), "'");
}

TEST(LinkNotation, AnAddressNamesItsPageUpToTheNextParameter) {
    EXPECT_EQ(linkNotation::pageInAddress("tvx.asp?pageId=12&x=1"), "12");
    EXPECT_EQ(linkNotation::pageInAddress("tvx.asp?x=1&PAGEID=aa.en"), "aa.en");
    EXPECT_EQ(linkNotation::pageInAddress("tvx.asp?x=1"), std::nullopt);
}

TEST(LinkNotation, ADocumentIsOfItsPagesSiteUnlessItNamesOne) {
    const auto own = linkNotation::documentNamed("prices.pdf", "aa");
    EXPECT_EQ(own.site, "aa");
    EXPECT_EQ(own.name, "prices.pdf");
    const auto foreign = linkNotation::documentNamed("BB\\lists\\Prices.pdf", "aa");
    EXPECT_EQ(foreign.site, "bb");
    EXPECT_EQ(foreign.name, "lists/Prices.pdf");
}

TEST(LinkNotation, WhatIsTooShortForASiteNamesNone) {
    for (const char* name : {"", "a", "bb", "a/b"}) {
        EXPECT_EQ(linkNotation::documentNamed(name, "aa").site, "aa");
        EXPECT_EQ(linkNotation::documentNamed(name, "aa").name, name);
    }
}

class LinkDocumentsTest : public SiteTest {};
INSTANTIATE_TEST_SUITE_P(Engines, LinkDocumentsTest, bothEngines(), engineName);

TEST_P(LinkDocumentsTest, AFailureTellsThatADocumentWasLookedUp) {
    drop("TORVEX_DOCUMENTS");
    EXPECT_TRUE(errorOf([&] {
                    linkNotation::documentOfTitle(connection(), "aa", "Prices");
                }).starts_with(chain({"getDocFile !"})));
}

}  // namespace
}  // namespace torvex::test
