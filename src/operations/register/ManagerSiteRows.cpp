#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

constexpr auto sortedBy = "by code for 1, else by name.";

std::vector<Row<cManager>> siteRows() {
    return {
        writes("addSite", &cManager::addSite,
               {argument("siteId"), argument("siteName"), argument("siteDescription"), argument("advId", 0)},
               "Adds a site with its meta tags and folders.", editAccess(adminEntry::sites))
            .codes({refusal(false, "The code can't be used, or the name is empty or taken.")}),
        writes("updateSite", &cManager::updateSite,
               {argument("site"), argument("name"), argument("description"), argument("advId", 0)},
               "Renames and describes a site, and frees its record; an empty name keeps the one it has.",
               editAccess(adminEntry::sites))
            .codes({refusal(false, "There is no such site.", label::gone)}),
        writes("deleteSite", &cManager::deleteSite, {argument("site"), argument("advId", 0)},
               "Removes a site with all that is its own.", editAccess(adminEntry::sites))
            .codes({code("", "It is removed."), notLoggedIn(),
                    refusal(-2, "Another login works in the site.", label::worksInIt),
                    refusal(-3, "The site has pages.", label::hasPages),
                    refusal(-4, "It is the last site.", label::lastOne), failed()}),
        reads("getSiteName", &cManager::getSiteName, {argument("site")}, "The name of a site.", anyLogin()),
        reads("getSiteDescription", &cManager::getSiteDescription, {argument("site")},
              "The description of a site.", anyLogin()),
        reads("getSiteId", &cManager::getSiteId, {argument("siteName")}, "The code of a site by its name.",
              anyLogin()),
        reads("getSites", &cManager::getSites, {argument("sortId", 1)}, std::string("The sites, ") + sortedBy,
              anyLogin())
            .lists({{"site", Text}, {"name", Text}, {"description", Text}}),
    };
}

std::vector<Row<cManager>> languageRows() {
    return {
        writes("addLanguage", &cManager::addLanguage,
               {argument("langId"), argument("langName"), argument("charsetID"), argument("advId", 0)},
               "Adds a language with its folders in all sites.", editAccess(adminEntry::languages))
            .codes({refusal(false,
                            "The code can't be used or is taken, the name is empty or taken, or no character "
                            "set is given.")}),
        writes("updateLanguage", &cManager::updateLanguage,
               {argument("lang"), argument("name"), argument("charsetID"), argument("advId", 0)},
               "Renames a language, sets its character set and frees its record.",
               editAccess(adminEntry::languages))
            .codes({refusal(false, "There is no such language, or no name or character set is given.")}),
        writes("deleteLanguage", &cManager::deleteLanguage, {argument("lang"), argument("advId", 0)},
               "Removes a language with all that is its own.", editAccess(adminEntry::languages))
            .codes({code("", "It is removed."), notLoggedIn(),
                    refusal(-2, "Another login works in the language.", label::worksInIt),
                    refusal(-3, "The language has pages.", label::hasPages),
                    refusal(-4, "It is the last language.", label::lastOne), failed()}),
        reads("getLanguageName", &cManager::getLanguageName, {argument("lang")}, "The name of a language.",
              anyLogin()),
        reads("getLanguageId", &cManager::getLanguageId, {argument("languageName")},
              "The code of a language by its name.", anyLogin()),
        reads("getLanguages", &cManager::getLanguages, {argument("sortId", 1)},
              std::string("The languages, ") + sortedBy, anyLogin())
            .lists({{"lang", Text},
                    {"name", Text},
                    {"charset_name", Text},
                    {"charset_label", Text},
                    {"charset_codepage", Number}}),
        reads("getCharsets", &cManager::getCharsets, {argument("sortId", 1)},
              "The character sets, sorted by the column of this number.", anyLogin())
            .lists({{"charset_id", Number},
                    {"charset_name", Text},
                    {"charset_label", Text},
                    {"charset_codepage", Number}}),
        reads("getCharsetID", &cManager::getCharsetID, {argument("lang")},
              "The number of a language's character set.", anyLogin())
            .codes({code(0, "There is no such language.")}),
        reads("getCharsetName", &cManager::getCharsetName, {argument("lang")},
              "The name of a language's character set.", anyLogin()),
        reads("getCharsetLabel", &cManager::getCharsetLabel, {argument("lang")},
              "The label of a language's character set, as a content type names it.", anyLogin()),
        reads("getCharsetCodepage", &cManager::getCharsetCodepage, {argument("lang")},
              "The code page of a language's character set.", anyLogin()),
    };
}

std::vector<Row<cManager>> websiteRows() {
    return {
        writes("saveWebsiteTitle", &cManager::saveWebsiteTitle,
               {argument("site"), argument("lang"), argument("title"), argument("advId", 0)},
               "Sets the title of a site in a language.",
               editAccess(adminEntry::websiteTitle, "site", "lang"))
            .codes({refusal(false, "There is no such site or language.", label::websiteGone)}),
        reads("getWebsiteTitle", &cManager::getWebsiteTitle, {argument("site"), argument("lang")},
              "The title of a site in a language.", anyLogin()),
        reads("getWebsites", &cManager::getWebsites, {argument("site", ""), argument("sortId", 1)},
              "Every pair of a site, or one site, and a language; by the site's code for 1, else its name.",
              anyLogin())
            .lists({{"site", Text}, {"lang", Text}, {"siteName", Text}, {"langName", Text}, {"title", Text}}),
    };
}

std::vector<Row<cManager>> existenceRows() {
    return {
        reads("isSite", &cManager::isSite, {argument("site")}, "Whether a site is there.", anyLogin()),
        reads("isLang", &cManager::isLang, {argument("lang")}, "Whether a language is there.", anyLogin()),
        reads("isApplication", &cManager::isApplication, {argument("appId")},
              "Whether an application is there.", anyLogin()),
        reads("isBaseTemplate", &cManager::isBaseTemplate, {argument("baseTemplateId")},
              "Whether a base template is there.", anyLogin()),
        reads("isStylesheet", &cManager::isStylesheet, {argument("stylesheetId")},
              "Whether a stylesheet is there.", anyLogin()),
        reads("isTemplate", &cManager::isTemplate, {argument("templateId")},
              "Whether a content template is there.", anyLogin()),
    };
}

}  // namespace

std::vector<Row<cManager>> managerSiteRows() {
    return joined({siteRows(), languageRows(), websiteRows(), existenceRows()});
}

}  // namespace torvex::operations
