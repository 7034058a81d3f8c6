// cManager: words of the interface and the names of logins.

#include "accounts/Logins.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/Vocabulary.h"

namespace torvex {

std::string cManager::getVocab(const std::string& langId, double labelId, int flag) try {
    std::string word = vocabularyText(connection(), langId, labelId);
    return word.empty() && flag == 1 ? vocabularyText(connection(), "en", labelId) : word;
} catch (...) {
    raiseFrom("getVocab !");
}

std::string cManager::bracketedWord(double label) {
    return "[" + getVocab(host_.session.text(sessionKey::interfaceLanguage), label) + "]";
}

std::string cManager::getLoginName(int loginId) try {
    const std::string name = fullnameOf(connection(), loginId);
    return name.empty() ? bracketedWord(label::unknownLogin) : name;
} catch (...) {
    raiseFrom("getLoginName !");
}

int cManager::getLoginId(const std::string& username) try {
    return text::trim(username).empty() ? author_.loginId : loginIdOf(connection(), username);
} catch (...) {
    raiseFrom("getLoginId !");
}

}  // namespace torvex
