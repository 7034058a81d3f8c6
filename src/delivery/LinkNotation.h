#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

// What the readers of stored links, for visitors and for authors, make of the notation. Views are into what
// was given.
namespace linkNotation {

/// What holds this is filled in later and left alone till then.
inline constexpr std::string_view markerStart = "<!--!";

/// Without the quotes of one kind around it, if there are any.
std::string_view withoutQuotes(std::string_view value);

/// The page that an address names behind "pageId=", up to the next "&"; nothing when it names none.
std::optional<std::string_view> pageInAddress(std::string_view address);

/// The file of the document of that title, "" when there is none. A failure has the line "getDocFile !" in
/// front.
std::string documentOfTitle(db::Connection& connection, std::string_view site, std::string_view title);

}  // namespace linkNotation
}  // namespace torvex
