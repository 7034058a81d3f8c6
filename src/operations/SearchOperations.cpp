#include "modules/Search.h"
#include "operations/Binding.h"
#include "operations/Classes.h"
#include "records/AdminEntries.h"

namespace torvex::operations {

ClassEntry searchOperations() {
    return describe<Search>(
        "search", "The search of a site.",
        {
            operation("initializePages", &Search::initializePages, {argument("pageIdent", "")},
                      "Renews the copies of all pages, or of one, that the full text catalogue reads: 0, or "
                      "-99.",
                      editAccess(adminEntry::catalogue)),
        });
}

}  // namespace torvex::operations
