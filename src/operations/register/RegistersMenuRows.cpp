#include "accounts/AdminEntries.h"
#include "operations/register/ModuleLabels.h"
#include "operations/register/RegistersRows.h"

namespace torvex::operations {

std::vector<Row<registers>> registersMenuRows() {
    return {
        reads("getMenus", &registers::getMenus, {argument("site"), argument("lang")},
              "The dynamic menus of a website by the nodes of their pages, with all that the design says of "
              "them.",
              viewAccess(adminEntry::dynamicMenu, "site", "lang"))
            .lists({{"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"minLevels", Number},
                    {"maxLevels", Number},
                    {"templateId", Number},
                    {"tpl_name", Text},
                    {"display", Number},
                    {"extranet", Number},
                    {"deleted", Number},
                    {"modified", Number},
                    {"isLive", Number}}),
        writes("saveMenu", &registers::saveMenu,
               {argument("pageId"), argument("site"), argument("lang"), argument("minLevels"),
                argument("maxLevels"), argument("templateId"), argument("display"), argument("extranet"),
                argument("marked", false), argument("advId", 0)},
               "Gives a page its menu in the design, or changes it; one that is marked goes with the next "
               "publishing.",
               editAccess(adminEntry::dynamicMenu, "site", "lang"))
            .codes({code(0, "It is saved."), recordGone(),
                    refusal(-4, "Display and extranet are 0 or 1.", label::noSuchChoice),
                    refusal(-5, "That is no template of the website for modules.", label::noSystemTemplate),
                    notLoggedIn(), failed()}),
    };
}

}  // namespace torvex::operations
