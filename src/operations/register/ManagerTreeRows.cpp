#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Operation> managerTreeRows() {
    return {
        operation("getNodeId", &cManager::getNodeId, {argument("pageId")},
                  "The node of a page number; empty text when there is no such page.", anyLogin()),
        operation("getPageId", &cManager::getPageId, {argument("nodeId")},
                  "The page number of a node; 0 when there is no such page.", anyLogin()),
        operation("isPage", &cManager::isPage, {argument("pageIdent"), argument("mode", "L")},
                  "Whether the design (\"D\") or the live tables hold a page.", anyLogin()),
        operation(
            "isPageTitle", &cManager::isPageTitle,
            {argument("parentIdent"), argument("title"), argument("mode", ""), argument("pageIdent", "")},
            "Whether a child of the parent, other than the page given, has this title.", anyLogin()),
        operation("getPageTitle", &cManager::getPageTitle, {argument("pageIdent"), argument("mode", "L")},
                  "The title of a page, or a bracketed word of the interface when it has none.", anyLogin()),
        operation("getPageType", &cManager::getPageType, {argument("pageIdent"), argument("mode", "L")},
                  "The type of a page: \"P\" content page, \"A\" application, \"F\" folder.", anyLogin()),
        operation("getPageCount", &cManager::getPageCount,
                  {argument("mode", "L"), argument("folders", false)},
                  "The number of pages, with or without folders.", anyLogin()),
        operation("countPages", &cManager::countPages, {argument("parentIdent"), argument("levels", 1)},
                  "The number of design pages under a node, this many levels down.", anyLogin()),
        operation("getNewChild", &cManager::getNewChild, {argument("parentIdent")},
                  "The node that a new child of a page would get; empty text when all numbers are taken.",
                  anyLogin()),
        operation("getNewOrderId", &cManager::getNewOrderId, {argument("pageIdent")},
                  "The sort position for a page that joins the siblings of a node; -1 when there is none.",
                  anyLogin()),
        operation("getBreadcrumb", &cManager::getBreadcrumb, {argument("pageIdent"), argument("mode", "L")},
                  "The titles from the root to a page.", anyLogin()),
        operation("getPageList", &cManager::getPageList,
                  {argument("site"), argument("lang"), argument("mode", "L"), argument("parentIdent", ""),
                   argument("docType", ""), argument("system", true)},
                  "The pages of a site and language, or of those under a parent, by node.", anyLogin())
            .lists("pageId, nodeId, title, type, a flag"),
    };
}

}  // namespace torvex::operations
