#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerPublishRows() {
    return {
        writes("publishPage", &cManager::publishPage, {argument("pageIdent")},
               "Copies an approved page to the live tables, or removes one that is marked for deletion with "
               "all under it: how it is live, or a code.",
               editRight("publish", "pageIdent")),
        writes("publishPageCascading", &cManager::publishPageCascading, {argument("pageIdent")},
               "Publishes all approved pages from a node on, or none of them: 0, or a code.",
               editRight("publish", "pageIdent")),
        writes("publishPages", &cManager::publishPages, {argument("pageList")},
               "Publishes the pages of a list: those with which it failed, divided by commas.",
               editRight("publish", "pageList")),
        writes("resetPage", &cManager::resetPage, {argument("pageIdent")},
               "Overwrites the design of a page with what is live: its type and four statuses, or a code.",
               editRight("edit", "pageIdent")),
        writes("setOnOff", &cManager::setOnOff,
               {argument("pageIdent"), argument("onOff"), argument("cascading", false)},
               "Switches a live page, or all from a node on, \"on\" or off.",
               editRight("onoff", "pageIdent")),
    };
}

}  // namespace torvex::operations
