#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

// What the records of the modules have in common.

/// A website, by its codes.
struct ModulePlace {
    std::string site;
    std::string lang;
};

/// In lower case and without blanks around the codes.
ModulePlace placeFrom(std::string_view site, std::string_view lang);
bool isWebsite(db::Connection& connection, const ModulePlace& place);

/// Without blanks around it, cut to what the field holds.
std::string cleanField(std::string_view text, std::size_t longest);
/// Lines end as the modules show them: by a carriage return and a line feed.
std::string storedLines(std::string_view text);
/// A number that a small column holds; one below or beyond that is brought to the nearest.
int shortNumber(int number, int least = 0);

/// The orders of items and the places of their pictures count from 1; see modules/shared.
bool isOrderOrAlignment(int choice);
bool isOneOf(int choice, int most);
int flagOf(bool is);
/// That a template of the website can draw what modules show.
bool isModuleTemplate(db::Connection& connection, const ModulePlace& place, int templateId);

inline constexpr std::size_t longestModuleName = 100;
inline constexpr std::size_t longestModuleText = 500;

/// Rows that a list gives at once.
inline constexpr int listedAtOnce = 500;

}  // namespace torvex
