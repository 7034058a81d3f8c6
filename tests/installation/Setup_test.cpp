#include "installation/Setup.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class SetupTest : public SiteTest {
  protected:
    /// As a start script leaves it: the connection and three paths.
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_install_path", "/srv/site");
        host.application.set("torvex_imgDir", "img");
        host.application.set("torvex_docDir", "doc");
    }

    void initApplication() { torvex::Setup(host.context()).initApplication(); }
    void initSession() { torvex::Setup(host.context()).initSession(); }
    void onlySettings() { connection().execute("delete from TORVEX_SETUP"); }
    std::string text(const std::string& key) { return host.application.text(key); }
    Value value(const std::string& key) { return host.application.get(key); }
};
INSTANTIATE_TEST_SUITE_P(Engines, SetupTest, bothEngines(), engineName);

// Paths

TEST_P(SetupTest, AllPathsComeFromThreeGivenOnes) {
    initApplication();
    EXPECT_EQ(text("torvex_install_path"), "/srv/site/");
    EXPECT_EQ(text("torvex_root_path"), "/srv/site/wwwroot/");
    EXPECT_EQ(text("torvex_imgDir"), "img/");
    EXPECT_EQ(text("torvex_image_dir"), "/srv/site/wwwroot/img/");
    EXPECT_EQ(text("torvex_image_url"), "/img/");
    EXPECT_EQ(text("torvex_docDir"), "doc/");
    EXPECT_EQ(text("torvex_doc_dir"), "/srv/site/wwwroot/doc/");
    EXPECT_EQ(text("torvex_doc_url"), "/doc/");
    EXPECT_EQ(text("torvex_contentTemplates_dir"), "/srv/site/contentTemplates/");
    EXPECT_EQ(text("torvex_adminTemplates_dir"), "/srv/site/torvex/templates/");
    EXPECT_EQ(text("torvex_system_images"), "/torvex/images/");
    EXPECT_EQ(text("torvex_baseTemplates_dir"), "/srv/site/baseTemplates/");
    EXPECT_EQ(text("torvex_stylesheets_dir"), "/srv/site/wwwroot/stylesheets/");
}

TEST_P(SetupTest, BackslashesBecomeSlashes) {
    host.application.set("torvex_install_path", "C:\\web\\site");
    host.application.set("torvex_imgDir", "media\\img\\");
    host.application.set("torvex_docDir", "media\\doc");
    initApplication();
    EXPECT_EQ(text("torvex_install_path"), "C:/web/site/");
    EXPECT_EQ(text("torvex_image_dir"), "C:/web/site/wwwroot/media/img/");
    EXPECT_EQ(text("torvex_doc_url"), "/media/doc/");
}

TEST_P(SetupTest, APathThatEndsInASlashStays) {
    host.application.set("torvex_install_path", "/srv/site/");
    initApplication();
    EXPECT_EQ(text("torvex_install_path"), "/srv/site/");
}

TEST_P(SetupTest, ASecondStartChangesNoPath) {
    initApplication();
    initApplication();
    EXPECT_EQ(text("torvex_image_dir"), "/srv/site/wwwroot/img/");
}

// Defaults

TEST_P(SetupTest, WithoutSettingsTheDefaultsAreInForce) {
    onlySettings();
    initApplication();
    for (const auto* off :
         {"tvx_website_ssl", "tvx_extranet_ssl", "torvex_ssl", "torvex_extranet", "torvex_feeds",
          "torvex_img_security", "torvex_doc_security", "torvex_msgBoard_html_allowed"}) {
        EXPECT_EQ(value(off), Value(false)) << off;
    }
    for (const auto* tool :
         {"torvex_editor_styles", "torvex_editor_headings", "torvex_editor_fontname",
          "torvex_editor_fontsize", "torvex_editor_fontcolor", "torvex_editor_backcolor"}) {
        EXPECT_EQ(value(tool), Value(true)) << tool;
    }
    EXPECT_EQ(value("torvex_config_lock"), Value(""));
    EXPECT_EQ(value("torvex_emailNotification"), Value(0));
    EXPECT_EQ(value("torvex_loadBalancing_shareName"), Value(""));
    EXPECT_EQ(value("torvex_editor_width"), Value(580));
    EXPECT_EQ(value("torvex_editor_height"), Value(480));
    EXPECT_EQ(value("torvex_codepage"), Value(""));
    EXPECT_EQ(value("torvex_charset"), Value(""));
}

TEST_P(SetupTest, AKeyThatNothingSetsIsEmptyAndFalse) {
    onlySettings();
    initApplication();
    EXPECT_TRUE(value("torvex_frames").isEmpty());
    EXPECT_FALSE(host.application.isTrue("torvex_frames"));
}

TEST_P(SetupTest, AStartPutsDefaultsOverWhatWasThere) {
    onlySettings();
    host.application.set("torvex_extranet", true);
    host.application.set("torvex_config_lock", "a session");
    initApplication();
    EXPECT_EQ(value("torvex_extranet"), Value(false));
    EXPECT_EQ(value("torvex_config_lock"), Value(""));
}

// Settings

TEST_P(SetupTest, ASettingOfANumberIsANumber) {
    setting("torvex_search_maxResults", " 250 ", "N");
    setting("my_number", "-1.5", "n");
    initApplication();
    EXPECT_EQ(value("torvex_search_maxResults"), Value(250));
    EXPECT_EQ(value("my_number"), Value(-1.5));
}

TEST_P(SetupTest, ASettingOfANumberThatIsNoneIsPassedOver) {
    setting("torvex_emailNotification", "often", "N");
    setting("my_number", "", "N");
    setting("torvex_after", "kept", "C");
    initApplication();
    EXPECT_EQ(value("torvex_emailNotification"), Value(0));
    EXPECT_TRUE(value("my_number").isEmpty());
    EXPECT_EQ(value("torvex_after"), Value("kept"));
}

TEST_P(SetupTest, ASettingOfATextIsThatText) {
    setting("torvex_interface_charset", "utf-8", "C");
    setting("my_text", "1", "C");
    initApplication();
    EXPECT_EQ(value("torvex_interface_charset"), Value("utf-8"));
    EXPECT_EQ(value("my_text"), Value("1"));
}

TEST_P(SetupTest, ASettingOfATextThatIsNullIsAnEmptyText) {
    row("TORVEX_SETUP", {{"parameter", "my_text"}, {"dataType", "C"}, {"loginId", 0}});
    initApplication();
    EXPECT_EQ(value("my_text"), Value(""));
}

TEST_P(SetupTest, ASettingOfAYesIsTrueForOneAlone) {
    setting("torvex_extranet", "1", "B");
    setting("torvex_feeds", "0", "B");
    setting("torvex_ssl", "true", "B");
    setting("tvx_website_ssl", "yes", "B");
    setting("torvex_img_security", "", "B");
    setting("torvex_editor_styles", "2", "B");
    initApplication();
    EXPECT_EQ(value("torvex_extranet"), Value(true));
    EXPECT_EQ(value("torvex_feeds"), Value(false));
    EXPECT_EQ(value("torvex_ssl"), Value(false));
    EXPECT_EQ(value("tvx_website_ssl"), Value(false));
    EXPECT_EQ(value("torvex_img_security"), Value(false));
    EXPECT_EQ(value("torvex_editor_styles"), Value(false));
}

TEST_P(SetupTest, WhereHttpsIsWhatTheSiteIsNoSettingSaysOtherwise) {
    host.application.set("torvex_https_only", true);
    setting("tvx_website_ssl", "0", "B");
    setting("tvx_extranet_ssl", "0", "B");
    initApplication();
    for (const auto* key : {"tvx_website_ssl", "tvx_extranet_ssl", "torvex_ssl"})
        EXPECT_EQ(value(key), Value(true)) << key;
}

TEST_P(SetupTest, ASettingOfAnotherKindIsPassedOver) {
    setting("my_date", "20260101", "D");
    setting("my_nothing", "1", "");
    initApplication();
    EXPECT_TRUE(value("my_date").isEmpty());
    EXPECT_TRUE(value("my_nothing").isEmpty());
}

TEST_P(SetupTest, SettingsOfLoginsAreNotThoseOfTheInstallation) {
    row("TORVEX_SETUP", {{"parameter", "torvex_feeds"}, {"value", "1"}, {"dataType", "B"}, {"loginId", 1}});
    row("TORVEX_SETUP", {{"parameter", "my_own"}, {"value", "x"}, {"dataType", "C"}, {"loginId", 7}});
    initApplication();
    EXPECT_EQ(value("torvex_feeds"), Value(false));
    EXPECT_TRUE(value("my_own").isEmpty());
}

TEST_P(SetupTest, ASettingMaySetAnyKeyInAnyCase) {
    setting("TORVEX_FEEDS", "1", "b");
    initApplication();
    EXPECT_TRUE(host.application.isTrue("torvex_feeds"));
}

TEST_P(SetupTest, TheSettingsOfAFreshInstallationAreInForce) {
    initApplication();
    EXPECT_TRUE(host.application.isTrue("torvex_hyperlink_check"));
    EXPECT_EQ(host.application.number("torvex_search_maxResults"), 100);
    EXPECT_EQ(text("torvex_interface_charset"), "utf-8");
}

// The floors of the editor

TEST_P(SetupTest, ANarrowEditorStopsAtItsFloor) {
    setting("torvex_editor_width", "400", "N");
    initApplication();
    EXPECT_EQ(value("torvex_editor_width"), Value(580));
}

TEST_P(SetupTest, AWideEditorStays) {
    setting("torvex_editor_width", "581", "N");
    initApplication();
    EXPECT_EQ(value("torvex_editor_width"), Value(581));
}

TEST_P(SetupTest, ALowEditorJumpsToItsDefault) {
    setting("torvex_editor_height", "150", "N");
    initApplication();
    EXPECT_EQ(value("torvex_editor_height"), Value(480));
}

TEST_P(SetupTest, AnEditorAboveItsFloorStays) {
    setting("torvex_editor_height", "300", "N");
    initApplication();
    EXPECT_EQ(value("torvex_editor_height"), Value(300));
}

TEST_P(SetupTest, AnEditorAtItsFloorStays) {
    setting("torvex_editor_height", "200", "N");
    initApplication();
    EXPECT_EQ(value("torvex_editor_height"), Value(200));
}

// The common charset

TEST_P(SetupTest, WithoutALanguageNoCharsetIsInForce) {
    initApplication();
    EXPECT_EQ(text("torvex_charset"), "");
    EXPECT_EQ(text("torvex_codepage"), "");
}

TEST_P(SetupTest, TheCharsetOfTheOnlyLanguageIsInForce) {
    language("en", 3);
    initApplication();
    EXPECT_EQ(text("torvex_charset"), "windows-1252");
    EXPECT_EQ(text("torvex_codepage"), "1252");
}

TEST_P(SetupTest, ACharsetThatAllLanguagesShareIsInForce) {
    language("de", 3);
    language("en", 3);
    language("nl", 3);
    initApplication();
    EXPECT_EQ(text("torvex_charset"), "windows-1252");
}

TEST_P(SetupTest, WithTwoCharsetsNoneIsInForce) {
    language("de", 3);
    language("en", 3);
    language("ru", 7);
    initApplication();
    EXPECT_EQ(text("torvex_charset"), "");
    EXPECT_EQ(text("torvex_codepage"), "");
}

TEST_P(SetupTest, ALanguageWithoutACharsetDoesNotCount) {
    language("en", 3);
    language("xx", 91);
    initApplication();
    EXPECT_EQ(text("torvex_charset"), "windows-1252");
}

TEST_P(SetupTest, ASettingStandsBeforeTheCommonCharset) {
    language("en", 3);
    setting("torvex_charset", "utf-8", "C");
    initApplication();
    EXPECT_EQ(text("torvex_charset"), "utf-8");
}

// Logins

TEST_P(SetupTest, AfterAStartNobodyIsLoggedInAndNoSiteIsLocked) {
    for (const auto* name : {"ann", "bob"}) {
        row("TORVEX_LOGINS", {{"username", name},
                              {"sessionId", "s"},
                              {"currentSite", "aa.en"},
                              {"siteLock", "aa.en"},
                              {"ipAddress", "10.0.0.7"}});
    }
    initApplication();
    EXPECT_EQ(cell("select count(*) from TORVEX_LOGINS "
                   "where sessionId = '' and currentSite = '' and siteLock = '' and ipAddress = '10.0.0.7'"),
              cell("select count(*) from TORVEX_LOGINS where username in ('ann', 'bob')"));
    EXPECT_EQ(cell("select count(*) from TORVEX_LOGINS where sessionId <> ''"), "0");
}

TEST_P(SetupTest, DerivingTheValuesAloneLogsNobodyOut) {
    row("TORVEX_LOGINS",
        {{"username", "ann"}, {"sessionId", "s"}, {"currentSite", "aa.en"}, {"siteLock", "aa.en"}});
    setting("torvex_feeds", "1", "B");
    torvex::Setup(host.context()).deriveApplication();
    EXPECT_TRUE(host.application.isTrue("torvex_feeds"));
    EXPECT_EQ(text("torvex_root_path"), "/srv/site/wwwroot/");
    EXPECT_EQ(cell("select count(*) from TORVEX_LOGINS "
                   "where sessionId = 's' and currentSite = 'aa.en' and siteLock = 'aa.en'"),
              "1");
}

// A visitor's session

TEST_P(SetupTest, ASessionStartsWithItsValues) {
    initApplication();
    initSession();
    const auto& session = host.session;
    EXPECT_EQ(session.get("torvex_username"), Value(""));
    EXPECT_EQ(session.get("torvex_dns"), Value("www.site.test"));
    EXPECT_EQ(session.get("torvex_oncontextmenu"), Value("oncontextmenu=\"return false\""));
    EXPECT_EQ(session.get("tvx_counter"), Value(0));
    EXPECT_EQ(session.get("tvx_loginTrials"), Value(0));
    EXPECT_EQ(session.get("tvx_loginError"), Value(false));
    EXPECT_EQ(session.get("tvx_codePage"), Value(""));
    EXPECT_EQ(session.get("tvx_charset"), Value(""));
    EXPECT_EQ(session.get("torvex_visited_pages"), Value(""));
    EXPECT_EQ(session.get("torvex_statistics_from"), Value("20260615"));
    EXPECT_EQ(session.get("torvex_audit_from"), Value("20260615"));
    EXPECT_EQ(session.get("torvex_statistics_to"), Value(""));
    EXPECT_EQ(session.get("torvex_audit_to"), Value(""));
    EXPECT_EQ(session.get("torvex_editor_language"), Value(""));
    EXPECT_EQ(session.get("torvex_date_format"), Value("mmddyyyy"));
    EXPECT_EQ(session.get("tvx_url"), Value("http://www.site.test"));
    EXPECT_EQ(session.get("torvex_ssl"), Value(false));
    EXPECT_EQ(session.get("torvex_interface_language"), Value("en"));
    EXPECT_EQ(session.get("torvex_current_interface"), Value("en"));
    EXPECT_EQ(session.get("torvex_adminTemplates_dir"), Value("/srv/site/torvex/templates/en/"));
}

TEST_P(SetupTest, ASecureSiteHasASecureAddress) {
    setting("tvx_website_ssl", "1", "B");
    setting("torvex_ssl", "1", "B");
    initApplication();
    initSession();
    EXPECT_EQ(host.session.text("tvx_url"), "https://www.site.test");
    EXPECT_EQ(host.session.get("torvex_ssl"), Value(true));
}

TEST_P(SetupTest, TheInterfaceComesInTheDefaultLanguage) {
    connection().execute("update TORVEX_INTERFACE_LANGUAGES set lang_default = 0");
    row("TORVEX_INTERFACE_LANGUAGES", {{"id", 3}, {"lang_id", "nl"}, {"lang_default", 1}});
    initApplication();
    initSession();
    EXPECT_EQ(host.session.text("torvex_interface_language"), "nl");
    EXPECT_EQ(host.session.text("torvex_current_interface"), "nl");
    EXPECT_EQ(host.session.text("torvex_adminTemplates_dir"), "/srv/site/torvex/templates/nl/");
}

TEST_P(SetupTest, WithoutADefaultLanguageTheInterfaceIsEnglish) {
    row("TORVEX_INTERFACE_LANGUAGES", {{"id", 3}, {"lang_id", "nl"}, {"lang_default", 0}});
    connection().execute("update TORVEX_INTERFACE_LANGUAGES set lang_default = 0");
    initSession();
    EXPECT_EQ(host.session.text("torvex_interface_language"), "en");
}

// Failures

TEST_P(SetupTest, FailuresTellTheOperation) {
    torvex::Setup setup(host.context());
    drop("TORVEX_SETUP");
    EXPECT_TRUE(errorOf([&] { setup.initApplication(); }).starts_with(chain({"initApplication (setup) !"})));
    drop("TORVEX_INTERFACE_LANGUAGES");
    EXPECT_TRUE(errorOf([&] { setup.initSession(); }).starts_with(chain({"initSession (setup) !"})));
}

TEST_P(SetupTest, WithoutADatabaseThereIsNoSetup) {
    host.application.set("torvex_odbc", "nonsense:");
    EXPECT_THROW(torvex::Setup{host.context()}, std::runtime_error);
}

}  // namespace
}  // namespace torvex::test
