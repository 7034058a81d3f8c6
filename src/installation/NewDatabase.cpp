#include "installation/NewDatabase.h"

#include <filesystem>
#include <fmt/format.h>
#include <vector>

#include "installation/NewFiles.h"
#include "installation/SchemaFiles.h"
#include "platform/Errors.h"
#include "platform/db/ConnectionText.h"
#include "platform/db/SqliteStore.h"

namespace torvex {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view selectTables =
    "select relname as name from pg_class where relnamespace = current_schema()::regnamespace "
    "and relkind in ('r', 'p', 'v', 'm', 'f') order by relname";

bool isEmbedded(const Installation& installation) {
    return db::engineOf(installation.databaseText()) == db::Engine::Sqlite;
}

/// What triggers of ours run, which stays when the tables go.
constexpr std::string_view selectTriggerFunctions =
    "select proname as name from pg_proc where pronamespace = current_schema()::regnamespace "
    "and prorettype = 'trigger'::regtype and starts_with(proname, 'torvex_')";

std::vector<std::string> namesOf(db::Connection& connection, std::string_view statement) {
    std::vector<std::string> names;
    auto rows = connection.query(statement);
    while (rows.next()) names.push_back(rows.text("name"));
    return names;
}

void refuseTakenFolder(const fs::path& folder) {
    std::error_code error;
    if (!fs::exists(folder, error) || (fs::is_directory(folder, error) && fs::is_empty(folder, error)))
        return;
    throw Error(
        fmt::format("{} is there already and not empty: the embedded database needs a folder of its "
                    "own. Nothing was changed",
                    folder.string()));
}

/// All of them were made here, since the database was empty before.
void dropTables(const Installation& installation, db::Database& database) {
    const auto connection = installation.openDatabase(database);
    for (const std::string& table : namesOf(*connection, selectTables)) {
        connection->executeScript(fmt::format("drop table if exists \"{}\" cascade", table));
    }
    for (const std::string& function : namesOf(*connection, selectTriggerFunctions)) {
        connection->executeScript(fmt::format("drop function if exists \"{}\"() cascade", function));
    }
}

}  // namespace

void refuseTakenDatabase(const Installation& installation, db::Database& database) {
    if (isEmbedded(installation)) return refuseTakenFolder(db::storeFolder(installation.databaseText()));
    const auto connection = installation.openDatabase(database);
    const auto taken = namesOf(*connection, selectTables);
    if (taken.empty()) return;
    throw Error(
        fmt::format("the database holds {} tables already (one is {}): name one that is empty. Nothing "
                    "was changed",
                    taken.size(), taken.front()));
}

void makeDatabaseTables(const Installation& installation, db::Database& database, const Clock& clock,
                        Undo& undo) {
    if (isEmbedded(installation)) {
        const std::string folder = db::storeFolder(installation.databaseText());
        undo.removeWhatIsMade(folder);
        for (const auto store : db::storeNames) {
            for (const auto* suffix : {"", "-wal", "-shm"}) {
                undo.removeWhatIsMade(db::storeFile(folder, store) + suffix);
            }
        }
        makeFolder(folder, Readers::Owner);
    } else {
        undo.add([&] { dropTables(installation, database); });
    }
    const auto& settings = installation.settings().database;
    installedSchema().create(database, clock, installation.databaseText(), settings.user, settings.password);
}

}  // namespace torvex
