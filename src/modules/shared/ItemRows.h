#pragma once

#include <string>
#include <vector>

#include "modules/shared/ItemLayouts.h"
#include "platform/db/Connection.h"

namespace torvex {

/// The items of a message board that a statement finds; their texts as they are stored. Throws `Error` when
/// they are more than a page may hold.
std::vector<Item> readItems(const HostContext& host, db::Rows rows);

/// The files of those pictures that are shown.
std::vector<std::string> imagesOf(const std::vector<Item>& items, const ItemLayouts& layouts);

}  // namespace torvex
