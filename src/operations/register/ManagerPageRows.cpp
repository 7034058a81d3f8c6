#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerPageRows() {
    return {
        reads("getPage", &cManager::getPage, {argument("pageIdent"), argument("mode", "L")},
              "Reads a page into the page record; the property pgExists says whether it is there.",
              designOf("pageIdent", "mode")),
        reads("getPageParameters", &cManager::getPageParameters, {argument("pageIdent")},
              "Type, edit, lock, delete and approve status of a page, and whether another login holds it.",
              designOf("pageIdent")),
        reads("getPageGroups", &cManager::getPageGroups, {argument("pageIdent"), argument("mode", "L")},
              "All groups of visitors, marked where the page has them.", designOf("pageIdent", "mode"))
            .lists({{"groupId", Number}, {"name", Text}, {"mark", Number}}),
        reads("getLoginPage", &cManager::getLoginPage, {argument("pageIdent"), argument("mode", "L")},
              "The login page that guards a page.", designOf("pageIdent", "mode"))
            .codes({code(-1, "No login page guards it.")}),
        reads("getNumberOfViews", &cManager::getNumberOfViews, {argument("pageIdent")},
              "The hits of a page, or of a folder with all under it.", anyLogin()),
        reads("getVocab", &cManager::getVocab, {argument("langId"), argument("labelId"), argument("flag", 1)},
              "The text of a label of the interface; with flag 1 in English where there is none.",
              anyLogin()),
        reads("urlencode", &cManager::urlencode, {argument("queryString")},
              "Encodes the values of a query string and leaves \"=\" and \"&\".", visitor()),
    };
}

}  // namespace torvex::operations
