#include "installation/Setup.h"

#include "installation/CommonCharset.h"
#include "installation/SettingValue.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
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
    storeCommonCharset(host_.application, commonCharset(*connection_));
    readSettings();
    holdByFile(host_.application);
    raiseEditorFloors();
}

void Setup::derivePaths() {
    auto& application = host_.application;
    const std::string install = folderPath(application.text(applicationKey::installPath));
    const std::string root = install + "wwwroot/";
    const std::string images = folderPath(application.text(applicationKey::imagesName));
    const std::string documents = folderPath(application.text(applicationKey::documentsName));
    application.set(applicationKey::installPath, install);
    application.set(applicationKey::rootPath, root);
    application.set(applicationKey::imagesName, images);
    application.set(applicationKey::imagesPath, root + images);
    application.set(applicationKey::imagesUrl, "/" + images);
    application.set(applicationKey::documentsName, documents);
    application.set(applicationKey::documentsPath, root + documents);
    application.set(applicationKey::documentsUrl, "/" + documents);
    application.set(applicationKey::contentTemplatesPath, install + "contentTemplates/");
    application.set(applicationKey::adminTemplatesPath, install + "torvex/templates/");
    application.set(applicationKey::systemImages, "/torvex/images/");
    application.set(applicationKey::baseTemplatesPath, install + "baseTemplates/");
    application.set(applicationKey::stylesheetsPath, install + "wwwroot/stylesheets/");
}

void Setup::setDefaults() {
    auto& application = host_.application;
    for (const auto off :
         {applicationKey::websiteSsl, applicationKey::extranetSsl, applicationKey::authoringSsl,
          applicationKey::isExtranet, applicationKey::usesFeeds, applicationKey::imageSecurity,
          applicationKey::documentSecurity, applicationKey::msgBoardHtmlAllowed}) {
        application.set(off, false);
    }
    application.set(applicationKey::configLock, "");
    application.set(applicationKey::emailNotification, 0);
    application.set(applicationKey::loadBalancingShareName, "");
    for (const auto tool :
         {applicationKey::editorStyles, applicationKey::editorHeadings, applicationKey::editorFontname,
          applicationKey::editorFontsize, applicationKey::editorFontcolor, applicationKey::editorBackcolor}) {
        application.set(tool, true);
    }
    application.set(applicationKey::editorWidth, editorWidthFloor);
    application.set(applicationKey::editorHeight, editorHeightDefault);
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
    if (application.number(applicationKey::editorWidth) < editorWidthFloor) {
        application.set(applicationKey::editorWidth, editorWidthFloor);
    }
    if (application.number(applicationKey::editorHeight) < editorHeightFloor) {
        application.set(applicationKey::editorHeight, editorHeightDefault);
    }
}

std::string Setup::defaultInterface(db::Connection& connection) {
    const db::ReadScope oneState(connection);
    auto rows = connection.query(selectDefaultInterface);
    return rows.next() ? rows.text("lang_ID") : "en";
}

void Setup::initSession() try {
    auto& session = host_.session;
    const auto& application = host_.application;
    const std::string host = host_.request.serverVariable("HTTP_HOST");
    const std::string today = host_.clock.today();
    session.set(sessionKey::authorName, "");
    session.set(sessionKey::hostName, host);
    session.set(sessionKey::oncontextmenu, "oncontextmenu=\"return false\"");
    session.set(sessionKey::counter, 0);
    session.set(sessionKey::loginTrials, 0);
    session.set(sessionKey::loginError, false);
    session.set(sessionKey::codePage, "");
    session.set(sessionKey::charset, "");
    session.set(sessionKey::visitedPages, "");
    session.set(sessionKey::statisticsFrom, today);
    session.set(sessionKey::auditFrom, today);
    session.set(sessionKey::statisticsTo, "");
    session.set(sessionKey::auditTo, "");
    session.set(sessionKey::editorLanguage, "");
    session.set(sessionKey::dateFormat, "mmddyyyy");
    session.set(sessionKey::url,
                (application.isTrue(applicationKey::websiteSsl) ? "https://" : "http://") + host);
    session.set(sessionKey::authoringSsl, application.get(applicationKey::authoringSsl));
    const std::string language = defaultInterface(*connection_);
    session.set(sessionKey::chosenInterface, language);
    session.set(sessionKey::interfaceLanguage, language);
    session.set(sessionKey::adminTemplatesPath,
                application.text(applicationKey::adminTemplatesPath) + language + "/");
} catch (...) {
    raiseFrom("initSession (setup) !");
}

}  // namespace torvex
