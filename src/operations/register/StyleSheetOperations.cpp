#include "accounts/AdminEntries.h"
#include "operations/register/AssetRows.h"
#include "operations/register/Classes.h"
#include "templates/StyleSheet.h"

namespace torvex::operations {

using namespace assets;

ClassEntry styleSheetOperations() {
    return describe<StyleSheet>(
        "StyleSheet", "The register of stylesheets, by site and language.",
        {
            reads("checkStylesheet", &StyleSheet::checkStylesheet, checkArguments("stylesheetId"), checked,
                  anyLogin())
                .codes(checkCodes()),
            reads("getStylesheet", &StyleSheet::getStylesheet, {argument("stylesheetId")}, filled, anyLogin())
                .codes(noEntry(false)),
            reads("getStylesheetId", &StyleSheet::getStylesheetId, nameArguments(), numbered, anyLogin())
                .codes(noEntry(-1)),
            reads("getStylesheetList", &StyleSheet::getStylesheetList, {argument("site"), argument("lang")},
                  listed, anyLogin())
                .lists({{"ss_id", Number}, {"ss_name", Text}, {"ss_description", Text}}),
            writes("delStylesheet", &StyleSheet::delStylesheet,
                   {argument("stylesheetId"), argument("advId", 0)},
                   "Removes an entry that nothing uses, with its file.", editAccess(adminEntry::stylesheets))
                .codes(removalCodes({}, "4")),
            reads("getStylesheetFile", &StyleSheet::getStylesheetFile, pageArguments(), fileInForce,
                  designOf("pageIdent", "mode")),
            reads("getStylesheetName", &StyleSheet::getStylesheetName, pageArguments(), nameInForce,
                  designOf("pageIdent", "mode")),
            reads("getNodeId", &StyleSheet::getNodeId, {argument("pageId")}, nodeOfPage, anyLogin()),
            reads("getPageId", &StyleSheet::getPageId, {argument("nodeId")}, pageOfNode, anyLogin())
                .codes(noPage()),
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

}  // namespace torvex::operations
