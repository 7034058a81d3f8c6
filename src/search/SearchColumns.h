#pragma once

#include <string>
#include <vector>

#include "search/SearchParameters.h"

namespace torvex {

struct HostContext;

/// The names of a site's meta tags, in their order.
std::vector<std::string> metaTagNames(db::Connection& connection, std::string_view site);

/// The columns of the site's own meta tags, which a result shows besides those that every one has; in small
/// letters, without blanks. Throws `SearchError`.
std::vector<std::string> extraColumns(HostContext& host, db::Connection& connection, std::string_view site);

/// What the catalogue has to read for each row: the document columns, and these.
std::vector<std::string> readColumns(const std::vector<std::string>& extra);

/// The sort order of a search as the catalogue gets it, without keys that are no column.
std::string catalogueOrder(const std::string& sortOrder, const std::vector<std::string>& extra);

}  // namespace torvex
