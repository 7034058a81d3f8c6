#pragma once

#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// Why a site or a language stays, beside the codes that all operations share.
namespace removal {
inline constexpr std::string_view inUse = "-2";     ///< another login works in it
inline constexpr std::string_view hasPages = "-3";  ///< in the design
inline constexpr std::string_view isLast = "-4";
}  // namespace removal

/// The code with which the removal is refused, "" when nothing stands against it. `ownLogin` may work in it.
std::string refusalToRemoveSite(db::Connection& connection, std::string_view site, int ownLogin);
std::string refusalToRemoveLanguage(db::Connection& connection, std::string_view lang, int ownLogin);

/// Deletes all rows that belong to a site or a language, and those that belonged to rows that go. For a
/// transaction.
void removeSiteRows(db::Connection& transaction, std::string_view site);
void removeLanguageRows(db::Connection& transaction, std::string_view lang);

}  // namespace torvex
