#pragma once

#include <string>
#include <string_view>

#include "cli/NewFiles.h"

namespace torvex {
class Clock;
namespace db {
class Connection;
}
}  // namespace torvex

namespace torvex::cli {

/// The first site of an installation, as its starter pages and rows are made from it.
struct StarterSite {
    std::string site = "ws";  ///< two small letters or digits
    std::string lang = "en";  ///< likewise
    std::string title = "My website";
};

/// Throws `UsageError` for a code that isn't two small letters or digits, and for an empty or overlong title.
void checkStarterSite(const StarterSite& site);

/// The words of the starter's files and rows; in rows each value stands in a text.
Words wordsForHtml(const StarterSite& site);
Words wordsForRows(const StarterSite& site, const Clock& clock);

/// Rows that every installation has, and the login "sa". To be run in a transaction.
void insertFixedRows(db::Connection& connection, std::string_view adminPassword);
/// The rows of the program's files below `prefix`, in the order of their names.
void insertRows(db::Connection& connection, std::string_view prefix, const Words& words = {});

}  // namespace torvex::cli
