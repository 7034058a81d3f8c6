#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

/// What is wrong with the page record, whichever page it is saved as.
std::vector<StatusCode> setupRefusals() {
    return {refusal(-21, "A neighbour has this title.", label::neighbourTitle),
            refusal(-22, "There is no such type of page.", label::noSuchKind),
            refusal(-23, "There is no such template, or a root has none.", label::chooseTemplate),
            refusal(-24, "There is no such application.", label::chooseApplication),
            refusal(-25, "There is no such base template, or a root has none.", label::chooseBaseTemplate),
            refusal(-26, "There is no such stylesheet, or a root has none.", label::chooseStylesheet),
            refusal(-27, "The previous page isn't there.", label::noSuchPage),
            refusal(-28, "The next page isn't there.", label::noSuchPage),
            refusal(-29, "The page above isn't there.", label::noSuchPage),
            refusal(-30, "The login page isn't there.", label::noSuchPage),
            refusal(-32, "The first day is no date.", label::noSuchDate),
            refusal(-33, "The last day is no date.", label::noSuchDate),
            refusal(-35, "The application's system folder is no folder right below the system branch.",
                    label::noSystemFolder)};
}

}  // namespace

std::vector<Row<cManager>> managerSetupRows() {
    return {
        reads("getNumberOfBodies", &cManager::getNumberOfBodies, {argument("Template")},
              "The bodies that a content template has places for.", anyLogin())
            .codes({code(-1, "The template can't be read.")}),
        writes("saveNewPageSetup", &cManager::saveNewPageSetup,
               {argument("site"), argument("lang"), argument("parentIdent"), argument("insertIdent", "")},
               "Makes a page from the page record, in front of a sibling or as the last: its node.",
               editRight("edit", "parentIdent", "site", "lang"))
            .codes(joined<StatusCode>(
                {{notLoggedIn(), refusal(-3, "There is a page at its place already.", label::noPlace),
                  refusal(-4, "There is no such parent.", label::parentGone),
                  refusal(-5, "The parent has no free number for a child.", label::noPlace),
                  refusal(-6, "There is a system branch already.", label::noPlace)},
                 setupRefusals(),
                 {refusal(-99,
                          "There is no such site or language, there is no position left "
                          "among the siblings, or it failed; nothing was changed.")}})),
        writes("savePageSetup", &cManager::savePageSetup, {argument("pageIdent")},
               "Saves the page record as the setup of a page.", editRight("edit", "pageIdent"))
            .codes(joined<StatusCode>(
                {{code(0, "It is saved."), refusal(-1, "Another login has the page.", label::held),
                  refusal(-2, "There is no such page.", label::pageGone),
                  refusal(-4, "There is no such parent.", label::parentGone), notLoggedIn(),
                  refusal(-20, "There is no such site or language.", label::websiteGone)},
                 setupRefusals(),
                 {refusal(-34, "The file of the template can't be read.", label::templateUnread),
                  failed()}})),
    };
}

}  // namespace torvex::operations
