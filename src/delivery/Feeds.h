#pragma once

#include <string>

namespace torvex {

struct HostContext;
namespace db {
class Connection;
}

/// Content that lies elsewhere and is fetched at the moment a page is served. `feedId` is the feed's number
/// in the register of its kind; an unknown one gives "". These never throw: whatever goes wrong becomes a
/// text that shows in the page, so that a dead feed costs one line and not the page.
std::string htmlFeed(HostContext& host, db::Connection& connection, int feedId);
std::string xmlFeed(HostContext& host, db::Connection& connection, int feedId);

}  // namespace torvex
