#pragma once

#include <functional>
#include <string_view>

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// Runs a change in one transaction, on a connection of its own, and commits it when it gives no code. A
/// code, and anything thrown, takes all of it back; what was thrown gives the code `status::failed`, and
/// operators are told, by the names of the operation and of the page.
std::string_view changeAtomically(HostContext& host, std::string_view operation, std::string_view ident,
                                  const std::function<std::string_view(db::Connection&)>& change);

}  // namespace torvex
