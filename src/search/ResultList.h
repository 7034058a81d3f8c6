#pragma once

#include <optional>
#include <string>
#include <vector>

#include "records/PageIdentity.h"
#include "search/SearchRun.h"

namespace torvex {

/// What a row of the catalogue's stands for.
struct FoundFile {
    enum class Kind { Other, Page, Document };

    Kind kind = Kind::Other;
    PageIdentity page;     ///< its number is known once it was tested
    std::string document;  ///< below the folder of documents, with "/"
    std::string type;      ///< what stands behind the last point, in small letters

    bool isPage() const { return kind == Kind::Page; }
};

/// By the path of the catalogue's row.
FoundFile foundFile(const HostContext& host, std::string_view rootPath, std::string_view path);

struct ShownResult {
    std::size_t row = 0;
    FoundFile file;
};

/// What one page of results shows: rows that this visitor may see now.
struct ResultList {
    std::vector<ShownResult> shown;
    /// The row with which a further page begins: one that this visitor may see.
    std::optional<std::size_t> next;
};

/// Tests the rows from the page's first one on, in batches, so that neither thousands of rows that may not be
/// seen nor a long page cost a statement each. Throws when the request's time is over.
ResultList listedResults(HostContext& host, db::Connection& connection, const SearchRun& run);

/// Whether the visitor may see any of the first `most` rows.
bool hasVisibleResult(HostContext& host, db::Connection& connection, const SearchParameters& search,
                      const catalogue::Results& results, std::size_t most);

}  // namespace torvex
