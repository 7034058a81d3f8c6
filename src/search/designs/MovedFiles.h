#pragma once

#include <cstddef>

#include "search/designs/LinkFinder.h"

namespace torvex {
namespace db {
class Connection;
}

/// The texts of pages, in design and live, follow a file into another folder, and the index of links with them.
/// How many pages lead to it. For a transaction.
std::size_t followMovedFile(db::Connection& transaction, const FilePrefixes& prefixes, const MovedFile& file);

}  // namespace torvex
