#pragma once

#include "platform/db/Connection.h"

namespace torvex::db {

/// What an engine's adapter gives to the pool.
class PooledConnection : public Connection {
  public:
    /// Called when a lease ends: rolls back what was left open. False when the connection can't be used
    /// again.
    virtual bool makeReusable() noexcept = 0;
};

}  // namespace torvex::db
