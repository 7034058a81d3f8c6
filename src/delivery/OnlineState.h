#pragma once

#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {
namespace db {
class Connection;
}

/// Whether a node shows on `today` (yyyymmdd), whoever asks; a folder is followed to its first child. False
/// for a node that isn't published.
bool isNodeOnline(db::Connection& connection, std::string_view nodeId, std::string_view today);

/// The same for a page that is known by its number.
bool isPageOnline(db::Connection& connection, PageId pageId, std::string_view today);

/// The same for a node that is known to be a published folder.
bool isFolderOnline(db::Connection& connection, const std::string& nodeId, std::string_view today);

}  // namespace torvex
