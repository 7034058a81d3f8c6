#include <gmock/gmock.h>

#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

class SettingsTest : public RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (!HasFatalFailure()) connection().execute("delete from TORVEX_SETUP");
    }
    /// "parameter|value|dataType|loginId"
    std::vector<std::string> stored() {
        return rowsOf(
            "select parameter, value, dataType, loginId from TORVEX_SETUP order by loginId, parameter");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SettingsTest, bothEngines(), engineName);

TEST_P(SettingsTest, AParameterOfALoginIsStoredAndInTheSession) {
    manager().updateParam(anna, " torvex_date_format ", " ddmmyyyy ");
    EXPECT_THAT(stored(), ElementsAre("torvex_date_format|ddmmyyyy|C|7"));
    EXPECT_EQ(host.session.get("torvex_date_format"), Value("ddmmyyyy"));
    EXPECT_TRUE(host.application.get("torvex_date_format").isEmpty());
}

TEST_P(SettingsTest, AParameterOfTheInstallationIsStoredAndInForce) {
    manager().updateParam(0, "torvex_feeds", "1", " b ");
    EXPECT_THAT(stored(), ElementsAre("torvex_feeds|1|B|0"));
    EXPECT_EQ(host.application.get("torvex_feeds"), Value(true));
    EXPECT_TRUE(host.session.get("torvex_feeds").isEmpty());
}

TEST_P(SettingsTest, WhereHttpsIsWhatTheSiteIsThatStays) {
    host.application.set("torvex_https_only", true);
    host.application.set("tvx_website_ssl", true);
    manager().updateParam(0, " TVX_website_ssl ", "0", "B");
    EXPECT_THAT(stored(), ElementsAre("TVX_website_ssl|0|B|0"));
    EXPECT_EQ(host.application.get("tvx_website_ssl"), Value(true));
    host.application.set("torvex_https_only", false);
    manager().updateParam(0, "tvx_website_ssl", "0", "B");
    EXPECT_EQ(host.application.get("tvx_website_ssl"), Value(false));
}

TEST_P(SettingsTest, TheTypeSaysWhatIsInForce) {
    manager().updateParam(0, "a", " 12 ", "n");
    manager().updateParam(0, "b", "2", "B");
    manager().updateParam(0, "c", "2", "C");
    manager().updateParam(0, "d", "2", "X");
    EXPECT_EQ(host.application.get("a"), Value(12));
    EXPECT_EQ(host.application.get("b"), Value(false));
    EXPECT_EQ(host.application.get("c"), Value("2"));
    EXPECT_TRUE(host.application.get("d").isEmpty());
    EXPECT_THAT(stored(), ElementsAre("a|12|N|0", "b|2|B|0", "c|2|C|0", "d|2|X|0"));
}

TEST_P(SettingsTest, ARowThatIsThereKeepsItsTypeAndItsPlace) {
    manager().updateParam(0, "a", "1", "N");
    manager().updateParam(anna, "a", "2", "N");
    manager().updateParam(0, "A", "three", "C");
    EXPECT_THAT(stored(), ElementsAre("a|three|N|0", "a|2|N|7"));
    EXPECT_EQ(host.application.get("a"), Value("three"));
}

TEST_P(SettingsTest, AValueHasTwoThousandCharacters) {
    std::string given;
    for (int i = 0; i < 3000; ++i) given += "\xC3\xA9";
    manager().updateParam(0, "a", given);
    EXPECT_EQ(cell("select length(value) from TORVEX_SETUP"), "2000");
    EXPECT_EQ(host.application.text("a").size(), 4000U);
}

TEST_P(SettingsTest, AnEmptyValueIsStored) {
    manager().updateParam(0, "a", "x");
    manager().updateParam(0, "a", "");
    EXPECT_THAT(stored(), ElementsAre("a||C|0"));
    EXPECT_EQ(host.application.get("a"), Value(""));
}

TEST_P(SettingsTest, ANumberThatIsNoneIsAnErrorAndChangesNothing) {
    manager().updateParam(0, "a", "1", "N");
    const auto before = everything();
    for (const auto* bad : {"", "x", "40000", "-40000", "1e3"}) {
        EXPECT_THAT(errorOf([&] { manager().updateParam(0, "a", bad, "N"); }),
                    StartsWith(chain({"updateParam !"})))
            << bad;
    }
    EXPECT_TRUE(everything() == before);
    EXPECT_EQ(host.application.get("a"), Value(1));
}

TEST_P(SettingsTest, WhoSomebodyIsAndWhereThingsLieCantBeSet) {
    const auto before = everything();
    for (const auto* name : {"torvex_username", " TORVEX_LOGINID ", "torvex_odbc", "torvex_install_path"}) {
        for (const int loginId : {0, +anna}) {
            EXPECT_THAT(errorOf([&] { manager().updateParam(loginId, name, "x"); }),
                        HasSubstr("can't be set"));
        }
    }
    EXPECT_TRUE(everything() == before);
    EXPECT_EQ(host.session.text("torvex_username"), "anna");
    EXPECT_EQ(host.application.text("torvex_odbc"), connectionText());
}

TEST_P(SettingsTest, AFailureOfTheDatabaseChangesNothing) {
    const auto before = everything();
    for (int step = 1;; ++step) {
        failing().reset(step);
        std::string error;
        try {
            manager().updateParam(0, "a", "1");
        } catch (const Error& caught) {
            error = caught.what();
        }
        const bool failed = failing().steps >= step;
        failing().reset(0);
        if (!failed) break;
        EXPECT_THAT(error, StartsWith(chain({"updateParam !"})));
        ASSERT_TRUE(everything() == before);
        ASSERT_TRUE(host.application.get("a").isEmpty());
    }
    EXPECT_THAT(stored(), SizeIs(1));
}

TEST_P(SettingsTest, TwoSessionsThatSetOneParameterAtOnceMakeOneRow) {
    beforeTransaction([&] { manager().updateParam(0, "a", "second"); });
    manager().updateParam(0, "a", "first");
    EXPECT_THAT(stored(), ElementsAre("a|first|C|0"));
}

}  // namespace
}  // namespace torvex::test
