#pragma once

#include <string>
#include <string_view>

#include "authoring/FreePlaces.h"

namespace torvex {

/// Which branch goes where, and in whose name.
struct MoveOrder {
    int loginId = 0;
    PageIdentity source;
    FreePlace place;
    std::string title;  ///< of its first page, from then on
};

/// Keeps every page of a branch where it is until the transaction ends.
void holdBranch(db::Connection& connection, std::string_view nodeId);

/// Gives a branch its new nodes, in the design and live, and with them its hits, and what names it in rights
/// and in settings of the search. Statuses stay as they are. Part of a transaction of the caller, who holds
/// the branch.
void moveBranch(db::Connection& connection, const MoveOrder& order);

/// A comma list of nodes, which may have signs behind them, in which those of the branch `from` have become
/// those of `to`.
std::string movedScope(std::string_view scope, std::string_view from, std::string_view to);

}  // namespace torvex
