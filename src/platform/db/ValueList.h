#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/db/Connection.h"

/// Many values asked for at once. Lists of any length share one prepared statement: it has places for a list
/// of fixed length, and shorter ones are filled up.
namespace torvex::db {

inline constexpr std::size_t listLength = 32;

/// `part` as often as a list is long, divided by commas: "?" for "x in (...)", "(?)" for "values ...".
inline std::string placesOfList(std::string_view part, std::size_t length = listLength) {
    std::string places(part);
    for (std::size_t i = 1; i < length; ++i) places.append(",").append(part);
    return places;
}

/// A statement that ends in a column's name: that column must be one of a list of values.
inline std::string withList(std::string_view statement) {
    return std::string(statement) + " in (" + placesOfList("?") + ")";
}

/// Runs `statement` for all values, a list at a time, and hands every row to `take`. Lists are filled up with
/// `filler`.
template <typename Take>
void forEachRow(Connection& connection, const std::string& statement, std::span<const Parameter> values,
                const Parameter& filler, Take take) {
    std::vector<Parameter> list;
    for (std::size_t from = 0; from < values.size(); from += listLength) {
        const auto part = values.subspan(from, std::min(listLength, values.size() - from));
        list.assign(part.begin(), part.end());
        list.resize(listLength, filler);
        auto rows = connection.query(statement, list);
        while (rows.next()) take(rows);
    }
}

/// The same, filled up by repeating the last value.
template <typename Take>
void forEachRow(Connection& connection, const std::string& statement, std::span<const Parameter> values,
                Take take) {
    if (!values.empty()) forEachRow(connection, statement, values, values.back(), take);
}

}  // namespace torvex::db
