#include "installation/Setup.h"

#include "installation/SettingValue.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr double editorWidthFloor = 580;
constexpr double editorHeightFloor = 200;
constexpr double editorHeightDefault = 480;

/// A folder's path with "/" between its parts and at its end.
std::string folderPath(const std::string& given) {
    std::string path = text::replaceAll(given, "\\", "/");
    if (path.empty() || path.back() != '/') path += '/';
    return path;
}

constexpr std::string_view selectCharsets =
    "select charset_label, charset_codepage from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id order by a.lang";

constexpr std::string_view selectSettings =
    "select parameter, value, dataType from TORVEX_SETUP where loginId = 0";

constexpr std::string_view freeAllLogins =
    "update TORVEX_LOGINS set sessionId = '', currentSite = '', siteLock = ''";

constexpr std::string_view selectDefaultInterface =
    "select lang_ID from TORVEX_INTERFACE_LANGUAGES where lang_default = 1 order by id";

}  // namespace

Setup::Setup(HostContext& host) : host_(host), connection_(db::openOwn(host, db::Purpose::Everything)) {}

void Setup::initApplication() try {
    deriveApplication();
    connection_->execute(freeAllLogins);
} catch (...) {
    raiseFrom("initApplication (setup) !");
}

void Setup::deriveApplication() {
    derivePaths();
    setDefaults();
    readCommonCharset();
    readSettings();
    raiseEditorFloors();
}

void Setup::derivePaths() {
    auto& application = host_.application;
    const std::string install = folderPath(application.text("torvex_install_path"));
    const std::string root = install + "wwwroot/";
    const std::string images = folderPath(application.text("torvex_imgDir"));
    const std::string documents = folderPath(application.text("torvex_docDir"));
    application.set("torvex_install_path", install);
    application.set("torvex_root_path", root);
    application.set("torvex_imgDir", images);
    application.set("torvex_image_dir", root + images);
    application.set("torvex_image_url", "/" + images);
    application.set("torvex_docDir", documents);
    application.set("torvex_doc_dir", root + documents);
    application.set("torvex_doc_url", "/" + documents);
    application.set("torvex_contentTemplates_dir", install + "contentTemplates/");
    application.set("torvex_adminTemplates_dir", install + "torvex/templates/");
    application.set("torvex_system_images", "/torvex/images/");
    application.set("torvex_baseTemplates_dir", install + "baseTemplates/");
    application.set("torvex_stylesheets_dir", install + "wwwroot/stylesheets/");
}

void Setup::setDefaults() {
    auto& application = host_.application;
    for (const auto* off :
         {"tvx_website_ssl", "tvx_extranet_ssl", "torvex_ssl", "torvex_extranet", "torvex_feeds",
          "torvex_img_security", "torvex_doc_security", "torvex_msgBoard_html_allowed"}) {
        application.set(off, false);
    }
    application.set("torvex_config_lock", "");
    application.set("torvex_emailNotification", 0);
    application.set("torvex_loadBalancing_shareName", "");
    for (const auto* tool :
         {"torvex_editor_styles", "torvex_editor_headings", "torvex_editor_fontname",
          "torvex_editor_fontsize", "torvex_editor_fontcolor", "torvex_editor_backcolor"}) {
        application.set(tool, true);
    }
    application.set("torvex_editor_width", editorWidthFloor);
    application.set("torvex_editor_height", editorHeightDefault);
    application.set("torvex_codepage", "");
    application.set("torvex_charset", "");
}

/// One charset is in force for all only if every language has it.
void Setup::readCommonCharset() {
    auto& application = host_.application;
    auto rows = connection_->query(selectCharsets);
    if (!rows.next()) return;
    const std::string label = rows.text("charset_label");
    application.set("torvex_charset", label);
    application.set("torvex_codepage", rows.value("charset_codepage"));
    while (rows.next()) {
        if (text::equals(rows.text("charset_label"), label)) continue;
        application.set("torvex_charset", "");
        application.set("torvex_codepage", "");
        return;
    }
}

void Setup::readSettings() {
    auto& application = host_.application;
    auto rows = connection_->query(selectSettings);
    while (rows.next()) {
        const auto value = settingValue(rows.text("dataType"), rows.text("value"));
        if (value) application.set(rows.text("parameter"), *value);
    }
}

/// The two floors differ in kind on purpose: the width stops at its floor, the height jumps to its default.
void Setup::raiseEditorFloors() {
    auto& application = host_.application;
    if (application.number("torvex_editor_width") < editorWidthFloor) {
        application.set("torvex_editor_width", editorWidthFloor);
    }
    if (application.number("torvex_editor_height") < editorHeightFloor) {
        application.set("torvex_editor_height", editorHeightDefault);
    }
}

void Setup::initSession() try {
    auto& session = host_.session;
    const auto& application = host_.application;
    const std::string host = host_.request.serverVariable("HTTP_HOST");
    const std::string today = host_.clock.today();
    session.set("torvex_username", "");
    session.set("torvex_dns", host);
    session.set("torvex_oncontextmenu", "oncontextmenu=\"return false\"");
    session.set("tvx_counter", 0);
    session.set("tvx_loginTrials", 0);
    session.set("tvx_loginError", false);
    session.set("tvx_codePage", "");
    session.set("tvx_charset", "");
    session.set("torvex_visited_pages", "");
    session.set("torvex_statistics_from", today);
    session.set("torvex_audit_from", today);
    session.set("torvex_statistics_to", "");
    session.set("torvex_audit_to", "");
    session.set("torvex_editor_language", "");
    session.set("torvex_date_format", "mmddyyyy");
    session.set("tvx_url", (application.isTrue("tvx_website_ssl") ? "https://" : "http://") + host);
    session.set("torvex_ssl", application.get("torvex_ssl"));
    std::string language = "en";
    if (auto rows = connection_->query(selectDefaultInterface); rows.next()) language = rows.text("lang_ID");
    session.set("torvex_interface_language", language);
    session.set("torvex_current_interface", language);
    session.set("torvex_adminTemplates_dir", application.text("torvex_adminTemplates_dir") + language + "/");
} catch (...) {
    raiseFrom("initSession (setup) !");
}

}  // namespace torvex
