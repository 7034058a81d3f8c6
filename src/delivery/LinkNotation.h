#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// How links are stored, so that neither a page's place in the tree nor the mode of the site is written into
/// a text:
///
///     href="page(12)"  href="page('aa.en.01')"      a page by its number or its node
///     href="tvx.asp?pageId=12&x=1"                  the same as an address, with more in its query
///     href="frameset.asp?pageId=12"                 and for the whole window
///     href="file(price list.pdf)"                   a document by its file or its title, of the page's site
///     href="file(bb/price list.pdf)"                and of another site
///     [href]="..."                                  a link; authors have still to choose its target
///     {href}="..."                                  a link within a string of a script
///
/// Arguments may stand in quotes. Anything else is an address as it is. For visitors `LinkBuilder` reads the
/// notation, for authors `LinkMarking`. Views are into what was given.
namespace linkNotation {

inline constexpr std::string_view page = "page(";
inline constexpr std::string_view file = "file(";
inline constexpr std::string_view unchosen = "[href]";
inline constexpr std::string_view inScript = "{href}";

/// The addresses of pages; the first "/" may be missing.
inline constexpr std::string_view pageScript = "/tvx.asp";
inline constexpr std::string_view framesetScript = "/frameset.asp";

/// What an address begins with that leads out of the site.
inline constexpr std::array<std::string_view, 6> outside = {"http://", "https://",  "ftp://",
                                                            "file://", "gopher://", "wais://"};

/// What holds this is filled in later and left alone till then.
inline constexpr std::string_view markerStart = "<!--!";

/// Without the quotes of one kind around it, if there are any.
std::string_view withoutQuotes(std::string_view value);

/// The page that an address names behind "pageId=", up to the next "&"; nothing when it names none.
std::optional<std::string_view> pageInAddress(std::string_view address);

/// A document by its site and its file or title.
struct Document {
    std::string site;
    std::string name;
};

/// The document that an argument of `file(` names, of the site given unless it names one itself.
Document documentNamed(std::string_view argument, std::string_view site);

/// The file of the document of that title, "" when there is none. A failure has the line "getDocFile !" in
/// front.
std::string documentOfTitle(db::Connection& connection, std::string_view site, std::string_view title);

}  // namespace linkNotation
}  // namespace torvex
