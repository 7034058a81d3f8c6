#include <gmock/gmock.h>

#include "installation/InstallFiles.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class DeskSettingsTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (!HasFatalFailure()) connection().execute("delete from TORVEX_SETUP");
    }
    void set(const std::string& parameter, const std::string& value, const std::string& type = "C",
             int loginId = 0) {
        row("TORVEX_SETUP",
            {{"parameter", parameter}, {"value", value}, {"dataType", type}, {"loginId", loginId}});
    }
    /// "parameter|section|dataType|content|usual|isUsual|takes", without what it means.
    std::vector<std::string> settings(int loginId = 0) {
        std::vector<std::string> lines;
        for (const std::string& line : linesOf(desk().getSettings(loginId))) {
            const std::size_t meaning = line.find('|');
            lines.push_back(line.substr(0, meaning) + line.substr(line.find('|', meaning + 1)));
        }
        return lines;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskSettingsTest, bothEngines(), engineName);

TEST_P(DeskSettingsTest, ASettingWithoutARowIsWhatIsUsual) {
    EXPECT_THAT(settings(), Contains("torvex_extranet|visitors|B|0|0|1|now"));
    EXPECT_THAT(settings(), Contains("torvex_replication_wait|server|N|60|60|1|now"));
}

TEST_P(DeskSettingsTest, WhatDiffersIsMarked) {
    set("TORVEX_Extranet", "1", "B");
    set("torvex_search_maxResults", "50", "n");
    EXPECT_THAT(settings(), Contains("torvex_extranet|visitors|B|1|0|0|now"));
    EXPECT_THAT(settings(), Contains("torvex_search_maxResults|modules|N|50|100|0|session"));
}

TEST_P(DeskSettingsTest, ItIsSaidWhatEachMeans) {
    EXPECT_THAT(columnOf(desk().getSettings(0), 1), Contains("The groups of pages are in force"));
    host.session.set("torvex_current_interface", "de");
    EXPECT_THAT(columnOf(desk().getSettings(0), 1), Contains("Die Gruppen der Seiten gelten"));
    EXPECT_THAT(columnOf(desk().getSettings(0), 1), Not(Contains("")));
    EXPECT_THAT(columnOf(desk().getSettings(anna), 1), Not(Contains("")));
}

TEST_P(DeskSettingsTest, EverySettingOfAFreshInstallationIsKnown) {
    connection().executeScript(std::string(installFile("rows/07_setup.sql")));
    EXPECT_THAT(columnOf(desk().getSettings(0), 2), Not(Contains("other")));
    EXPECT_THAT(columnOf(desk().getSettings(1), 2), Not(Contains("other")));
    EXPECT_THAT(columnOf(desk().getSettings(0), 6), Not(Contains("0"))) << "all are what is usual";
}

TEST_P(DeskSettingsTest, WhatTheFileDecidesIsSaid) {
    host.application.set("torvex_https_only", true);
    EXPECT_THAT(settings(), Contains("tvx_website_ssl|website|B|0|0|1|file"));
}

TEST_P(DeskSettingsTest, OthersStandLastAndSecretsNowhere) {
    set("tvx_contentPolicy_aa", "on");
    set("torvex_odbc_password", "secret");
    EXPECT_EQ(settings().back(), "tvx_contentPolicy_aa|other|C|on|-|0|now");
    EXPECT_THAT(columnOf(desk().getSettings(0), 4), Not(Contains("secret")));
}

TEST_P(DeskSettingsTest, ForALoginUsualIsWhatNewOnesStartWith) {
    set("torvex_date_format", "ddmmyyyy", "C", 1);
    set("torvex_sitemap_loadLevel", "5", "N", anna);
    EXPECT_THAT(settings(anna), ElementsAre("torvex_interface_language|login|C|en|en|1|session",
                                            "torvex_date_format|login|C|ddmmyyyy|ddmmyyyy|1|unused",
                                            "torvex_editor_language|login|C|||1|unused",
                                            "torvex_sitemap_loadLevel|login|N|5|2|0|now",
                                            "torvex_scriptTimeout_normal|login|N|90|90|1|now",
                                            "torvex_scriptTimeout_long|login|N|3600|3600|1|now"));
}

TEST_P(DeskSettingsTest, AFilterOfAddressesCanBeTried) {
    EXPECT_TRUE(desk().tryAccessFilter("", true, "10.0.0.1"));
    EXPECT_TRUE(desk().tryAccessFilter(" 10.0.0.0/8 ", true, " 10.0.0.1 "));
    EXPECT_FALSE(desk().tryAccessFilter("10.0.0.0/8", true, "11.0.0.1"));
    EXPECT_FALSE(desk().tryAccessFilter("10.0.0.1", true, "10.0.0.11"));
    EXPECT_TRUE(desk().tryAccessFilter("10.0.0.11", false, "10.0.0.1")) << "as a text it stands in it";
    EXPECT_FALSE(desk().tryAccessFilter("10.0.0.7", true, "not an address"));
}

TEST_P(DeskSettingsTest, WhatFailsIsRaised) {
    drop("TORVEX_SETUP");
    EXPECT_THAT(errorOf([&] { desk().getSettings(0); }), StartsWith(chain({"getSettings !"})));
}

}  // namespace
}  // namespace torvex::test
