#pragma once

#include <string>
#include <string_view>

namespace torvex {

namespace db {
class Connection;
}

/// What can be searched for in a site, for the choice of properties: those of every page and document, and
/// the site's meta tags, divided by commas.
std::string allSearchProperties(db::Connection& connection, std::string_view site);

/// Removes the settings and words of search pages that aren't live, and from the lists of scopes the pages
/// and folders that are gone; a list that has lost all of them searches nothing.
void cleanSearchRecords(db::Connection& connection);

}  // namespace torvex
