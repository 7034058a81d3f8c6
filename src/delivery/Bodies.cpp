// cServer: the bodies of a page.

#include "delivery/Feeds.h"
#include "delivery/PageBodies.h"
#include "delivery/cServer.h"

namespace torvex {

std::string cServer::fillBodies(const std::string& pageIdent, const std::string& html) {
    return PageBodies(host_, connection(), Twin::Live, xmlFeed).fill(pageIdent, html);
}

std::string cServer::getBody(const std::string& pageIdent, int bodyId, int bodyType, int feedId) {
    return PageBodies(host_, connection(), Twin::Live, xmlFeed).body(pageIdent, bodyId, bodyType, feedId);
}

}  // namespace torvex
