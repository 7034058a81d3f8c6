#include "modules/shared/MonthNames.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class MonthNamesTest : public SiteTest {};
INSTANTIATE_TEST_SUITE_P(Engines, MonthNamesTest, bothEngines(), engineName);

TEST_P(MonthNamesTest, AreTheWordsOfTheVocabulary) {
    MonthNames names(connection(), "en");
    EXPECT_EQ(names.of("01"), "Jan");
    EXPECT_EQ(names.of("12"), "Dec");
}

TEST_P(MonthNamesTest, AreThoseOfTheLanguage) {
    EXPECT_EQ(MonthNames(connection(), "de").of("03"), "Mär");
}

TEST_P(MonthNamesTest, AreEnglishWhereTheLanguageHasNone) {
    EXPECT_EQ(MonthNames(connection(), "zz").of("03"), "Mar");
    connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab2 = '' where lang_label = 2823");
    EXPECT_EQ(MonthNames(connection(), "de").of("03"), "Mar");
    EXPECT_EQ(MonthNames(connection(), "de").of("04"), "Apr");
}

TEST_P(MonthNamesTest, NoMonthHasNoName) {
    MonthNames names(connection(), "en");
    for (const char* month : {"", "00", "13", "x", "1.5"}) EXPECT_EQ(names.of(month), "") << month;
}

}  // namespace
}  // namespace torvex::test
