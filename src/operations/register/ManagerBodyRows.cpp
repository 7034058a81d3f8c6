#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerBodyRows() {
    return {
        writes("saveBody", &cManager::saveBody,
               {argument("pageIdent"), argument("bodyId"), argument("bodyContent")},
               "Saves the text of a body.", editRight("edit", "pageIdent"))
            .codes({code(0, "It is saved."), notLoggedIn(),
                    refusal(-1, "Another login has the page.", label::heldTextKept),
                    refusal(-2, "The page is approved.", label::approvedTextKept),
                    refusal(-3, "There is no such page.", label::goneTextKept), failed()}),
        writes("saveBodySetup", &cManager::saveBodySetup,
               {argument("pageIdent"), argument("bodyId"), argument("bodyType"), argument("feedId")},
               "Makes a body a stored text (1), an HTML feed (2) or an XML feed (3).",
               editRight("edit", "pageIdent"))
            .codes({code(0, "It is saved."), notLoggedIn(),
                    refusal(-1, "Another login has the page.", label::held),
                    refusal(-2, "There is no such page.", label::pageGone), failed()}),
        writes("clearBody", &cManager::clearBody, {argument("pageIdent"), argument("bodyId")},
               "Takes a body away.", editRight("edit", "pageIdent"))
            .codes({code(0, "It is gone."), notLoggedIn(),
                    refusal(-1, "There is no such page.", label::pageGone),
                    refusal(-2, "Another login has the page.", label::held), failed()}),
        writes("pasteBody", &cManager::pasteBody,
               {argument("pageIdentFrom"), argument("pageIdentTo"), argument("bodyIdFrom"),
                argument("bodyIdTo"), argument("modeFrom", "D")},
               "Copies a body from a page's design or live data to another page.",
               alsoReadingDesign(editRight("edit", "pageIdentTo"), "pageIdentFrom", "modeFrom"))
            .codes({code(0, "It is copied."), notLoggedIn(),
                    refusal(-1, "Another login has the page that it would be copied to.", label::held),
                    refusal(-2, "There is no such page to copy from.", label::sourceGone),
                    refusal(-3, "There is no such page to copy to.", label::pageGone), failed()}),
        reads("getBody", &cManager::getBody,
              {argument("pageIdent"), argument("bodyId"), argument("bodyType", 0), argument("feedId", 0),
               argument("mode", "D")},
              "One body; its kind and feed are looked up when no kind is given.",
              designOf("pageIdent", "mode")),
        reads("getBodyHTML", &cManager::getBodyHTML, {argument("feedId")},
              "What an HTML feed gives, or why it gives nothing.", anyLogin()),
        reads("getBodyXML", &cManager::getBodyXML, {argument("feedId")},
              "What an XML feed gives, or why it gives nothing.", anyLogin()),
        reads("disableLinks", &cManager::disableLinks, {argument("str"), argument("flag", true)},
              "A text with its links turned off; the flag chooses double quotes.", anyLogin()),
        reads("buildLinks", &cManager::buildLinks,
              {argument("html"), argument("site"), argument("lang"), argument("mode", "L")},
              "A page with its link notations as links of the authoring interface, bad ones marked.",
              designIn("site", "lang", "mode")),
        reads("fillBodies", &cManager::fillBodies,
              {argument("pageIdent"), argument("mode"), argument("html"), argument("editFlag", false)},
              "A text with the bodies of a page in their places, framed for editing if asked for.",
              designOf("pageIdent", "mode")),
        reads("torvex_preparePage", &cManager::torvex_preparePage,
              {argument("mode", "L"), argument("applicationSubTitle", "")},
              "The finished page of the record; the subtitle \"#edit#\" builds it for editing.",
              designOfRecord("mode")),
    };
}

}  // namespace torvex::operations
