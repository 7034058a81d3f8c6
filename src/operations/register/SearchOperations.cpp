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
                   "Renews the copies of all pages, or of one, that the full text catalogue reads: 0, or "
                   "-99.",
                   editAccess(adminEntry::catalogue)),
        });
}

}  // namespace torvex::operations
