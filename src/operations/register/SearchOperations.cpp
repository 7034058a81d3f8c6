#include "accounts/AdminEntries.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"
#include "search/Search.h"

namespace torvex::operations {

ClassEntry searchOperations() {
    return describe<Search>(
        "search", "The search of a site.",
        {
            writes("initializePages", &Search::initializePages, {argument("pageIdent", "")},
                   "Renews the copies of all pages, or of one, that the full text catalogue reads.",
                   editAccess(adminEntry::catalogue))
                .codes(
                    {code(0, "They are renewed."), refusal(-99,
                                                           "The page's node is too short, or it failed; "
                                                           "copies may be missing until it is repeated.")}),
        });
}

}  // namespace torvex::operations
