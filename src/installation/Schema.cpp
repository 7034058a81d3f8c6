#include "installation/Schema.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <set>
#include <tuple>

#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/db/ConnectionText.h"
#include "platform/db/Database.h"
#include "platform/db/SqliteConnection.h"
#include "platform/db/SqliteStore.h"

namespace torvex {

namespace {

/// The oldest server that can replace a trigger in place.
constexpr double oldestPostgres = 140000;

bool hasVersionTable(db::Connection& connection, std::string_view store) {
    const bool sqlite = connection.engine() == db::Engine::Sqlite;
    const std::string table = db::versionTable(store);
    auto rows = connection.query(sqlite ? "select count(*) as found from pragma_table_info(?)"
                                        : "select count(to_regclass(?)) as found",
                                 {std::string_view(table)});
    return rows.next() && rows.number("found") > 0;
}

bool hasAnyVersionTable(db::Connection& connection) {
    return std::ranges::any_of(db::storeNames,
                               [&](std::string_view store) { return hasVersionTable(connection, store); });
}

std::set<int> versions(db::Connection& connection, std::string_view store) {
    if (!hasVersionTable(connection, store)) return {};
    std::set<int> found;
    auto rows = connection.query("select version from " + db::versionTable(store));
    while (rows.next()) found.insert(static_cast<int>(rows.number("version")));
    return found;
}

/// Steps begun by two programs at once run one behind the other.
void lockVersions(db::Connection& connection, std::string_view store) {
    if (connection.engine() == db::Engine::Sqlite) return;  // has the write lock of the file
    connection.executeScript("lock table " + db::versionTable(store) + " in exclusive mode");
}

void noteStep(db::Connection& connection, const Clock& clock, const SchemaStep& step) {
    connection.execute(
        "insert into " + db::versionTable(step.store) + " (version, name, applied) values (?, ?, ?)",
        {step.number, std::string_view(step.name), clock.now()});
}

/// Runs a script in a transaction. Its failure is told with the part it belongs to.
void runScript(db::Connection& connection, const std::string& script, std::string_view part) {
    try {
        db::Transaction transaction(connection);
        connection.executeScript(script);
        transaction.commit();
    } catch (const db::DatabaseError& error) {
        throw Error(fmt::format("the schema's {} failed and changed nothing: {}", part, error.what()));
    }
}

void refuseUnfitServer(db::Connection& connection) {
    auto version = connection.query("select current_setting('server_version_num') as version");
    if (version.next() && version.number("version") < oldestPostgres) {
        throw Error("this PostgreSQL server is too old: version 14 or newer is needed");
    }
    auto lowered =
        connection.query("select lower(?) as lowered, current_setting('server_encoding') as encoding",
                         {std::string_view("\xC3\x89")});
    if (lowered.next() && lowered.text("encoding") == "UTF8" && lowered.text("lowered") == "\xC3\xA9") return;
    throw Error(
        "this PostgreSQL database doesn't know letters beyond ASCII: make it anew with \"create database "
        "NAME "
        "template template0 encoding 'UTF8' lc_collate 'C.UTF-8' lc_ctype 'C.UTF-8'\"");
}

std::string backUp(const std::string& folder, const DateTime& now) {
    const std::string stem =
        fmt::format("{}/backup-{}-{:02}{:02}{:02}", folder, date8(now), now.hour, now.minute, now.second);
    std::string target = stem;
    for (int copy = 2; std::filesystem::exists(target); ++copy) target = fmt::format("{}-{}", stem, copy);
    db::backUpSqliteStore(folder, target);
    return target;
}

std::vector<std::string> namesOf(const std::vector<SchemaStep>& steps) {
    std::vector<std::string> names;
    for (const SchemaStep& step : steps) names.push_back(step.name);
    return names;
}

}  // namespace

Schema::Schema(std::vector<SchemaStep> steps, PostgresExtras extras)
    : steps_(std::move(steps)), extras_(std::move(extras)) {
    for (const SchemaStep& step : steps_) {
        if (std::ranges::find(db::storeNames, step.store) == db::storeNames.end()) {
            throw Error(fmt::format("the schema's step {} is of no store: \"{}\"", step.name, step.store));
        }
    }
    std::ranges::sort(steps_, {}, [](const SchemaStep& step) { return std::tie(step.store, step.number); });
}

int Schema::newestKnown(std::string_view store) const {
    int newest = 0;
    for (const SchemaStep& step : steps_) {
        if (step.store == store) newest = std::max(newest, step.number);
    }
    return newest;
}

std::vector<SchemaStep> Schema::missing(db::Connection& connection) const {
    std::vector<SchemaStep> found;
    for (const std::string_view store : db::storeNames) {
        const std::set<int> applied = versions(connection, store);
        std::ranges::copy_if(steps_, std::back_inserter(found), [&](const SchemaStep& step) {
            return step.store == store && !applied.contains(step.number);
        });
    }
    return found;
}

void Schema::refuseNewer(db::Connection& connection) const {
    for (const std::string_view store : db::storeNames) {
        const std::set<int> applied = versions(connection, store);
        const int known = newestKnown(store);
        if (applied.empty() || *applied.rbegin() <= known) continue;
        throw Error(fmt::format(
            "the database is newer than this program: its part \"{}\" is at step {}, and this program knows "
            "{}. Use "
            "the version of the program that migrated it, or restore the copy made before that migration",
            store, *applied.rbegin(), known));
    }
}

void Schema::check(db::Connection& connection) const {
    refuseNewer(connection);
    const std::vector<SchemaStep> due = missing(connection);
    if (due.empty()) return;
    if (!hasAnyVersionTable(connection)) {
        throw Error("the database has no tables of Torvex yet: make them with \"torvex init\"");
    }
    const bool sqlite = connection.engine() == db::Engine::Sqlite;
    throw Error(
        fmt::format("the database is older than this program and lacks {} of its steps, first \"{}\": {}",
                    due.size(), due.front().name,
                    sqlite ? "run \"torvex migrate\", which makes a copy first"
                           : "make a dump of it with pg_dump, then run \"torvex migrate\""));
}

void Schema::apply(db::Connection& connection, const Clock& clock, const SchemaStep& step) const {
    try {
        db::Transaction transaction(connection);
        lockVersions(connection, step.store);
        if (versions(connection, step.store).contains(step.number)) return;
        connection.executeScript(wordsOf(connection.engine(), step.sql));
        noteStep(connection, clock, step);
        transaction.commit();
    } catch (const db::DatabaseError& error) {
        throw Error(fmt::format("the schema's step \"{}\" of \"{}\" failed and changed nothing: {}",
                                step.name, step.store, error.what()));
    }
}

void Schema::applyAll(db::Connection& connection, const Clock& clock,
                      const std::vector<SchemaStep>& steps) const {
    if (connection.engine() == db::Engine::PostgreSql) {
        for (const SchemaStep& step : steps) apply(connection, clock, step);
        runScript(connection, extras_.finish, "finish for PostgreSQL");
        return;
    }
    const std::string folder = db::storeFolder(connection.connectionText());
    for (const SchemaStep& step : steps) apply(*db::openSqliteFile(folder, step.store), clock, step);
}

void Schema::createPostgres(db::Connection& connection, const Clock& clock) const {
    if (hasAnyVersionTable(connection)) {
        throw Error("there are tables of Torvex in this PostgreSQL database already");
    }
    refuseUnfitServer(connection);
    runScript(connection, extras_.prepare, "preparation for PostgreSQL");
    for (const std::string_view store : db::storeNames) {
        connection.executeScript(db::createVersionTable(store));
    }
    applyAll(connection, clock, steps_);
}

void Schema::create(db::Database& database, const Clock& clock, std::string_view text, std::string_view user,
                    std::string_view password) const {
    try {
        const bool sqlite = db::engineOf(text) == db::Engine::Sqlite;
        if (sqlite) db::createSqliteStore(db::storeFolder(text));
        const db::Lease connection = database.open(text, user, password);
        if (!sqlite) return createPostgres(*connection, clock);
        applyAll(*connection, clock, steps_);
    } catch (const db::DatabaseError& error) {
        throw Error(error.what());
    }
}

Migration Schema::migrate(db::Database& database, const Clock& clock, std::string_view text,
                          std::string_view user, std::string_view password) const {
    try {
        const db::Lease connection = database.open(text, user, password);
        refuseNewer(*connection);
        const std::vector<SchemaStep> due = missing(*connection);
        if (due.empty()) return {};
        if (!hasAnyVersionTable(*connection)) check(*connection);
        Migration done;
        if (connection->engine() == db::Engine::Sqlite) {
            done.backup = backUp(db::storeFolder(text), clock.now());
        }
        applyAll(*connection, clock, due);
        done.applied = namesOf(due);
        return done;
    } catch (const db::DatabaseError& error) {
        throw Error(error.what());
    }
}

}  // namespace torvex
