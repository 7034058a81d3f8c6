#pragma once

#include <memory>
#include <string>

#include "platform/db/Database.h"
#include "platform/db/PooledConnection.h"

/// The embedded engine. A store is a folder of three files, each with a log beside it (WAL): `content.db`,
/// `hits.db` and `audit.db`, so that a visitor's hit never waits for an author, and an audit line neither
/// waits for nor rolls back with a change. `begin` locks the content alone for writing; another file is
/// locked by the first statement of the transaction that touches it.
namespace torvex::db {

/// Opens a store. Throws `DatabaseError` when the folder or one of its files isn't there or can't be read;
/// nothing is ever created. On a connection for `Purpose::Transaction` the trail doesn't exist.
std::unique_ptr<PooledConnection> openSqliteStore(const std::string& folder, Purpose purpose);

/// Opens one file of a store by itself, to change its schema.
std::unique_ptr<Connection> openSqliteFile(const std::string& folder, const std::string& store);

/// Settings of the whole process; must come before anything else of SQLite. Called again it does nothing.
void setUpSqlite();

}  // namespace torvex::db
