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
            {argument("site"), argument("lang"), argument("kind"), argument("from", 0.0)},
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
            designOf("pageIdent"))
            .lists({{"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"state", Text},
                    {"holder", Text},
                    {"goes", Boolean},
                    {"reason", Text}}),
    };
}

std::vector<Row<desk>> deskFindRows() {
    return {
        reads("find", &desk::find,
              {argument("words"), argument("kinds", ""), argument("site", ""), argument("lang", ""),
               argument("filters", ""), argument("from", 0.0)},
              "Pages where the caller may do something, images and documents with words that begin with "
              "those given; 30 "
              "of each kind. Filters for pages: \"state:changed\", \"type:P\", \"below:aa.en.01\".",
              anyLogin())
            .lists({{"kind", Text},
                    {"pageId", Number},
                    {"siteId", Text},
                    {"lang", Text},
                    {"nodeId", Text},
                    {"title", Text},
                    {"path", Text},
                    {"state", Text},
                    {"isLive", Boolean},
                    {"excerpt", Text}}),
        reads("getDeadLinks", &desk::getDeadLinks,
              {argument("site"), argument("lang"), argument("from", 0.0)},
              "Links and files in the designs of a tree that lead nowhere: \"gone\", \"notLive\", "
              "\"offline\", \"noFile\" or \"unchosen\"; 500 at most. The title of a page that is gone is its "
              "last.",
              designIn("site", "lang"))
            .lists({{"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"bodyId", Number},
                    {"target", Text},
                    {"reason", Text},
                    {"targetTitle", Text}}),
        reads("getUses", &desk::getUses, {argument("kind"), argument("id"), argument("from", 0.0)},
              "The pages that use something, as far as the caller may read them: a \"page\", an \"image\" "
              "or \"document\" (SITE/PATH, or a folder's SITE/PATH/), a \"template\", \"baseTemplate\", "
              "\"stylesheet\", \"application\", \"htmlFeed\", \"xmlFeed\" or \"group\"; 500 at most.",
              anyLogin())
            .lists({{"pageId", Number},
                    {"siteId", Text},
                    {"lang", Text},
                    {"nodeId", Text},
                    {"title", Text},
                    {"bodyId", Number},
                    {"twin", Text}}),
        reads("getImpact", &desk::getImpact, {argument("pageIdent")},
              "What the removal of a page and all below it takes along and breaks: \"page\", \"held\", "
              "\"notApproved\", \"link\", \"login\", \"entry\", \"exit\" and \"menu\".",
              designOf("pageIdent"))
            .lists({{"kind", Text},
                    {"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"bodyId", Number},
                    {"detail", Text}}),
    };
}

std::vector<Row<desk>> deskPageRows() {
    return {
        reads("getBodies", &desk::getBodies, {argument("pageIdent")},
              "The bodies of a page by number: what kind each is, its feed, its length, and whether visitors "
              "see another one.",
              designOf("pageIdent"))
            .lists({{"bodyId", Number},
                    {"kind", Text},
                    {"feedId", Number},
                    {"feedTitle", Text},
                    {"characters", Number},
                    {"differs", Boolean}}),
        reads("compare", &desk::compare, {argument("pageIdent")},
              "Where a page's design differs from what visitors see.", designOf("pageIdent"))
            .lists({{"part", Text}, {"bodyId", Number}, {"design", Text}, {"live", Text}, {"name", Text}}),
        reads("getHistory", &desk::getHistory, {argument("pageIdent"), argument("from", 0.0)},
              "What was done to a page, the latest first; 500 lines at most.", designOf("pageIdent"))
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
