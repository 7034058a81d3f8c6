#include "accounts/Actor.h"

#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex {

bool isAdministrator(std::string_view username) {
    // Not by folding: "ſa" is another name for one of the databases, and would be the administrator here.
    return text::lower(username) == "sa";
}

Actor actorOf(const HostContext& host) {
    const Session& session = host.session;
    return {static_cast<int>(session.number(sessionKey::authorLoginId)), session.text(sessionKey::authorName),
            session.text(sessionKey::authorFullname), session.id(), host.clock.now()};
}

}  // namespace torvex
