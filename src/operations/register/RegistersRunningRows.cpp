#include "accounts/AdminEntries.h"
#include "operations/register/RegistersRows.h"
#include "operations/register/RunningLabels.h"

namespace torvex::operations {

namespace {

std::vector<Row<registers>> interfaces() {
    return {
        writes("addInterface", &registers::addInterface,
               {argument("langId"), argument("name"), argument("advId", 0)},
               "Adds a language of the interface, without words and switched off.",
               editAccess(adminEntry::interfaceLanguages))
            .codes({code(0, "It is added."),
                    refusal(-1, "The code isn't two characters.", label::interfaceCodeBad),
                    refusal(-2, "There is a language of this code.", label::interfaceCodeTaken),
                    refusal(-3, "A name is missing.", label::interfaceNameMissing),
                    refusal(-4, "Another language has this name.", label::interfaceNameTaken), notLoggedIn(),
                    failed()}),
        reads("getWords", &registers::getWords, {argument("langId")},
              "The words of a language of the interface beside the English ones, by label.",
              viewAccess(adminEntry::vocabulary))
            .lists({{"label", Number}, {"english", Text}, {"word", Text}}),
        writes(
            "saveWords", &registers::saveWords, {argument("langId"), argument("words"), argument("advId", 0)},
            "Saves words of a language of the interface out of lines \"label,word\" and gives how many have "
            "changed; all of them or none.",
            editAccess(adminEntry::vocabulary))
            .codes({refusal(-1, "There is no such language.", label::interfaceGone),
                    refusal(-2, "A line isn't a label and a word.", label::wordsUnread),
                    refusal(-3, "There is no such label.", label::noSuchWord), notLoggedIn(), failed()}),
    };
}

std::vector<Row<registers>> servers() {
    return {
        writes("saveServer", &registers::saveServer,
               {argument("serverId"), argument("name"), argument("description"), argument("address"),
                argument("advId", 0)},
               "Changes a server, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::servers))
            .codes({refusal(-1, "The server is gone.", label::serverGone),
                    refusal(-2, "Another server has this name.", label::serverNameTaken),
                    refusal(-3, "The name is missing or can't be that of a folder.", label::serverNameBad),
                    refusal(-4, "Another login has it open.", label::openElsewhere), notLoggedIn(),
                    failed()}),
        writes("forgetMissed", &registers::forgetMissed, {argument("serverId"), argument("advId", 0)},
               "Forgets what a server has missed: it has been brought up to date.",
               editAccess(adminEntry::servers))
            .codes({code(0, "It is forgotten."), refusal(-1, "The server is gone.", label::serverGone),
                    notLoggedIn()}),
    };
}

}  // namespace

std::vector<Row<registers>> registersRunningRows() {
    return joined({interfaces(), servers()});
}

}  // namespace torvex::operations
