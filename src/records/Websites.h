#pragma once

#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// A column of the character set of a language ("charset_label" and so on), trimmed; "" when there is no such
/// language.
std::string charsetColumn(db::Connection& connection, std::string_view lang, std::string_view column);

/// The title of a site in a language, trimmed; "" when it has none.
std::string websiteTitle(db::Connection& connection, std::string_view site, std::string_view lang);

}  // namespace torvex
