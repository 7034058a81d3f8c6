// cManager: what is there.

#include "records/Existence.h"

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "records/SiteCodes.h"

namespace torvex {

bool cManager::isSite(const std::string& site) try {
    // Answered without a database when the text can't be a code.
    return hasCodeLength(site) && siteExists(connection(), site);
} catch (...) {
    raiseFrom("isSite !");
}

bool cManager::isLang(const std::string& lang) try {
    return hasCodeLength(lang) && languageExists(connection(), lang);
} catch (...) {
    raiseFrom("isLang !");
}

bool cManager::isApplication(int appId) try { return applicationExists(connection(), appId); } catch (...) {
    raiseFrom("isApplication !");
}

bool cManager::isBaseTemplate(int baseTemplateId) try {
    return baseTemplateExists(connection(), baseTemplateId);
} catch (...) {
    raiseFrom("isBaseTemplate !");
}

bool cManager::isStylesheet(int stylesheetId) try {
    return stylesheetExists(connection(), stylesheetId);
} catch (...) {
    raiseFrom("isStylesheet !");
}

bool cManager::isTemplate(int templateId) try {
    return templateExists(connection(), templateId);
} catch (...) {
    raiseFrom("isTemplate !");
}

}  // namespace torvex
