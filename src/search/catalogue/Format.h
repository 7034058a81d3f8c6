#pragma once

#include <string>
#include <string_view>
#include <xapian.h>

/// What a catalogue says of itself.
namespace torvex::catalogue {

/// Changes with what entries are made of: a catalogue of an earlier one is made anew, one of a later one is
/// left alone.
inline constexpr int currentFormat = 5;

namespace metadata {
inline constexpr std::string_view format = "format";
inline constexpr std::string_view generation = "generation";  ///< of rebuildings
/// Entries keep their numbers as long as this is the same.
inline constexpr std::string_view identity = "identity";
/// Divided by blanks; not there before they are chosen. See `FrequentWords`.
inline constexpr std::string_view frequentWords = "frequent";
inline constexpr std::string_view queue = "queue";  ///< up to where the queue is worked off
}  // namespace metadata

/// 0 for one without any.
int formatOf(const Xapian::Database& database);
std::string identityOf(const Xapian::Database& database);

/// Where the database of an installation lies.
std::string databaseFolder(std::string_view installPath);

}  // namespace torvex::catalogue
