#pragma once

#include <string_view>

#include "records/PageId.h"

namespace torvex {

struct Actor;
struct PageBuffer;
namespace db {
class Connection;
}

// The setup of a page as it is stored in the design. Site, language and parent of the row are those of the
// node, so that the two can't disagree. All of these are parts of a transaction of the caller. Numbers of
// pages that aren't whole throw `Error`.

/// Adds the row of a page that nobody has changed yet.
void insertSetup(db::Connection& connection, const PageBuffer& page, const Actor& editor);

/// Overwrites the row of the page, which becomes modified, unapproved, and unmarked. False, with nothing
/// written, when there is no such row (any more), or another login holds it.
bool updateSetup(db::Connection& connection, const PageBuffer& page, const Actor& editor);

/// Puts the groups of the list in place of those that the page has. Entries are divided by commas and are
/// numbers or names; a name that isn't known counts as the group -1.
void replaceGroups(db::Connection& connection, PageId pageId, std::string_view groups);

}  // namespace torvex
