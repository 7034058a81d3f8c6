// cManager: what is there.

#include "records/SiteCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectSite = "select site from TORVEX_SITES where site = ?";
constexpr std::string_view selectLanguage = "select lang from TORVEX_LANGUAGES where lang = ?";
constexpr std::string_view selectApplication = "select app_id from TORVEX_APPLICATIONS where app_id = ?";
constexpr std::string_view selectBaseTemplate = "select btpl_id from TORVEX_BASETEMPLATES where btpl_id = ?";
constexpr std::string_view selectStylesheet = "select ss_id from TORVEX_STYLESHEETS where ss_id = ?";
constexpr std::string_view selectTemplate = "select tpl_id from TORVEX_TEMPLATES where tpl_id = ?";

}  // namespace

bool cManager::isSite(const std::string& site) try {
    return hasCodeLength(site) && connection().query(selectSite, {site}).next();
} catch (...) {
    raiseFrom("isSite !");
}

bool cManager::isLang(const std::string& lang) try {
    return hasCodeLength(lang) && connection().query(selectLanguage, {lang}).next();
} catch (...) {
    raiseFrom("isLang !");
}

bool cManager::isApplication(int appId) try {
    return connection().query(selectApplication, {appId}).next();
} catch (...) {
    raiseFrom("isApplication !");
}

bool cManager::isBaseTemplate(int baseTemplateId) try {
    return connection().query(selectBaseTemplate, {baseTemplateId}).next();
} catch (...) {
    raiseFrom("isBaseTemplate !");
}

bool cManager::isStylesheet(int stylesheetId) try {
    return connection().query(selectStylesheet, {stylesheetId}).next();
} catch (...) {
    raiseFrom("isStylesheet !");
}

bool cManager::isTemplate(int templateId) try {
    return connection().query(selectTemplate, {templateId}).next();
} catch (...) {
    raiseFrom("isTemplate !");
}

}  // namespace torvex
