#include "operations/register/DeskRows.h"

namespace torvex::operations {

namespace {

/// Of `getWork` and `getRecent`.
std::vector<Column> pageColumns() {
    return {{"pageId", Number},   {"siteId", Text},    {"lang", Text},     {"nodeId", Text},
            {"title", Text},      {"liveTitle", Text}, {"pageType", Text}, {"state", Text},
            {"editor", Text},     {"since", Date},     {"holder", Text},   {"holderSince", Date},
            {"onlineFrom", Text}, {"onlineTo", Text}};
}

}  // namespace

std::vector<Row<desk>> deskWorkRows() {
    return {
        reads(
            "getWork", &desk::getWork,
            {argument("site"), argument("lang"), argument("kind"), argument("from", 0)},
            "Pages that wait, where the caller may do it: \"mine\", \"approve\", \"publish\", \"marked\" or "
            "\"dates\"; 500 lines at most. An empty site or language means all.",
            anyLogin())
            .lists(pageColumns()),
        reads("getRecent", &desk::getRecent, {argument("site"), argument("lang"), argument("number", 20)},
              "The pages changed last, the latest first, where the caller may do something; 200 at most.",
              anyLogin())
            .lists(pageColumns()),
        reads(
            "getBranch", &desk::getBranch, {argument("pageIdent")},
            "A page and all below it: whether each goes live, or goes, when the branch is published, and why "
            "not: \"held\", \"notApproved\", \"parentNotLive\", \"unchanged\" or \"noRight\".",
            editRight("edit", "pageIdent"))
            .lists({{"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"state", Text},
                    {"holder", Text},
                    {"goes", Boolean},
                    {"reason", Text}}),
        reads("getBodies", &desk::getBodies, {argument("pageIdent")},
              "The bodies of a page by number: what kind each is, its feed, its length, and whether visitors "
              "see another one.",
              editRight("edit", "pageIdent"))
            .lists({{"bodyId", Number},
                    {"kind", Text},
                    {"feedId", Number},
                    {"feedTitle", Text},
                    {"characters", Number},
                    {"differs", Boolean}}),
        reads("compare", &desk::compare, {argument("pageIdent")},
              "Where a page's design differs from what visitors see.", editRight("edit", "pageIdent"))
            .lists({{"part", Text}, {"bodyId", Number}, {"design", Text}, {"live", Text}, {"name", Text}}),
        reads("getHistory", &desk::getHistory, {argument("pageIdent"), argument("from", 0)},
              "What was done to a page, the latest first; 500 lines at most.", editRight("edit", "pageIdent"))
            .lists(
                {{"moment", Date}, {"loginId", Number}, {"name", Text}, {"action", Text}, {"detail", Text}}),
        reads("getHits", &desk::getHits,
              {argument("scope"), argument("from"), argument("to"), argument("by")},
              "Views and visitors by \"day\", \"month\" or \"year\": of a page, given by its number, or of a "
              "branch, given by its node. Days are yyyymmdd.",
              viewAccessAt(adminEntry::statistics, "scope"))
            .lists({{"period", Text}, {"views", Number}, {"visitors", Number}}),
    };
}

}  // namespace torvex::operations
