#pragma once

#include <string>
#include <string_view>

#include "installation/NewFiles.h"

namespace torvex {
class Clock;
namespace db {
class Connection;
}
}  // namespace torvex

namespace torvex {

/// A website of a new installation, as its files and rows are made from it; without more, the starter's.
struct NewWebsite {
    std::string site = "ws";  ///< two small letters or digits
    std::string lang = "en";  ///< likewise
    std::string title = "My website";
};

/// The words of a website's files and of the starter's rows; in rows each value stands in a text.
Words wordsForHtml(const NewWebsite& site);
Words wordsForRows(const NewWebsite& site, const Clock& clock);

/// The word "days" of the demo's rows: the last thirty days before today as lines of values, each with its
/// distance from today, "yyyymmdd" and the day of the week from Monday, 1, on.
Words wordsForDemo(const Clock& clock);

/// Rows that every installation has, and the login "sa", which has no password yet. To be run in a
/// transaction.
void insertFixedRows(db::Connection& connection);
/// The rows of the program's files below `prefix`, in the order of their names.
void insertRows(db::Connection& connection, std::string_view prefix, const Words& words = {});

}  // namespace torvex
