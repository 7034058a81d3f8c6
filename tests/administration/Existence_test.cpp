#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using testing::StartsWith;

class ExistenceTest : public ManagerTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ExistenceTest, bothEngines(), engineName);

TEST_P(ExistenceTest, ASiteAndALanguageAreFoundInAnyCase) {
    EXPECT_TRUE(manager().isSite("aa"));
    EXPECT_TRUE(manager().isSite("AA"));
    EXPECT_TRUE(manager().isLang("En"));
    EXPECT_FALSE(manager().isSite("zz"));
    EXPECT_FALSE(manager().isLang("zz"));
}

TEST_P(ExistenceTest, OnlyTwoCharactersAreAskedFor) {
    site("b");
    site("ccc");
    for (const auto* code : {"", "b", "ccc", " aa", "aa ", "a"}) {
        EXPECT_FALSE(manager().isSite(code)) << code;
        EXPECT_FALSE(manager().isLang(code)) << code;
    }
    drop("TORVEX_SITES");
    EXPECT_FALSE(manager().isSite("ccc"));
}

TEST_P(ExistenceTest, CharactersAreCountedAndNotBytes) {
    site("\xC3\xA9\xC3\xA8");
    EXPECT_TRUE(manager().isSite("\xC3\xA9\xC3\xA8"));
    EXPECT_FALSE(manager().isSite("\xC3\xA9"));
}

TEST_P(ExistenceTest, BadCodesAreNotThere) {
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_FALSE(manager().isSite(bad));
        EXPECT_FALSE(manager().isLang(bad));
    }
    EXPECT_FALSE(manager().isSite("''"));
    EXPECT_FALSE(manager().isSite("%%"));
    EXPECT_FALSE(manager().isSite(std::string("a\0", 2)));
}

TEST_P(ExistenceTest, DesignAssetsAreFoundByNumber) {
    contentTemplate(5, "aa", "en", "t.html", "");
    baseTemplate(6, "aa", "en", "b.html", "");
    stylesheet(7, "aa", "en", "s.css");
    externalApplication(8, "/app");
    EXPECT_TRUE(manager().isTemplate(5));
    EXPECT_TRUE(manager().isBaseTemplate(6));
    EXPECT_TRUE(manager().isStylesheet(7));
    EXPECT_TRUE(manager().isApplication(8));
    for (const int none : {0, -1, 9}) {
        EXPECT_FALSE(manager().isTemplate(none));
        EXPECT_FALSE(manager().isBaseTemplate(none));
        EXPECT_FALSE(manager().isStylesheet(none));
        EXPECT_FALSE(manager().isApplication(none));
    }
}

TEST_P(ExistenceTest, ABrokenDatabaseIsAnErrorOfEach) {
    for (const auto* table : {"TORVEX_SITES", "TORVEX_LANGUAGES", "TORVEX_APPLICATIONS",
                              "TORVEX_BASETEMPLATES", "TORVEX_STYLESHEETS", "TORVEX_TEMPLATES"}) {
        drop(table);
    }
    EXPECT_THAT(errorOf([&] { manager().isSite("aa"); }), StartsWith(chain({"isSite !"})));
    EXPECT_THAT(errorOf([&] { manager().isLang("en"); }), StartsWith(chain({"isLang !"})));
    EXPECT_THAT(errorOf([&] { manager().isApplication(1); }), StartsWith(chain({"isApplication !"})));
    EXPECT_THAT(errorOf([&] { manager().isBaseTemplate(1); }), StartsWith(chain({"isBaseTemplate !"})));
    EXPECT_THAT(errorOf([&] { manager().isStylesheet(1); }), StartsWith(chain({"isStylesheet !"})));
    EXPECT_THAT(errorOf([&] { manager().isTemplate(1); }), StartsWith(chain({"isTemplate !"})));
}

}  // namespace
}  // namespace torvex::test
