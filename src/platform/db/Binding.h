#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/db/Connection.h"

/// What both engines do alike with a bound value, so that they store and find the same.
namespace torvex::db {

/// The value as a whole number: booleans, integers, and doubles that are whole and fit. Nothing for others.
std::optional<std::int64_t> wholeNumber(const Parameter& parameter);

/// Appends the text. A NUL, which PostgreSQL can't hold, and malformed UTF-8 become U+FFFD each: such a text
/// then equals nothing that is stored, instead of being cut or failing.
void appendText(std::string& buffer, std::string_view text);

/// Appends "YYYY-MM-DD HH:MM:SS", the form in which moments are stored and sorted.
void appendMoment(std::string& buffer, const DateTime& moment);

/// A column's value read as a plain decimal number. Throws `DatabaseError` when it isn't one.
double numberOf(std::string_view text);

/// A stored moment as a value; a text that isn't one stays a text.
Value momentOrText(std::string_view stored);

}  // namespace torvex::db
