#include "operations/register/Binding.h"
#include "operations/register/Classes.h"
#include "templates/Application.h"
#include "templates/BaseTemplate.h"
#include "templates/StyleSheet.h"
#include "templates/Template.h"

namespace torvex::operations {

namespace {

constexpr auto checked =
    "Whether an entry may use a name and a file: \"0\" yes, \"1\" the name is taken, \"2\" the file is.";
constexpr auto filled = "Reads an entry into the properties; false when there is none.";
constexpr auto numbered = "The number of the entry of a name, or -1.";
constexpr auto listed = "The entries of a site and language, by name.";
constexpr auto fileInForce =
    "The file in force for a page, its own or an ancestor's; mode \"D\" asks the design.";
constexpr auto nameInForce =
    "The name in force for a page, its own or an ancestor's; mode \"D\" asks the design.";
constexpr auto nodeOfPage = "The node of a page number; empty text when there is no such page.";
constexpr auto pageOfNode = "The page number of a node; -1 when there is no such page.";

std::array<NamedArgument, 5> checkArguments(std::string id) {
    return {argument("site"), argument("lang"), argument(std::move(id)), argument("name"), argument("file")};
}

std::array<NamedArgument, 3> nameArguments() {
    return {argument("name"), argument("site"), argument("lang")};
}

std::array<NamedArgument, 2> pageArguments() {
    return {argument("pageIdent"), argument("mode", "L")};
}

}  // namespace

ClassEntry templateOperations() {
    return describe<Template>(
        "template", "The register of content templates, by site and language.",
        {
            operation("checkTemplate", &Template::checkTemplate, checkArguments("templateId"), checked,
                      anyLogin()),
            operation("getTemplate", &Template::getTemplate, {argument("templateId")}, filled, anyLogin()),
            operation("getTemplateId", &Template::getTemplateId, nameArguments(), numbered, anyLogin()),
            operation("getTemplateList", &Template::getTemplateList,
                      {argument("site"), argument("lang"), argument("listType")},
                      "The entries of a site and language: 1 those of the system, 0 the others, else all.",
                      anyLogin())
                .lists("tpl_id, tpl_name, tpl_description, tpl_system"),
            operation("getTemplateFile", &Template::getTemplateFile, pageArguments(), fileInForce,
                      anyLogin()),
            operation("getTemplateName", &Template::getTemplateName, pageArguments(), nameInForce,
                      anyLogin()),
            operation("getNodeId", &Template::getNodeId, {argument("pageId")}, nodeOfPage, anyLogin()),
            operation("getPageId", &Template::getPageId, {argument("nodeId")}, pageOfNode, anyLogin()),
        },
        {
            property("tplExists", &Template::tplExists, "Whether the entry last asked for is there."),
            property("tplSite", &Template::tplSite, "Its site."),
            property("tplLang", &Template::tplLang, "Its language."),
            property("tplName", &Template::tplName, "Its name."),
            property("tplDescription", &Template::tplDescription, "Its description."),
            property("tplFilename", &Template::tplFilename, "Its file."),
            property("tplSystem", &Template::tplSystem, "\"1\" for an entry of the system."),
            property("tplSource", &Template::tplSource, "The text of its file."),
        });
}

ClassEntry baseTemplateOperations() {
    return describe<BaseTemplate>(
        "BaseTemplate", "The register of base templates, by site and language.",
        {
            operation("checkBaseTemplate", &BaseTemplate::checkBaseTemplate, checkArguments("baseTemplateId"),
                      checked, anyLogin()),
            operation("getBaseTemplate", &BaseTemplate::getBaseTemplate, {argument("baseTemplateId")}, filled,
                      anyLogin()),
            operation("getBaseTemplateId", &BaseTemplate::getBaseTemplateId, nameArguments(), numbered,
                      anyLogin()),
            operation("getBaseTemplateList", &BaseTemplate::getBaseTemplateList,
                      {argument("site"), argument("lang")}, listed, anyLogin())
                .lists("btpl_id, btpl_name, btpl_description"),
            operation("getBaseTemplateFile", &BaseTemplate::getBaseTemplateFile, pageArguments(), fileInForce,
                      anyLogin()),
            operation("getBaseTemplateName", &BaseTemplate::getBaseTemplateName, pageArguments(), nameInForce,
                      anyLogin()),
            operation("getNodeId", &BaseTemplate::getNodeId, {argument("pageId")}, nodeOfPage, anyLogin()),
            operation("getPageId", &BaseTemplate::getPageId, {argument("nodeId")}, pageOfNode, anyLogin()),
        },
        {
            property("btplExists", &BaseTemplate::btplExists, "Whether the entry last asked for is there."),
            property("btplSite", &BaseTemplate::btplSite, "Its site."),
            property("btplLang", &BaseTemplate::btplLang, "Its language."),
            property("btplName", &BaseTemplate::btplName, "Its name."),
            property("btplDescription", &BaseTemplate::btplDescription, "Its description."),
            property("btplFilename", &BaseTemplate::btplFilename, "Its file."),
            property("btplSource", &BaseTemplate::btplSource, "The text of its file."),
        });
}

ClassEntry styleSheetOperations() {
    return describe<StyleSheet>(
        "StyleSheet", "The register of stylesheets, by site and language.",
        {
            operation("checkStylesheet", &StyleSheet::checkStylesheet, checkArguments("stylesheetId"),
                      checked, anyLogin()),
            operation("getStylesheet", &StyleSheet::getStylesheet, {argument("stylesheetId")}, filled,
                      anyLogin()),
            operation("getStylesheetId", &StyleSheet::getStylesheetId, nameArguments(), numbered, anyLogin()),
            operation("getStylesheetList", &StyleSheet::getStylesheetList,
                      {argument("site"), argument("lang")}, listed, anyLogin())
                .lists("ss_id, ss_name, ss_description"),
            operation("getStylesheetFile", &StyleSheet::getStylesheetFile, pageArguments(), fileInForce,
                      anyLogin()),
            operation("getStylesheetName", &StyleSheet::getStylesheetName, pageArguments(), nameInForce,
                      anyLogin()),
            operation("getNodeId", &StyleSheet::getNodeId, {argument("pageId")}, nodeOfPage, anyLogin()),
            operation("getPageId", &StyleSheet::getPageId, {argument("nodeId")}, pageOfNode, anyLogin()),
        },
        {
            property("ssExists", &StyleSheet::ssExists, "Whether the entry last asked for is there."),
            property("ssSite", &StyleSheet::ssSite, "Its site."),
            property("ssLang", &StyleSheet::ssLang, "Its language."),
            property("ssName", &StyleSheet::ssName, "Its name."),
            property("ssDescription", &StyleSheet::ssDescription, "Its description."),
            property("ssFilename", &StyleSheet::ssFilename, "Its file."),
            property("ssSource", &StyleSheet::ssSource, "The text of its file."),
        });
}

ClassEntry applicationOperations() {
    return describe<Application>(
        "application",
        "The register of applications: programs at addresses of their own that pages stand for.",
        {
            operation("getApplication", &Application::getApplication, {argument("appId")}, filled,
                      anyLogin()),
            operation("getApplicationId", &Application::getApplicationId, {argument("name")}, numbered,
                      anyLogin()),
            operation(
                "getApplicationList", &Application::getApplicationList, {argument("listType")},
                "The entries: 1 those of the system, 0 the others, 2 those that can be published, else all.",
                anyLogin())
                .lists("app_id, app_name, app_description, app_system"),
            operation("getApplicationName", &Application::getApplicationName, {argument("appId")},
                      "The name of an entry; empty text when there is none.", anyLogin()),
        },
        {
            property("appExists", &Application::appExists, "Whether the entry last asked for is there."),
            property("appName", &Application::appName, "Its name."),
            property("appDescription", &Application::appDescription, "Its description."),
            property("appURLPublic", &Application::appURLPublic, "Its address for visitors."),
            property("appURLAdmin", &Application::appURLAdmin, "Its address for authors."),
            property("appURLPublish", &Application::appURLPublish, "The address that publishes it."),
            property("appSystem", &Application::appSystem, "\"1\" for an entry of the system."),
        });
}

}  // namespace torvex::operations
