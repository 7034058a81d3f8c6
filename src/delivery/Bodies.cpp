// cServer: the bodies of a page.

#include "delivery/Feeds.h"
#include "delivery/PageBodies.h"
#include "delivery/cServer.h"
#include "platform/Errors.h"

namespace torvex {

std::string cServer::fillBodies(const std::string& pageIdent, const std::string& html) try {
    PageBodies bodies(host_, connection(), Twin::Live, xmlFeed);
    return bodies.fill(pageIdFrom(connection(), pageIdent), html);
} catch (...) {
    raiseFrom("fillBodies !");
}

std::string cServer::getBody(const std::string& pageIdent, int bodyId, int bodyType, int feedId) try {
    PageBodies bodies(host_, connection(), Twin::Live, xmlFeed);
    return bodies.body(pageIdFrom(connection(), pageIdent), bodyId, bodyType, feedId);
} catch (...) {
    raiseFrom("getBody !");
}

}  // namespace torvex
