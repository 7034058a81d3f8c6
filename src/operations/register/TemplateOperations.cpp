#include "accounts/AdminEntries.h"
#include "operations/register/AssetRows.h"
#include "operations/register/Classes.h"
#include "templates/Template.h"

namespace torvex::operations {

using namespace assets;

ClassEntry templateOperations() {
    return describe<Template>(
        "template", "The register of content templates, by site and language.",
        {
            reads("checkTemplate", &Template::checkTemplate, checkArguments("templateId"), checked,
                  anyLogin())
                .codes(checkCodes()),
            reads("getTemplate", &Template::getTemplate, {argument("templateId")}, filled, anyLogin())
                .codes(noEntry(false)),
            reads("getTemplateId", &Template::getTemplateId, nameArguments(), numbered, anyLogin())
                .codes(noEntry(-1)),
            reads("getTemplateList", &Template::getTemplateList,
                  {argument("site"), argument("lang"), argument("listType")},
                  "The entries of a site and language: 1 those of the system, 0 the others, else all.",
                  anyLogin())
                .lists({{"tpl_id", Number},
                        {"tpl_name", Text},
                        {"tpl_description", Text},
                        {"tpl_system", Number}}),
            writes("delTemplate", &Template::delTemplate, {argument("templateId"), argument("advId", 0)},
                   "Removes an entry that nothing uses, with its file.", editAccess(adminEntry::templates))
                .codes(removalCodes({refusal("4", "A newsflash uses it.", label::usedByNewsflashes),
                                     refusal("5", "A dynamic menu uses it.", label::usedByMenus)},
                                    "6")),
            reads("getTemplateFile", &Template::getTemplateFile, pageArguments(), fileInForce,
                  designOf("pageIdent", "mode")),
            reads("getTemplateName", &Template::getTemplateName, pageArguments(), nameInForce,
                  designOf("pageIdent", "mode")),
            reads("getNodeId", &Template::getNodeId, {argument("pageId")}, nodeOfPage, anyLogin()),
            reads("getPageId", &Template::getPageId, {argument("nodeId")}, pageOfNode, anyLogin())
                .codes(noPage()),
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

}  // namespace torvex::operations
