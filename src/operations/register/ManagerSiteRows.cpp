#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

constexpr auto sortedBy = "by code for 1, else by name.";

std::vector<Operation> siteRows() {
    return {
        operation(
            "addSite", &cManager::addSite,
            {argument("siteId"), argument("siteName"), argument("siteDescription"), argument("advId", 0)},
            "Adds a site with its meta tags and folders; false when its code or name can't be had.",
            editAccess(adminEntry::sites)),
        operation("updateSite", &cManager::updateSite,
                  {argument("site"), argument("name"), argument("description"), argument("advId", 0)},
                  "Renames and describes a site, and frees its record; an empty name keeps the one it has.",
                  editAccess(adminEntry::sites)),
        operation("deleteSite", &cManager::deleteSite, {argument("site"), argument("advId", 0)},
                  "Removes a site with all that is its own. Empty, or -10 nobody is logged in, -2 another "
                  "login works in it, -3 it has pages, -4 it is the last one, -99.",
                  editAccess(adminEntry::sites)),
        operation("getSiteName", &cManager::getSiteName, {argument("site")}, "The name of a site.",
                  anyLogin()),
        operation("getSiteDescription", &cManager::getSiteDescription, {argument("site")},
                  "The description of a site.", anyLogin()),
        operation("getSiteId", &cManager::getSiteId, {argument("siteName")},
                  "The code of a site by its name.", anyLogin()),
        operation("getSites", &cManager::getSites, {argument("sortId", 1)},
                  std::string("The sites, ") + sortedBy, anyLogin())
            .lists("site, name, description"),
    };
}

std::vector<Operation> languageRows() {
    return {
        operation("addLanguage", &cManager::addLanguage,
                  {argument("langId"), argument("langName"), argument("charsetID"), argument("advId", 0)},
                  "Adds a language with its folders in all sites; false when its name can't be had.",
                  editAccess(adminEntry::languages)),
        operation("updateLanguage", &cManager::updateLanguage,
                  {argument("lang"), argument("name"), argument("charsetID"), argument("advId", 0)},
                  "Renames a language, sets its character set and frees its record.",
                  editAccess(adminEntry::languages)),
        operation("deleteLanguage", &cManager::deleteLanguage, {argument("lang"), argument("advId", 0)},
                  "Removes a language with all that is its own. Empty, or -10 nobody is logged in, -2 "
                  "another login works in it, -3 it has pages, -4 it is the last one, -99.",
                  editAccess(adminEntry::languages)),
        operation("getLanguageName", &cManager::getLanguageName, {argument("lang")},
                  "The name of a language.", anyLogin()),
        operation("getLanguageId", &cManager::getLanguageId, {argument("languageName")},
                  "The code of a language by its name.", anyLogin()),
        operation("getLanguages", &cManager::getLanguages, {argument("sortId", 1)},
                  std::string("The languages, ") + sortedBy, anyLogin())
            .lists("lang, name, charset_name, charset_label, charset_codepage"),
        operation("getCharsets", &cManager::getCharsets, {argument("sortId", 1)},
                  "The character sets, sorted by the column of this number.", anyLogin())
            .lists("charset_id, charset_name, charset_label, charset_codepage"),
        operation("getCharsetID", &cManager::getCharsetID, {argument("lang")},
                  "The number of a language's character set; 0 when there is no such language.", anyLogin()),
        operation("getCharsetName", &cManager::getCharsetName, {argument("lang")},
                  "The name of a language's character set.", anyLogin()),
        operation("getCharsetLabel", &cManager::getCharsetLabel, {argument("lang")},
                  "The label of a language's character set, as a content type names it.", anyLogin()),
        operation("getCharsetCodepage", &cManager::getCharsetCodepage, {argument("lang")},
                  "The code page of a language's character set.", anyLogin()),
    };
}

std::vector<Operation> websiteRows() {
    return {
        operation("saveWebsiteTitle", &cManager::saveWebsiteTitle,
                  {argument("site"), argument("lang"), argument("title"), argument("advId", 0)},
                  "Sets the title of a site in a language; false when one of them isn't there.",
                  editAccess(adminEntry::websiteTitle, "site", "lang")),
        operation("getWebsiteTitle", &cManager::getWebsiteTitle, {argument("site"), argument("lang")},
                  "The title of a site in a language.", anyLogin()),
        operation(
            "getWebsites", &cManager::getWebsites, {argument("site", ""), argument("sortId", 1)},
            "Every pair of a site, or one site, and a language; by the site's code for 1, else its name.",
            anyLogin())
            .lists("site, lang, siteName, langName, title"),
    };
}

std::vector<Operation> existenceRows() {
    return {
        operation("isSite", &cManager::isSite, {argument("site")}, "Whether a site is there.", anyLogin()),
        operation("isLang", &cManager::isLang, {argument("lang")}, "Whether a language is there.",
                  anyLogin()),
        operation("isApplication", &cManager::isApplication, {argument("appId")},
                  "Whether an application is there.", anyLogin()),
        operation("isBaseTemplate", &cManager::isBaseTemplate, {argument("baseTemplateId")},
                  "Whether a base template is there.", anyLogin()),
        operation("isStylesheet", &cManager::isStylesheet, {argument("stylesheetId")},
                  "Whether a stylesheet is there.", anyLogin()),
        operation("isTemplate", &cManager::isTemplate, {argument("templateId")},
                  "Whether a content template is there.", anyLogin()),
    };
}

}  // namespace

std::vector<Operation> managerSiteRows() {
    std::vector<Operation> all;
    for (auto subject : {siteRows, languageRows, websiteRows, existenceRows}) {
        for (auto& row : subject()) all.push_back(std::move(row));
    }
    return all;
}

}  // namespace torvex::operations
