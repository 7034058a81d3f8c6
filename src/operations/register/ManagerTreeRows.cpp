#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerTreeRows() {
    return {
        reads("getNodeId", &cManager::getNodeId, {argument("pageId")},
              "The node of a page number; empty text when there is no such page.", anyLogin()),
        reads("getPageId", &cManager::getPageId, {argument("nodeId")}, "The page number of a node.",
              anyLogin())
            .codes({code(0, "There is no such page.")}),
        reads("isPage", &cManager::isPage, {argument("pageIdent"), argument("mode", "L")},
              "Whether the design (\"D\") or the live tables hold a page.", designOf("pageIdent", "mode")),
        reads("isPageTitle", &cManager::isPageTitle,
              {argument("parentIdent"), argument("title"), argument("mode", ""), argument("pageIdent", "")},
              "Whether a child of the parent, other than the page given, has this title.",
              designOf("parentIdent", "mode")),
        reads("getPageTitle", &cManager::getPageTitle, {argument("pageIdent"), argument("mode", "L")},
              "The title of a page, or a bracketed word of the interface when it has none.",
              designOf("pageIdent", "mode")),
        reads("getPageType", &cManager::getPageType, {argument("pageIdent"), argument("mode", "L")},
              "The type of a page: \"P\" content page, \"A\" application, \"F\" folder.",
              designOf("pageIdent", "mode")),
        reads("getPageCount", &cManager::getPageCount, {argument("mode", "L"), argument("folders", false)},
              "The number of pages, with or without folders.", anyLogin()),
        reads("countPages", &cManager::countPages, {argument("parentIdent"), argument("levels", 1)},
              "The number of design pages under a node, this many levels down.", designOf("parentIdent")),
        reads("getNewChild", &cManager::getNewChild, {argument("parentIdent")},
              "The node that a new child of a page would get; empty text when all numbers are taken.",
              designOf("parentIdent")),
        reads("getNewOrderId", &cManager::getNewOrderId, {argument("pageIdent")},
              "The sort position for a page that joins the siblings of a node.", designOf("pageIdent"))
            .codes({code(-1, "All positions are taken, or there is no such place.")}),
        reads("getBreadcrumb", &cManager::getBreadcrumb, {argument("pageIdent"), argument("mode", "L")},
              "The titles from the root to a page.", designOf("pageIdent", "mode")),
        reads("getPageList", &cManager::getPageList,
              {argument("site"), argument("lang"), argument("mode", "L"), argument("parentIdent", ""),
               argument("docType", ""), argument("system", true)},
              "The pages of a site and language, or of those under a parent, by node.",
              designIn("site", "lang", "mode", "parentIdent"))
            .lists({{"pageId", Number}, {"nodeId", Text}, {"title", Text}, {"type", Text}, {"flag", Number}}),
    };
}

}  // namespace torvex::operations
