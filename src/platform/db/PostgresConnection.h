#pragma once

#include <libpq-fe.h>
#include <memory>
#include <string_view>

#include "platform/db/PooledConnection.h"

namespace torvex::db {

/// Opens a connection to PostgreSQL. What the text itself names comes before `user` and `password`. Throws
/// `DatabaseError`, never with the text or a password in it.
std::unique_ptr<PooledConnection> openPostgres(std::string_view text, std::string_view user,
                                               std::string_view password);

struct ClosePostgres {
    void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
};
using PostgresHandle = std::unique_ptr<PGconn, ClosePostgres>;

/// The bare connection, for who listens on it. Throws as `openPostgres` does.
PostgresHandle connectPostgres(std::string_view text, std::string_view user, std::string_view password);

}  // namespace torvex::db
