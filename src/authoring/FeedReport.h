#pragma once

#include <string>

namespace torvex {

struct HostContext;
namespace db {
class Connection;
}

/// A feed of XML as authors see it: its output, or in red why there is none. Each document gets three tries.
/// Never throws; an unknown feed gives "".
std::string reportedXmlFeed(HostContext& host, db::Connection& connection, int feedId);

}  // namespace torvex
