// cManager: an object and the login that it works for.

#include "authoring/cManager.h"

#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"

namespace torvex {

cManager::cManager(HostContext& host, PageModules* modules) : host_(host), modules_(modules) {
    loadSessionState();
}

void cManager::loadSessionState() {
    author_.loginId = static_cast<int>(host_.session.number(sessionKey::authorLoginId));
    author_.username = host_.session.text(sessionKey::authorName);
    author_.password = host_.session.text(sessionKey::authorPassword);
    author_.fullname = host_.session.text(sessionKey::authorFullname);
}

Actor cManager::actor() const {
    return {author_.loginId, author_.username, author_.fullname, host_.session.id(), host_.clock.now()};
}

}  // namespace torvex
