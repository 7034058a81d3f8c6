#pragma once

#include <span>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// Why an administrative record stays, beside the codes that all operations share.
namespace record {
inline constexpr std::string_view notThere = "-1";
inline constexpr std::string_view inUse = "-2";
inline constexpr std::string_view locked = "-3";  ///< another login's session holds it, or it isn't there
/// Of a login or a role: nobody but "sa" would be left to give rights.
inline constexpr std::string_view lastAdministrator = "-4";
}  // namespace record

/// Runs statements that have one value, the key of the record that goes, in their order.
void deleteRows(db::Connection& transaction, std::span<const std::string_view> statements, double key);

/// Whether one of the statements, which have one value, finds a row.
bool findsAny(db::Connection& transaction, std::span<const std::string_view> statements, double key);

}  // namespace torvex
