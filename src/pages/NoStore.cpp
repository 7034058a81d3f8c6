#include "pages/NoStore.h"

#include "platform/Keys.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex {

void forbidStoring(Response& response) {
    constexpr std::string_view noStore = "no-store";
    std::string& control = response.cacheControl;
    if (text::contains(control, noStore)) return;
    if (!control.empty()) control += ", ";
    control += noStore;
}

bool holdsLogin(const Session& session) {
    return !session.text(sessionKey::visitorName).empty() || !session.text(sessionKey::authorName).empty();
}

}  // namespace torvex
