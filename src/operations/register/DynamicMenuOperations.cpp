#include "accounts/AdminEntries.h"
#include "modules/dynamicMenu/dynMenu.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"

namespace torvex::operations {

ClassEntry dynamicMenuOperations() {
    return describe<dynMenu>(
        "dynMenu", "Menus that are drawn from the page tree.",
        {
            reads(
                "load", &dynMenu::load, {argument("pageIdent"), argument("mode", "")},
                "Draws the menu of a page into the properties: for the session's visitor, or for authors in "
                "mode \"D\" or \"L\".",
                designOf("pageIdent", "mode"))
                .codes({code(true, "It is drawn."), code(false, "The page shows no menu.")}),
            reads("isPage", &dynMenu::isPage, {argument("pageIdent"), argument("mode", "L")},
                  "Whether a page shows today; in mode \"D\" by the dates of its design.",
                  designOf("pageIdent", "mode")),
            writes("publish", &dynMenu::publish, {argument("site"), argument("lang")},
                   "Brings the live menus of a site and language to what their design says.",
                   editAccess(adminEntry::dynamicMenu, "site", "lang")),
            writes("CleanUpDB", &dynMenu::CleanUpDB, {},
                   "Removes the menus of all sites whose page or template is gone.", nobody()),
        },
        {
            property("dmTemplate", &dynMenu::dmTemplate, "The template of the menu last loaded."),
            property("dmHeader", &dynMenu::dmHeader, "What the menu adds to the head of a page."),
            property("dmContent", &dynMenu::dmContent, "The menu, drawn."),
        });
}

}  // namespace torvex::operations
