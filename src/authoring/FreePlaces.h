#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/PageIdentity.h"

namespace torvex {

// Where a page finds room among the children of another. Whoever then uses the place holds the parent first,
// within the same transaction: places below it are then given away one after the other.

/// Keeps the page where it is until the transaction ends. False when it isn't there (any more).
bool holdPage(db::Connection& connection, const PageIdentity& page);

/// The node for a new child: the lowest free number; "" when all are taken.
std::string newChildOf(db::Connection& connection, std::string_view parent);
/// The sort position behind the siblings of a node, or the first free one; -1 when there is none.
int newOrderOf(db::Connection& connection, std::string_view nodeId);

struct FreePlace {
    std::string nodeId;
    int orderId = 0;
};

/// Both for one more child; nothing when either is missing. A system branch has its number by itself.
std::optional<FreePlace> placeForChild(db::Connection& connection, std::string_view parent);
std::optional<FreePlace> placeForSystemBranch(db::Connection& connection, std::string_view parent);

/// Whether a child of the parent, other than the one excepted, has this title.
bool isTitled(db::Connection& connection, std::string_view parent, std::string_view title, Twin twin,
              std::optional<PageId> except = std::nullopt);
/// `title`, with the word behind it as often as it takes until no child of the parent has it, neither in the
/// design nor live. Nothing when that would become longer than titles are.
std::optional<std::string> freeTitle(db::Connection& connection, std::string_view parent, std::string title,
                                     std::string_view word);

}  // namespace torvex
