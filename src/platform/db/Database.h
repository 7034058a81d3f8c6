#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/db/Connection.h"
#include "platform/db/TableStates.h"

namespace torvex::db {

/// A connection taken from a pool; goes back at the end of its life, rolled back if something was left open.
using Lease = std::shared_ptr<Connection>;

/// What a connection is for. On the embedded engine a `Transaction` connection doesn't hold the audit trail,
/// so that no audit line can wait for, or roll back with, a change; and a `Hits` connection holds nothing but
/// the hits, so that no visitor waits for an author.
enum class Purpose { Everything, Transaction, Hits };

/// Opens and pools connections by their text. Safe to share between threads.
///
/// Texts: "sqlite:FOLDER" (the embedded store, a folder of three files) and "postgresql://..." (or libpq's
/// "host=... dbname=..." form). `user` and `password` complete a PostgreSQL text that names none.
class Database {
  public:
    virtual ~Database() = default;

    /// Throws `DatabaseError` for a text that names no engine, and when the database can't be reached.
    virtual Lease open(std::string_view text, std::string_view user = {}, std::string_view password = {},
                       Purpose purpose = Purpose::Everything) = 0;

    /// Looks at the content of the database that `open` opens by the same text. Null where that can't be done. `asks`
    /// wants one that must be asked where the engine tells of changes in its own time.
    virtual std::unique_ptr<ContentWatch> watch(std::string_view /*text*/, std::string_view /*user*/ = {},
                                                std::string_view /*password*/ = {}, bool /*asks*/ = false) {
        return nullptr;
    }
    /// The state that the content of that database had at some moment before this one, where a `watch` knows it from any
    /// thread; null elsewhere: there each connection knows the state that it reads.
    virtual SharedStates watched(std::string_view /*text*/, std::string_view /*user*/ = {},
                                 std::string_view /*password*/ = {}) {
        return nullptr;
    }
};

/// The pools of a running program.
std::unique_ptr<Database> makeDatabase();

}  // namespace torvex::db
