#include "accounts/AdminEntries.h"
#include "modules/messageBoard/msgBoard.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"

namespace torvex::operations {

ClassEntry msgBoardOperations() {
    return describe<msgBoard>(
        "msgBoard", "The message board: dated items in a tree of categories.",
        {
            reads(
                "load", &msgBoard::load,
                {argument("site"), argument("lang"), argument("mode"), argument("catRoot"),
                 argument("subCat"), argument("archive"), argument("pageTo"), argument("html")},
                "Fills the board's blocks of a template: the way to a category, the categories below it and "
                "a page of its items.",
                viewAccess(adminEntry::messageBoard, "site", "lang")),
            reads("getCategoryList", &msgBoard::getCategoryList,
                  {argument("site"), argument("lang"), argument("mode")},
                  "All categories of a website by their paths; the mark for deletion in mode \"D\" alone.",
                  viewAccess(adminEntry::messageBoard, "site", "lang"))
                .lists({{"msgB_catId", Text}, {"msgB_catTitle", Text}, {"msgB_deleted", Number}}),
            writes("publish", &msgBoard::publish,
                   {argument("site"), argument("lang"), argument("catId"), argument("includeSubcat"),
                    argument("includeItems")},
                   "Brings what has changed in a category to visitors, with the categories below it and the "
                   "items on demand.",
                   editAccess(adminEntry::messageBoard, "site", "lang"))
                .codes({code("", "It is done."),
                        refusal(1, "A category above it isn't live; nothing was changed.",
                                label::categoryNotLive),
                        failed()}),
        });
}

}  // namespace torvex::operations
