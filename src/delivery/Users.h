#pragma once

#include <string>

#include "delivery/Access.h"

namespace torvex {

// The visitors who have a name.

/// With the password as the visitor's row holds it, when it is right and kept strongly; else as given.
Visitor asStored(const HostContext& host, db::Connection& connection, const Visitor& user);

/// 0 when there is no such user.
double userIdOf(db::Connection& connection, const Visitor& user);
/// "" when there is no such user.
std::string passwordOf(db::Connection& connection, const std::string& username);

/// The page that the user's lowest group with one enters or leaves by; -1 for none.
PageId entryPageOf(HostContext& host, db::Connection& connection, const Visitor& user);
PageId exitPageOf(HostContext& host, db::Connection& connection, const Visitor& user);

}  // namespace torvex
