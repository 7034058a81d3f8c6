#include "records/Existence.h"

#include "platform/db/Connection.h"
#include "records/SiteCodes.h"

namespace torvex {

namespace {

constexpr std::string_view selectSite = "select site from TORVEX_SITES where site = ?";
constexpr std::string_view selectLanguage = "select lang from TORVEX_LANGUAGES where lang = ?";
constexpr std::string_view selectApplication = "select app_id from TORVEX_APPLICATIONS where app_id = ?";
constexpr std::string_view selectBaseTemplate = "select btpl_id from TORVEX_BASETEMPLATES where btpl_id = ?";
constexpr std::string_view selectStylesheet = "select ss_id from TORVEX_STYLESHEETS where ss_id = ?";
constexpr std::string_view selectTemplate = "select tpl_id from TORVEX_TEMPLATES where tpl_id = ?";

}  // namespace

bool siteExists(db::Connection& connection, std::string_view site) {
    return hasCodeLength(site) && connection.query(selectSite, {site}).next();
}

bool languageExists(db::Connection& connection, std::string_view lang) {
    return hasCodeLength(lang) && connection.query(selectLanguage, {lang}).next();
}

bool applicationExists(db::Connection& connection, int appId) {
    return connection.query(selectApplication, {appId}).next();
}

bool baseTemplateExists(db::Connection& connection, int baseTemplateId) {
    return connection.query(selectBaseTemplate, {baseTemplateId}).next();
}

bool stylesheetExists(db::Connection& connection, int stylesheetId) {
    return connection.query(selectStylesheet, {stylesheetId}).next();
}

bool templateExists(db::Connection& connection, int templateId) {
    return connection.query(selectTemplate, {templateId}).next();
}

}  // namespace torvex
