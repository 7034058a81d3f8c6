#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerInterfaceRows() {
    return {
        reads("getInterfaceLanguages", &cManager::getInterfaceLanguages, {},
              "The languages of the interface, by name.", anyLogin())
            .lists(
                {{"lang_ID", Text}, {"lang_name", Text}, {"lang_enabled", Number}, {"lang_default", Number}}),
        reads("getInterfaceName", &cManager::getInterfaceName, {argument("langId")},
              "The name of a language of the interface.", anyLogin()),
        reads("getInterfaceId", &cManager::getInterfaceId, {argument("languageName")},
              "The code of a language of the interface by its name.", anyLogin()),
        writes("createInterface", &cManager::createInterface, {argument("langId"), argument("advId", 0)},
               "Makes the templates of a language from the master templates.",
               editAccess(adminEntry::interfaceLanguages))
            .codes({code("", "They are made."), failed()}),
        writes("deleteInterface", &cManager::deleteInterface, {argument("langId"), argument("advId", 0)},
               "Removes a language of the interface with its words and templates.",
               editAccess(adminEntry::interfaceLanguages))
            .codes({code("", "It is removed."), notLoggedIn(),
                    refusal(-1, "There is no such language.", label::gone),
                    refusal(-2, "It is the language of the session.", label::youWorkInIt),
                    refusal(-3, "It is the default language.", label::isDefault),
                    refusal(-4, "Other logins are online.", label::othersLoggedIn), failed()}),
        writes("setInterfaceOnOff", &cManager::setInterfaceOnOff,
               {argument("langId"), argument("state"), argument("advId", 0)},
               "Switches a language of the interface on (1) or off, and gives its state. The default "
               "language stays on.",
               editAccess(adminEntry::interfaceLanguages))
            .codes({code(1, "It is on."), code(0, "It is off."),
                    refusal(-1, "It has no templates yet; it is off.", label::generateFirst)}),
        writes("saveVocab", &cManager::saveVocab,
               {argument("langId"), argument("labelId"), argument("text"), argument("advId", 0)},
               "Saves a word of the interface in a language; templates have it when they are made anew.",
               editAccess(adminEntry::vocabulary))
            .codes({code("", "It is saved, or there is no such language."), failed()}),
        writes(
            "updateParam", &cManager::updateParam,
            {argument("loginId"), argument("parameter"), argument("value"), argument("dataType", "C")},
            "Sets a parameter of a login and of the session, or with 0 of the installation: \"N\" a number "
            "of 16 bits, \"C\" a text, \"B\" whether it is \"1\".",
            oneselfOrEditAccess("loginId", adminEntry::settings)),
    };
}

}  // namespace torvex::operations
