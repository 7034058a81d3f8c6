// cManager: an object and the login that it works for.

#include "authoring/cManager.h"

#include "platform/HostContext.h"
#include "platform/Session.h"

namespace torvex {

cManager::cManager(HostContext& host, PageModules* modules) : host_(host), modules_(modules) {
    loadSessionState();
}

void cManager::loadSessionState() {
    author_.loginId = static_cast<int>(host_.session.number("torvex_loginId"));
    author_.username = host_.session.text("torvex_username");
    author_.password = host_.session.text("torvex_password");
    author_.fullname = host_.session.text("torvex_fullname");
}

Actor cManager::actor() const {
    return {author_.loginId, author_.username, author_.fullname, host_.session.id(), host_.clock.now()};
}

}  // namespace torvex
