#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// Whether a text is the code of a site, or of a language: two characters, and a row. A lookup that fails has
/// its own line in front ("isSite !", "isLang !"), as one level of the operation that asked.
bool isSiteCode(db::Connection& connection, std::string_view site);
bool isLanguageCode(db::Connection& connection, std::string_view lang);

}  // namespace torvex
