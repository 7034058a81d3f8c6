#pragma once

#include <string_view>

struct sqlite3;

namespace torvex::db {

/// Gives an open SQLite connection the system's rules for text: the collation `torvex`, and `like`, `lower`
/// and `upper` that know letters beyond ASCII. Throws `DatabaseError` when SQLite refuses.
void addTextFunctions(sqlite3* database);

/// SQL's `like` ignoring case: "%" is any run of characters, "_" one character, and the character `escape`
/// (0 for none) takes the meaning from the one behind it. Malformed UTF-8 is matched byte by byte.
bool matchesLike(std::string_view text, std::string_view pattern, char32_t escape);

/// What `like` without an `escape` clause takes as its escape character; PostgreSQL does the same.
inline constexpr char32_t defaultEscape = U'\\';

}  // namespace torvex::db
