// cManager: words of the interface and the names of logins.

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr double unknownLoginLabel = 2560;

constexpr std::string_view selectName = "select name from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view selectLoginId = "select loginId from TORVEX_LOGINS where username = ?";

}  // namespace

std::string cManager::getVocab(const std::string& langId, double labelId, int flag) try {
    std::string word = vocabularyText(connection(), langId, labelId);
    return word.empty() && flag == 1 ? vocabularyText(connection(), "en", labelId) : word;
} catch (...) {
    raiseFrom("getVocab !");
}

std::string cManager::bracketedWord(double label) {
    return "[" + getVocab(host_.session.text("torvex_current_interface"), label) + "]";
}

std::string cManager::getLoginName(int loginId) try {
    auto rows = connection().query(selectName, {loginId});
    const std::string name(rows.next() ? text::trim(rows.text("name")) : std::string_view());
    return name.empty() ? bracketedWord(unknownLoginLabel) : name;
} catch (...) {
    raiseFrom("getLoginName !");
}

int cManager::getLoginId(const std::string& username) try {
    const std::string_view wanted = text::trim(username);
    if (wanted.empty()) return author_.loginId;
    auto rows = connection().query(selectLoginId, {wanted});
    return rows.next() ? static_cast<int>(rows.number("loginId")) : -1;
} catch (...) {
    raiseFrom("getLoginId !");
}

}  // namespace torvex
