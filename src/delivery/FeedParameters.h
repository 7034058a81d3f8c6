#pragma once

#include <string>
#include <string_view>

#include "platform/Request.h"

/// What a feed is asked with: the visitor's own query first, then what the feed's register adds. Pure
/// functions.
namespace torvex::feeds {

/// The visitor's query items, each name once in the order of its first coming (a name that was sent several
/// times has its values joined with ", "), then the items "name=value" of `column`, which are divided by ",".
/// Values, and names from the column, are trimmed; an item without "=" is dropped. A name may occur twice.
NamedValues parameters(const NamedValues& visitorQuery, std::string_view column);

/// Percent-encodes the marks of ASCII in the ranges 33-47, 58-63 and 123-126. Everything else stays, blanks
/// and letters beyond ASCII too.
std::string convertSpecial(std::string_view value);

/// "name=value" of every parameter that has a name, in the order of `parameters` and divided by "&"; blanks
/// are written as "+". The register's names stand as they are. In a visitor's, what would end the name or
/// begin another parameter is encoded, so that nobody slips in a parameter of the feed's own.
std::string queryText(const NamedValues& visitorQuery, std::string_view column);

/// `address` with the query text added behind what it has already.
std::string withQuery(std::string address, std::string_view queryText);

}  // namespace torvex::feeds
