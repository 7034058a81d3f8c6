#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "records/PageId.h"
#include "search/designs/LinkFinder.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

// What the texts of pages are found by (TORVEX_PAGE_WORDS) and where they lead (TORVEX_LINKS): rows that follow
// titles, bodies and meta data. Whoever writes these calls one of the functions behind it, within the same
// transaction.

/// The designs of the pages have changed: their titles, bodies or meta data. Pages that aren't there are passed
/// over. Some statements for 32 of them.
void renewDesignIndex(db::Connection& connection, const FilePrefixes& prefixes,
                      std::span<const PageId> pages);
/// The same for one page.
void renewDesignIndex(HostContext& host, db::Connection& connection, PageId pageId);
/// The same for a branch.
void renewDesignIndexOfBranch(HostContext& host, db::Connection& connection, std::string_view nodeId);

/// The page's design has been copied to what is live.
void publishLinks(db::Connection& connection, PageId pageId);

/// Reads the pages that have no rows yet, in transactions of its own: those that were made by other ways than
/// the program's. How many.
std::size_t indexMissingPages(HostContext& host, db::Connection& connection);

}  // namespace torvex
