#pragma once

#include <string>

#include "platform/db/OwnTransaction.h"

namespace torvex {

/// Categories of a website: one by its path, or all whose paths begin with it.
struct BoardBranch {
    std::string site, lang, path;
    bool withBelow = false;
};

/// Removes what is marked in the branch, and copies what was modified to visitors: categories, the newsflashes
/// that they feed, and `withItems` their items. To be run in a transaction: refused with "1" while a category
/// above isn't live, otherwise done with "".
db::Outcome<std::string> publishBoard(db::Connection& transaction, const BoardBranch& branch, bool withItems);

}  // namespace torvex
