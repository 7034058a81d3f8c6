#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// The number of a site's meta tag by its name; 0 when there is none. A failure has the line "getMetaTagId !"
/// in front.
int metaTagNamed(db::Connection& connection, std::string_view site, std::string_view name);

/// The same by its name or its number, with blanks around it; 0 also for the number of another site's tag.
int metaTagOfSite(db::Connection& connection, std::string_view site, std::string_view ident);

}  // namespace torvex
