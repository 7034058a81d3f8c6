#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerSetupRows() {
    return {
        reads("getNumberOfBodies", &cManager::getNumberOfBodies, {argument("Template")},
              "The bodies that a content template has places for; -1 when it can't be read.", anyLogin()),
        writes("saveNewPageSetup", &cManager::saveNewPageSetup,
               {argument("site"), argument("lang"), argument("parentIdent"), argument("insertIdent", "")},
               "Makes a page from the page record, in front of a sibling or as the last: its node, or a "
               "code.",
               editRight("edit", "parentIdent", "site", "lang")),
        writes("savePageSetup", &cManager::savePageSetup, {argument("pageIdent")},
               "Saves the page record as the setup of a page: \"0\" or a code.",
               editRight("edit", "pageIdent")),
    };
}

}  // namespace torvex::operations
