#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/db/Connection.h"

namespace torvex {

class Clock;
namespace db {
class Database;
}

/// One numbered change of the schema: SQL that both engines understand but for the words in braces, such as
/// "{text}", which stand for a type of each engine. A step that has been released never changes.
struct SchemaStep {
    std::string store;  ///< "content", "hits" or "audit"
    int number = 0;     ///< counts from 1 in each store
    std::string name;
    std::string sql;
};

/// What the steps need around them on PostgreSQL alone.
struct PostgresExtras {
    std::string prepare;  ///< before the first step
    std::string finish;   ///< after the last one, each time; can be run again
};

/// What a migration has done.
struct Migration {
    std::vector<std::string> applied;  ///< the names of the steps, in order
    std::string backup;                ///< the folder of the copy made before; "" when none was made
};

/// The tables of a database, and how an older database comes to them. Each store notes its steps in a table
/// of its own. All failures throw `Error` with a text for operators.
class Schema {
  public:
    Schema(std::vector<SchemaStep> steps, PostgresExtras extras);

    /// Makes the embedded store, or the tables in an empty PostgreSQL database; no rows. Refused when there
    /// is a Torvex database already.
    void create(db::Database& database, const Clock& clock, std::string_view text, std::string_view user = {},
                std::string_view password = {}) const;

    /// Applies the steps that are missing, each in a transaction. The embedded store is copied first, to
    /// "backup-YYYYMMDD-HHMMSS" in its folder; on PostgreSQL the operator makes the dump. When a step fails,
    /// those before it stay.
    Migration migrate(db::Database& database, const Clock& clock, std::string_view text,
                      std::string_view user = {}, std::string_view password = {}) const;

    /// For opening: throws when steps are missing, when the database has steps that this program doesn't
    /// know, and when it has no tables at all. The connection must hold all stores.
    void check(db::Connection& connection) const;

    /// A step's SQL with the words of an engine.
    static std::string wordsOf(db::Engine engine, std::string_view sql);

  private:
    std::vector<SchemaStep> missing(db::Connection& connection) const;
    void refuseNewer(db::Connection& connection) const;
    int newestKnown(std::string_view store) const;
    void apply(db::Connection& connection, const Clock& clock, const SchemaStep& step) const;
    void applyAll(db::Connection& connection, const Clock& clock, const std::vector<SchemaStep>& steps) const;
    void createPostgres(db::Connection& connection, const Clock& clock) const;

    std::vector<SchemaStep> steps_;
    PostgresExtras extras_;
};

}  // namespace torvex
