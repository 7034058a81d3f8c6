#include "platform/db/SqliteStore.h"

#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <sqlite3.h>

#include "platform/db/Connection.h"
#include "platform/db/SqliteConnection.h"
#include "platform/db/SqliteHandle.h"
#include "platform/text/Text.h"

namespace torvex::db {

namespace {

namespace fs = std::filesystem;

/// Pages copied at a time, between which other connections may write.
constexpr int backupStep = 1024;
/// Waits between two tries while another connection holds the file.
constexpr int backupWaitMilliseconds = 20;
constexpr int backupTries = 500;

[[noreturn]] void fail(std::string_view doing, const std::string& file, const char* message) {
    throw DatabaseError(fmt::format("{} {}: {}", doing, file, message));
}

void makeFolder(const std::string& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw DatabaseError(fmt::format("can't make the folder {}: {}", folder, error.message()));
}

/// Beside passwords' hashes it holds what isn't published; SQLite gives the same rights to its log.
void makePrivate(const std::string& file) {
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
}

void createFile(const std::string& folder, std::string_view store) {
    const std::string file = storeFile(folder, store);
    if (fs::exists(file)) throw DatabaseError(fmt::format("there is a database {} already", file));
    const SqliteHandle handle = openSqlite(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    makePrivate(file);
    const std::string script = "pragma journal_mode = wal; " + createVersionTable(store);
    if (sqlite3_exec(handle.get(), script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        fail("can't make the database", file, sqlite3_errmsg(handle.get()));
    }
}

void copyPages(sqlite3_backup* backup) {
    int tries = 0;
    int code = SQLITE_OK;
    while ((code = sqlite3_backup_step(backup, backupStep)) != SQLITE_DONE) {
        if (code == SQLITE_OK) continue;
        if ((code != SQLITE_BUSY && code != SQLITE_LOCKED) || ++tries > backupTries) return;
        sqlite3_sleep(backupWaitMilliseconds);
    }
}

void copyFile(const std::string& from, const std::string& to) {
    const SqliteHandle source = openSqlite(from, SQLITE_OPEN_READWRITE);
    const SqliteHandle target = openSqlite(to, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    makePrivate(to);
    sqlite3_backup* backup = sqlite3_backup_init(target.get(), "main", source.get(), "main");
    if (backup == nullptr) fail("can't back up the database", from, sqlite3_errmsg(target.get()));
    copyPages(backup);
    if (sqlite3_backup_finish(backup) != SQLITE_OK) {
        fail("can't back up the database", from, sqlite3_errmsg(target.get()));
    }
}

}  // namespace

std::string storeFile(const std::string& folder, std::string_view store) {
    return fmt::format("{}/{}.db", folder, store);
}

std::string versionTable(std::string_view store) {
    return "TORVEX_SCHEMA_" + text::upper(store);
}

std::string createVersionTable(std::string_view store) {
    return fmt::format(
        "create table if not exists {} (version integer primary key, name text not null, applied timestamp "
        "not null)",
        versionTable(store));
}

void createSqliteStore(const std::string& folder) {
    setUpSqlite();
    makeFolder(folder);
    for (const std::string_view store : storeNames) createFile(folder, store);
}

void backUpSqliteStore(const std::string& folder, const std::string& target) {
    setUpSqlite();
    makeFolder(target);
    for (const std::string_view store : storeNames)
        copyFile(storeFile(folder, store), storeFile(target, store));
}

}  // namespace torvex::db
