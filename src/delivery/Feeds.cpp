#include "delivery/Feeds.h"

namespace torvex {

std::string htmlFeed(HostContext& /*host*/, db::Connection& /*connection*/, int /*feedId*/) {
    return {};
}

std::string xmlFeed(HostContext& /*host*/, db::Connection& /*connection*/, int /*feedId*/) {
    return {};
}

}  // namespace torvex
