#include "delivery/cServer.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"

namespace torvex::operations {

namespace {

std::vector<Row<cServer>> resolution() {
    // A name and a password given to getPage could be guessed by the verdict.
    return {
        reads("getPage", &cServer::getPage,
              {argument("pageIdent"), withheld(argument("username", "")), withheld(argument("password", ""))},
              "Resolves a page into the page record; the property pgAccess is the verdict.", anyLogin()),
        reads("isPage", &cServer::isPage, {argument("pageIdent")},
              "Whether a page shows today, whoever asks; folders are followed to their first child.",
              visitor()),
        reads("getPageId", &cServer::getPageId, {argument("nodeId")}, "The page number of a node.",
              anyLogin())
            .codes({code(-1, "There is no such page.")}),
        reads("getNodeId", &cServer::getNodeId, {argument("pageId")},
              "The node of a page number; empty text when there is no such page.", anyLogin()),
        reads("getPageTitle", &cServer::getPageTitle, {argument("pageIdent")},
              "The title of a live page, or a bracketed word in the page's language when it has none.",
              anyLogin()),
        reads("getWebsiteTitle", &cServer::getWebsiteTitle, {argument("site"), argument("lang")},
              "The title of a site in a language.", visitor()),
        reads("getVocab", &cServer::getVocab, {argument("langId"), argument("labelId")},
              "The text of a label of the interface in a language, given by code or by number.", anyLogin()),
    };
}

std::vector<Row<cServer>> accessControl() {
    return {
        reads("securityCheck", &cServer::securityCheck, {argument("applicationDir", "")},
              "The address that the visitor has to be sent to instead of the page of the page record, or "
              "empty text.",
              nobody()),
        reads("hasAccess", &cServer::hasAccess, {argument("pageIdent"), argument("username", "")},
              "Whether a user, or the session's, may see a page; its dates don't count.", anyLogin()),
        reads("isSecuredPage", &cServer::isSecuredPage, {argument("pageIdent")},
              "Whether a real group guards a page.", anyLogin()),
        reads("checkFolderAccess", &cServer::checkFolderAccess, {argument("folder")},
              "Whether the visitor may see a media folder.", anyLogin())
            .codes({code(1, "It is open to the visitor, who belongs to one of its groups."),
                    code(0, "It is open."), code(-1, "No group is set for it."),
                    code(-2, "It asks for a login that the visitor hasn't got."),
                    code(-99, "It names no folder of media."),
                    code(100, "It is closed and holds images: a blank picture stands for them.")}),
    };
}

// Names and passwords could be guessed by these, without the limit that the login page has.
std::vector<Row<cServer>> users() {
    return {
        reads("isUser", &cServer::isUser, {argument("username"), argument("password")},
              "Whether there is a user of that name and password.", nobody()),
        reads("getUserId", &cServer::getUserId, {argument("username", ""), argument("password", "")},
              "The number of a user, or of the session's.", nobody())
            .codes({code(0, "There is no such user.")}),
        reads("getUserPassword", &cServer::getUserPassword, {argument("username", "")},
              "The stored password of a user, or of the session's.", nobody()),
        reads("getEntryPage", &cServer::getEntryPage, {argument("username", ""), argument("password", "")},
              "The page by which a user's group enters.", nobody())
            .codes({code(-1, "There is none, or the extranet is off.")}),
        reads("getExitPage", &cServer::getExitPage, {argument("username", ""), argument("password", "")},
              "The page by which a user's group leaves.", nobody())
            .codes({code(-1, "There is none, or the extranet is off.")}),
        reads("getLoginPage", &cServer::getLoginPage, {argument("pageIdent")},
              "The login page that guards a page.", anyLogin())
            .codes({code(0, "The extranet is off.")}),
        writes("getLoginURL", &cServer::getLoginURL, {},
               "Does what the posted login form asks for, and gives the address that it leads to.", nobody()),
        writes("getLogoutURL", &cServer::getLogoutURL, {},
               "Logs the visitor out, and gives the address that it leads to.", nobody()),
    };
}

std::vector<Row<cServer>> assembly() {
    return {
        reads("torvex_preparePage", &cServer::torvex_preparePage, {argument("applicationSubTitle", "")},
              "The finished page of the page record, but for its links; or \"error:\" and an address.",
              anyLogin()),
        reads("getTemplateFile", &cServer::getTemplateFile, {argument("pageIdent"), argument("mode", "L")},
              "The file of the content template that is in force for a live page; the mode is ignored.",
              anyLogin()),
        reads(
            "getStylesheetFile", &cServer::getStylesheetFile, {argument("pageIdent"), argument("mode", "L")},
            "The file of the stylesheet that is in force for a live page; the mode is ignored.", anyLogin()),
        reads("getBaseTemplateFile", &cServer::getBaseTemplateFile,
              {argument("pageIdent"), argument("mode", "L")},
              "The file of the base template that is in force for a live page; the mode is ignored.",
              anyLogin()),
        reads("fillBodies", &cServer::fillBodies, {argument("pageIdent"), argument("html")},
              "The text with the live bodies of a page in their places.", anyLogin()),
        reads("getBody", &cServer::getBody,
              {argument("pageIdent"), argument("bodyId"), argument("bodyType", 0), argument("feedId", 0)},
              "One live body of a page: stored text (type 1), an HTML feed (2) or an XML feed (3).",
              anyLogin()),
    };
}

std::vector<Row<cServer>> pageServices() {
    return {
        reads("buildLinks", &cServer::buildLinks,
              {argument("html"), argument("site"), argument("lang", ""), argument("mode", "")},
              "The page with its link notations as real links; the language and the mode have no effect.",
              anyLogin()),
        reads("sendBinaryFile", &cServer::sendBinaryFile,
              {argument("fileSpec"), argument("securityCheck", true)},
              "Writes a file of media to the response.", nobody())
            .codes({code(0, "The file, or a blank picture in its place, was sent."),
                    refusal(-1, "No group is set for its folder."),
                    refusal(-2, "Its folder asks for a login that the visitor hasn't got."),
                    refusal(-10, "It must be asked for at a secure address."),
                    refusal(-99, "It can't be read, or its name is no file of media.")}),
        writes("logPage", &cServer::logPage, {argument("pageIdent")},
               "Counts a view of a page, unless the visitor's address is filtered out.", nobody()),
        reads("getBreadcrumb", &cServer::getBreadcrumb, {argument("pageIdent")},
              "The trail of links from the root to a page, as HTML.", anyLogin()),
        reads("getMetaDataHTML", &cServer::getMetaDataHTML, {argument("pageIdent")},
              "The meta data of a live page, as HTML for its head.", anyLogin()),
        reads("getMetaTags", &cServer::getMetaTags, {argument("site")}, "The meta tags of a site, by name.",
              anyLogin())
            .lists({{"metaData_id", Number}, {"metaData_name", Text}, {"metaData_description", Text}}),
        enters("setCodePage", &cServer::setCodePage, {},
               "Sets the visitor's code page from the language of the page in the request.", visitor()),
        reads("getCharsetCodepage", &cServer::getCharsetCodepage, {argument("lang")},
              "The code page of a language's charset.", visitor()),
        reads("getCharsetLabel", &cServer::getCharsetLabel, {argument("lang")},
              "The label of a language's charset.", visitor()),
        reads("getCharsetName", &cServer::getCharsetName, {argument("lang")},
              "The name of a language's charset.", visitor()),
        reads("urlencode", &cServer::urlencode, {argument("queryString")},
              "Encodes the values of a query string and leaves \"=\" and \"&\".", visitor()),
        reads("getParameterValue", &cServer::getParameterValue,
              {argument("parameter"), argument("queryString")},
              "The value of a parameter of a query string; empty text when it isn't there.", visitor()),
    };
}

std::vector<PropertyRow<cServer>> pageRecord() {
    return {
        property("pgAccess", &cServer::pgAccess, "The verdict: 0 or 1 the page may be shown, negative not."),
        property("pgPageId", &cServer::pgPageId, "The page's number."),
        property("pgNodeId", &cServer::pgNodeId, "The page's place in the tree."),
        property("pgOrderId", &cServer::pgOrderId, "The page's place among its siblings."),
        property("pgType", &cServer::pgType, "\"P\" a content page, \"A\" an application, \"F\" a folder."),
        property("pgTitle", &cServer::pgTitle, "The page's title."),
        property("pgNavigation", &cServer::pgNavigation,
                 "\"M\" when previous, next and up were set by hand."),
        property("pgPrevious", &cServer::pgPrevious, "The page before this one; -1 for none."),
        property("pgNext", &cServer::pgNext, "The page behind this one; -1 for none."),
        property("pgUp", &cServer::pgUp, "The page above this one; -1 for none."),
        property("pgOnline", &cServer::pgOnline, "1 when the page is switched on."),
        property("pgOnlineFrom", &cServer::pgOnlineFrom,
                 "The first day of the page, yyyymmdd; empty for no limit."),
        property("pgOnlineTo", &cServer::pgOnlineTo,
                 "The last day of the page, yyyymmdd; empty for no limit."),
        property("pgTemplateFile", &cServer::pgTemplateFile, "The file of the page's own content template."),
        property("pgStylesheetFile", &cServer::pgStylesheetFile, "The file of the page's own stylesheet."),
        property("pgBaseTemplateFile", &cServer::pgBaseTemplateFile,
                 "The file of the page's own base template."),
        property("pgAppParamPublic", &cServer::pgAppParamPublic,
                 "The parameters that the page gives its application."),
        property("pgAppURLpublic", &cServer::pgAppURLpublic,
                 "The application's address with all parameters."),
        property("pgAppURL", &cServer::pgAppURL, "The application's address as registered."),
        property("pgBreadcrumb", &cServer::pgBreadcrumb, "Whether the page stands in the breadcrumb trail."),
        property("pgDynMenu", &cServer::pgDynMenu, "The page's dynamic menu."),
    };
}

}  // namespace

ClassEntry serverOperations() {
    return describe<cServer>("cServer", "Serves pages to visitors, from live data.",
                             joined({resolution(), accessControl(), users(), assembly(), pageServices()}),
                             pageRecord());
}

}  // namespace torvex::operations
