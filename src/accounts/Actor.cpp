#include "accounts/Actor.h"

#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex {

bool isAdministrator(std::string_view username) {
    return text::equals(username, "sa");
}

Actor actorOf(const HostContext& host) {
    const Session& session = host.session;
    return {static_cast<int>(session.number("torvex_loginId")), session.text("torvex_username"),
            session.text("torvex_fullname"), session.id(), host.clock.now()};
}

}  // namespace torvex
