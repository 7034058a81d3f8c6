#pragma once

#include <string>
#include <variant>

#include "platform/db/Database.h"

namespace torvex {
struct HostContext;
}

namespace torvex::db {

/// What a class was given by `connect`: an open connection that the caller owns, or the text of one, which is
/// then opened (from the pool) by the first query and kept for the object's life. Copies hand on what was
/// given.
class ConnectionSource {
  public:
    ConnectionSource() = default;
    ConnectionSource(Connection& open) : given_(&open) {}
    ConnectionSource(std::string text) : given_(std::move(text)) {}

    /// The connection. Its first query throws `DatabaseError` when nothing was given or the text can't be
    /// opened.
    Connection& use(HostContext& host);

  private:
    std::variant<std::monostate, Connection*, std::string> given_;
    Lease opening_;
};

/// A connection of an operation's own, opened from the three values of the installation: for changes that
/// must be atomic.
Lease openOwn(HostContext& host, Purpose purpose = Purpose::Transaction);

}  // namespace torvex::db
