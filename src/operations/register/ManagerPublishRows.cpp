#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerPublishRows() {
    return {
        writes("publishPage", &cManager::publishPage, {argument("pageIdent")},
               "Copies an approved page to the live tables, or removes one that is marked for deletion with "
               "all under it: how it is live.",
               editRight("publish", "pageIdent"))
            .codes(
                {code(0, "It is live and switched off; or the page that was marked for deletion is removed."),
                 code(1, "It is live."), code(2, "It is live, but today lies outside its dates."),
                 code(3, "The folder is live."), code(4, "It is live in the system branch, and off line."),
                 notLoggedIn(), refusal(-1, "The page is checked out.", label::checkedOut),
                 refusal(-2, "The page isn't approved.", label::notApproved),
                 refusal(-3, "There is no such page.", label::gone),
                 refusal(-4, "Its parent isn't live.", label::parentNotLive), failed()}),
        writes("publishPageCascading", &cManager::publishPageCascading, {argument("pageIdent")},
               "Publishes all approved pages from a node on, or none of them.",
               editRight("publish", "pageIdent"))
            .codes({code(0,
                         "What could be published is; what is checked out, or has a parent that isn't live, "
                         "stays as it was."),
                    notLoggedIn(), failed()}),
        writes("publishPages", &cManager::publishPages, {argument("pageList")},
               "Publishes the pages of a list: those with which it failed, divided by commas.",
               editRight("publish", "pageList")),
        writes("resetPage", &cManager::resetPage, {argument("pageIdent")},
               "Overwrites the design of a page with what is live: its type and four statuses.",
               editRight("edit", "pageIdent"))
            .codes({notLoggedIn(), refusal(-1, "Another login has the page.", label::held),
                    refusal(-2, "The page is approved.", label::pageApproved),
                    refusal(-3, "There is no such page, or it was never published.", label::neverPublished),
                    refusal(-4, "The page has no design.", label::gone), failed()}),
        writes("setOnOff", &cManager::setOnOff,
               {argument("pageIdent"), argument("onOff"), argument("cascading", false)},
               "Switches a live page, or all from a node on, \"on\" or off.",
               editRight("onoff", "pageIdent")),
    };
}

}  // namespace torvex::operations
