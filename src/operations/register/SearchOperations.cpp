#include "accounts/AdminEntries.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"
#include "search/Search.h"

namespace torvex::operations {

ClassEntry searchOperations() {
    return describe<Search>(
        "search", "The search of a site.",
        {
            writes("loadResults", &Search::loadResults,
                   {argument("pageIdent"), argument("mode"), argument("html")},
                   "Fills a results template with what the request searches for on a search page. With a "
                   "mode, as an author's preview: rights aren't tested then. What is wrong stands in "
                   "search_error.",
                   viewAccessAt(adminEntry::search, "pageIdent")),
            enters("saveSearchFormParameters", &Search::saveSearchFormParameters, {},
                   "Keeps the fields of the search form for the request that this one leads to.", visitor()),
            reads("getAllProperties", &Search::getAllProperties, {argument("site")},
                  "What can be searched for in a site, divided by commas.",
                  viewAccess(adminEntry::search, "site")),
            writes("CleanUpDB", &Search::CleanUpDB, {},
                   "Removes the settings and the logged words of search pages that aren't live, and from the "
                   "lists of scopes the pages and folders that are gone.",
                   editAccess(adminEntry::catalogue)),
            writes("initializePages", &Search::initializePages, {argument("pageIdent", "")},
                   "Renews the copies of all pages, or of one, that the full text catalogue reads.",
                   editAccess(adminEntry::catalogue))
                .codes(
                    {code(0, "They are renewed."), refusal(-99,
                                                           "The page's node is too short, or it failed; "
                                                           "copies may be missing until it is repeated.")}),
        },
        {
            property("search_error", &Search::search_error,
                     "Why the last operation has no result; empty when nothing was wrong."),
        });
}

}  // namespace torvex::operations
