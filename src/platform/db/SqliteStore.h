#pragma once

#include <array>
#include <string>
#include <string_view>

namespace torvex::db {

/// The parts of the database. In SQLite each is a file of its own, "content.db" and so on.
inline constexpr std::array<std::string_view, 3> storeNames = {"content", "hits", "audit"};

std::string storeFile(const std::string& folder, std::string_view store);
/// The table that notes which steps of the schema a part has: "TORVEX_SCHEMA_CONTENT" and so on.
std::string versionTable(std::string_view store);
/// The statement that makes this table when it isn't there; the same for both engines.
std::string createVersionTable(std::string_view store);

/// Makes the folder, where needed, and the three files in it, empty but for their version tables, readable
/// only by their owner. Throws `DatabaseError` when one is there already or can't be made.
void createSqliteStore(const std::string& folder);

/// Copies the three files of a store that may be in use to `target`, which is created. Each copy is one state
/// of its file. Throws `DatabaseError`.
void backUpSqliteStore(const std::string& folder, const std::string& target);

}  // namespace torvex::db
