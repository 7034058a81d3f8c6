#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <vector>

#include "records/PageId.h"

namespace torvex {
class ApplicationValues;

/// Where a text leads. A page by its number, or by the node that stands in the text; a file by its path, or a
/// document by its title, in the site that is named, or "": that of the page.
struct FoundLink {
    enum class Kind { Page, Image, Document, Unchosen };

    Kind kind = Kind::Page;
    PageId pageId = 0;
    std::string site;    ///< in small letters
    std::string target;  ///< a node in small letters

    auto operator<=>(const FoundLink&) const = default;
};

/// The word of a kind, as it stands in the column `linkKind`.
std::string_view wordOf(FoundLink::Kind kind);

/// What addresses of files begin with.
struct FilePrefixes {
    std::string images;     ///< "/images/"
    std::string documents;  ///< "/documents/"
};
FilePrefixes filePrefixes(const ApplicationValues& application);

/// The links and files of a text as they are stored (see `LinkNotation.h`), each once and sorted: what its
/// links lead to, and the files that it shows, wherever their addresses stand. Addresses that lead out of the
/// installation aren't among them. Reads anything.
std::vector<FoundLink> linksIn(std::string_view html, const FilePrefixes& prefixes);

/// An image or a document of a site that has come into another folder.
struct MovedFile {
    FoundLink::Kind kind = FoundLink::Kind::Image;
    std::string site;
    std::string name;
    std::string fromFolders;  ///< as they stand before the name: "001/002/"
    std::string toFolders;
};

/// The text of a page with all that leads to the file leading to its new place; the rest stays as it is.
std::string withFileMoved(std::string_view html, const FilePrefixes& prefixes, std::string_view pageSite,
                          const MovedFile& file);

}  // namespace torvex
