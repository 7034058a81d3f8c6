#include "accounts/AdminEntries.h"
#include "modules/newsflash/newsflash.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"

namespace torvex::operations {

ClassEntry newsflashOperations() {
    return describe<newsflash>(
        "newsflash", "Small boxes with the newest items of the message board, for any page.",
        {
            reads("load", &newsflash::load,
                  {argument("site"), argument("lang"), argument("newsflashId"), argument("mode", "")},
                  "Draws the newsflash of a number; the properties hold it then.",
                  viewAccess(adminEntry::newsflash, "site", "lang"))
                .codes({refusal(false,
                                "There is none, or its template isn't there or is none of the system's.")}),
            reads("getNewsflashList", &newsflash::getNewsflashList,
                  {argument("site"), argument("lang"), argument("order", 0), argument("mode", "L")},
                  "The newsflashes of a website by number, or by title with an order other than 0.",
                  viewAccess(adminEntry::newsflash, "site", "lang"))
                .lists({{"nf_Id", Number},
                        {"id", Number},
                        {"title", Text},
                        {"modified", Number},
                        {"deleted", Number}}),
            reads("isNewsflash", &newsflash::isNewsflash,
                  {argument("site"), argument("lang"), argument("nfId"), argument("id"), argument("title")},
                  "Whether another newsflash than that of the key has this number or title.",
                  viewAccess(adminEntry::newsflash, "site", "lang"))
                .codes({code("", "Neither is taken."), code(1, "The number is taken."),
                        code(2, "The title is taken.")}),
            writes("addCategory", &newsflash::addCategory, {argument("nfId"), argument("catId")},
                   "Lets a category of the message board feed a newsflash, from the category's next "
                   "publishing on.",
                   editAccess(adminEntry::newsflash)),
            writes("publish", &newsflash::publish, {argument("site"), argument("lang")},
                   "Brings the newsflashes of a website to visitors, without those marked for deletion.",
                   editAccess(adminEntry::newsflash, "site", "lang")),
        },
        {
            property("nfTemplate", &newsflash::nfTemplate, "The template of the newsflash last drawn."),
            property("nfHeader", &newsflash::nfHeader, "Its part of the page's head."),
            property("nfContent", &newsflash::nfContent, "Its content."),
        });
}

}  // namespace torvex::operations
