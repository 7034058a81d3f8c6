#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

StatusCode noPageOrFailed() {
    return refusal(-99, "There is no such page, or it failed; nothing was changed.", label::failed);
}

StatusCode noTitle() {
    return refusal(-3, "A child of the target has the title, and a longer one would be too long.",
                   label::noFreeTitle);
}

StatusCode noPlace() {
    return refusal(-4, "The target has no free number or place for a child.", label::noPlace);
}

}  // namespace

std::vector<Row<cManager>> managerBranchRows() {
    return {
        writes(
            "pastePage", &cManager::pastePage,
            {argument("modeFrom"), argument("pageIdentFrom"), argument("pageIdentTo"), argument("flag")},
            "Copies a page, with a flag other than 0 all below it as well, to below another page: the node "
            "of the copy, which is in the design alone. What is live is copied in mode \"L\".",
            alsoReadingDesign(editRight("edit", "pageIdentTo"), "pageIdentFrom", "modeFrom"))
            .codes({notLoggedIn(),
                    refusal(-1, "There is a system branch below the target already.", label::systemBranch),
                    refusal(-2, "System pages go into a system branch only, and nothing else goes there.",
                            label::systemApart),
                    noTitle(), noPlace(), noPageOrFailed()}),
        // It leaves one place and takes another.
        writes("movePage", &cManager::movePage, {argument("pageIdentFrom"), argument("pageIdentTo")},
               "Hangs a page and all below it on another page of its site and language: its new node.",
               editRight("move", "pageIdentFrom", "pageIdentTo"))
            .codes({notLoggedIn(),
                    refusal(-1, "Another login works in this site and language.", label::somebodyWorks),
                    refusal(-2, "The target lies in the branch itself, or in another site or language.",
                            label::notIntoItself),
                    noTitle(), noPlace(),
                    refusal(-99,
                            "There is no such page, it is a system page, or it failed; nothing was "
                            "changed.")}),
        writes("moveNode", &cManager::moveNode,
               {argument("nodeIdentFrom"), argument("nodeIdentTo"), argument("direction")},
               "Has two siblings change places if the first then stands further \"up\" or \"down\".",
               editRight("move", "nodeIdentFrom", "nodeIdentTo"))
            .codes({code("", "The first stands where it was wanted."), notLoggedIn(),
                    refusal(-1,
                            "There is no such node, it is a root or a system branch, or the direction is "
                            "neither \"up\" nor \"down\"."),
                    failed()}),
        enters("getSitemap", &cManager::getSitemap,
               {argument("site"), argument("lang"), argument("startNode", ""), argument("flag", 0)},
               "The pages of a site and language as one text, with a flag other than 0 those just below a "
               "node, and enters the site and language.",
               designIn("site", "lang", "", "startNode"))
            .codes({refusal(-1,
                            "Pages are being moved in this site and language, so that nobody can enter them.",
                            label::somebodyWorks)}),
        reads("treeView", &cManager::treeView,
              {argument("site"), argument("lang"), argument("mode"), argument("tvMode")},
              "Answers the browser with a tree to pick a page (\"pages\"), an image (\"images\", "
              "\"pictures\") or a document (\"other\") from.",
              designOfAllTrees("mode")),
        reads("statistics", &cManager::statistics,
              {argument("pageIdent"), argument("fromDay"), argument("fromMonth"), argument("fromYear"),
               argument("toDay"), argument("toMonth"), argument("toYear"), argument("statType")},
              "The days on which a page was viewed, by months, as HTML; empty text when there are none. Type "
              "0 counts visitors, any other views.",
              viewAccessAt(adminEntry::statistics, "pageIdent")),
        reads("getMonth", &cManager::getMonth, {argument("monthId")},
              "The name of a month in the language of the interface.", anyLogin()),
    };
}

}  // namespace torvex::operations
