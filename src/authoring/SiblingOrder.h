#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// Numbers the children of a page from 1 in the order that they have, in the design and, where they are
/// published, live, and leaves a number free for one more: the one in front of the sibling that `insertIdent`
/// names by its number or node, or behind the last when it names none. That number. Children whose node ends
/// in ".99" stand apart and keep theirs. Part of a transaction of the caller.
int makeRoom(db::Connection& connection, std::string_view parent, std::string_view insertIdent);

}  // namespace torvex
