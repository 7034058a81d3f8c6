#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "search/extraction/Reading.h"

namespace torvex::catalogue {

/// By what a file is known to be as it was.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t modified = 0;  ///< nanoseconds since 1970
};

bool isDocumentColumn(std::string_view name);

/// A file as the catalogue holds it.
struct Entry {
    std::string path;  ///< below the installation, divided by "/"
    FileStamp stamp;
    Reading reading;
};

/// What stands behind the last "/".
std::string_view fileNameOf(std::string_view path);
/// Whether it is a page's copy. Those are named by their place in the tree, and are quickly read again.
bool isSnapshot(std::string_view path);

/// What is kept of an entry to show it, beside path and stamp. The text of a snapshot isn't: it would be a third of
/// the database, and is in its file.
std::string packReading(const Entry& entry);
/// Throws `Error` for what isn't one.
Reading unpackReading(std::string_view bytes);

}  // namespace torvex::catalogue
