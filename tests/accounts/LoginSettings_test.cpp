#include "support/DoorTest.h"

namespace torvex::test {
namespace {

class LoginSettingsTest : public DoorTest {
  protected:
    void SetUp() override {
        DoorTest::SetUp();
        if (!HasFatalFailure()) connection().execute("delete from TORVEX_SETUP where loginId <> 0");
    }
    void ownSetting(const std::string& parameter, const std::string& value, const std::string& type,
                    int loginId = anna) {
        row("TORVEX_SETUP",
            {{"parameter", parameter}, {"value", value}, {"dataType", type}, {"loginId", loginId}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginSettingsTest, bothEngines(), engineName);

TEST_P(LoginSettingsTest, ALoginsSettingsReachItsSession) {
    ownSetting("torvex_date_format", "ddmmyyyy", "C");
    ownSetting("torvex_sitemap_loadLevel", "4", "N");
    ownSetting("panel", "1", "B");
    ownSetting("shut", "yes", "B");
    ownSetting("another's", "x", "C", 8);
    ASSERT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(host.session.get("torvex_date_format"), Value("ddmmyyyy"));
    EXPECT_EQ(host.session.get("torvex_sitemap_loadLevel"), Value(4));
    EXPECT_EQ(host.session.get("panel"), Value(true));
    EXPECT_EQ(host.session.get("shut"), Value(false));
    EXPECT_TRUE(host.session.get("another's").isEmpty());
}

TEST_P(LoginSettingsTest, ALoginThatIsRefusedBringsNone) {
    ownSetting("torvex_date_format", "ddmmyyyy", "C");
    ASSERT_EQ(manager().login("anna", "wrong"), 1);
    EXPECT_TRUE(host.session.get("torvex_date_format").isEmpty());
}

TEST_P(LoginSettingsTest, VerifyingALoginAgainKeepsWhatTheSessionHas) {
    ownSetting("torvex_date_format", "ddmmyyyy", "C");
    ASSERT_EQ(manager().login("anna", "Secret"), 0);
    host.session.set("torvex_date_format", "yyyymmdd");
    ASSERT_EQ(nextRequest().login(), 0);
    EXPECT_EQ(host.session.text("torvex_date_format"), "yyyymmdd");
}

TEST_P(LoginSettingsTest, ABadNumberAndAnUnknownTypeArePassedOver) {
    ownSetting("a", "many", "N");
    ownSetting("b", "x", "Z");
    ASSERT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_TRUE(host.session.get("a").isEmpty());
    EXPECT_TRUE(host.session.get("b").isEmpty());
}

TEST_P(LoginSettingsTest, NoSettingSaysWhoSomebodyIs) {
    ownSetting("torvex_username", "sa", "C");
    ownSetting(" TORVEX_LOGINID ", "1", "N");
    ownSetting("torvex_adminTemplates_dir", "/etc/", "C");
    host.session.set("torvex_adminTemplates_dir", "/install/torvex/templates/en/");
    ASSERT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(host.session.text("torvex_username"), "anna");
    EXPECT_EQ(host.session.number("torvex_loginId"), anna);
    EXPECT_EQ(host.session.text("torvex_adminTemplates_dir"), "/install/torvex/templates/en/");
}

TEST_P(LoginSettingsTest, ItsLanguageBecomesThatOfTheInterface) {
    ownSetting("torvex_interface_language", "DE", "C");
    ASSERT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(host.session.text("torvex_interface_language"), "de");
    EXPECT_EQ(host.session.text("torvex_current_interface"), "de");
    EXPECT_EQ(host.session.text("torvex_adminTemplates_dir"), "/install/torvex/templates/de/");
}

TEST_P(LoginSettingsTest, ALanguageThatIsSwitchedOffIsNotTakenOver) {
    ownSetting("torvex_interface_language", "de", "C");
    connection().execute("update TORVEX_INTERFACE_LANGUAGES set lang_enabled = 0 where lang_id = 'de'");
    ASSERT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_EQ(host.session.text("torvex_current_interface"), "en");
    EXPECT_TRUE(host.session.get("torvex_interface_language").isEmpty());
}

}  // namespace
}  // namespace torvex::test
