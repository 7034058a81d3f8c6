#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Value.h"

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

/// What of a list is wanted: days as "yyyymmdd", "" for no limit. Of words, `lang` is a language of the interface.
struct ExportChoice {
    std::string site;
    std::string lang;
    std::string from;
    std::string to;
    std::string filters;  ///< of the audit trail, as `desk.getTrail` takes them
};

/// A list that leaves the house as a file for spreadsheets.
struct Export {
    std::string_view name;  ///< "audit"
    std::vector<std::string_view> columns;
    /// Whether somebody may have it, as with the screen that shows it.
    std::function<bool(db::Connection&, const Actor&, const ExportChoice&)> mayRead;
    /// Hands each row's cells to `take`, in the order of the list.
    std::function<void(db::Connection&, const ExportChoice&,
                       const std::function<void(std::vector<Value>)>& take)>
        rows;
};

/// audit, statistics, searches, sitemap, users, words.
std::span<const Export> exports();

/// A line of it, with its end. Texts that a spreadsheet would take for a formula are marked as texts.
std::string csvLine(const std::vector<Value>& cells);

}  // namespace torvex
