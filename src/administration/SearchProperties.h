#pragma once

#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// A comma list of the properties that a search page offers, without this one. Blanks around the list don't
/// count, those within do. The properties that every document has, and the words that stand for a choice, are
/// never taken out.
std::string withoutSearchProperty(std::string_view properties, std::string_view name);

/// Takes a property out of the settings of all search pages of a site.
void removeSearchProperty(db::Connection& transaction, std::string_view site, std::string_view name);

}  // namespace torvex
