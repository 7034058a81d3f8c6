#include "accounts/AdminEntries.h"
#include "operations/register/AssetRows.h"
#include "operations/register/Classes.h"
#include "templates/BaseTemplate.h"

namespace torvex::operations {

using namespace assets;

ClassEntry baseTemplateOperations() {
    return describe<BaseTemplate>(
        "BaseTemplate", "The register of base templates, by site and language.",
        {
            reads("checkBaseTemplate", &BaseTemplate::checkBaseTemplate, checkArguments("baseTemplateId"),
                  checked, anyLogin())
                .codes(checkCodes()),
            reads("getBaseTemplate", &BaseTemplate::getBaseTemplate, {argument("baseTemplateId")}, filled,
                  anyLogin())
                .codes(noEntry(false)),
            reads("getBaseTemplateId", &BaseTemplate::getBaseTemplateId, nameArguments(), numbered,
                  anyLogin())
                .codes(noEntry(-1)),
            reads("getBaseTemplateList", &BaseTemplate::getBaseTemplateList,
                  {argument("site"), argument("lang")}, listed, anyLogin())
                .lists({{"btpl_id", Number}, {"btpl_name", Text}, {"btpl_description", Text}}),
            writes("delBaseTemplate", &BaseTemplate::delBaseTemplate,
                   {argument("baseTemplateId"), argument("advId", 0)},
                   "Removes an entry that nothing uses, with its file.",
                   editAccess(adminEntry::baseTemplates))
                .codes(removalCodes({}, "4")),
            reads("getBaseTemplateFile", &BaseTemplate::getBaseTemplateFile, pageArguments(), fileInForce,
                  designOf("pageIdent", "mode")),
            reads("getBaseTemplateName", &BaseTemplate::getBaseTemplateName, pageArguments(), nameInForce,
                  designOf("pageIdent", "mode")),
            reads("getNodeId", &BaseTemplate::getNodeId, {argument("pageId")}, nodeOfPage, anyLogin()),
            reads("getPageId", &BaseTemplate::getPageId, {argument("nodeId")}, pageOfNode, anyLogin())
                .codes(noPage()),
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

}  // namespace torvex::operations
