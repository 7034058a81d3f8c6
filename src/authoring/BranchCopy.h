#pragma once

#include <string>
#include <string_view>

#include "accounts/Actor.h"
#include "authoring/FreePlaces.h"
#include "records/PageIdentity.h"

namespace torvex {

/// How much of a branch travels.
enum class Extent { Page, Branch };

/// What is to be copied, and how the copy begins.
struct CopyOrder {
    std::string source;  ///< its node
    Twin from = Twin::Design;
    Extent extent = Extent::Page;
    FreePlace place;    ///< of the first copy
    std::string title;  ///< of the first copy
    Actor editor;
    int notified = 0;  ///< the mail flag of a copy that is modified
};

/// Copies a page, or all from it on, into the design: rows, bodies, meta data and groups. In the design a
/// page that is marked for deletion stays behind with all below it. In another tree a copy keeps what is its
/// own and loses what only its old tree has: design assets, feeds, neighbours, login pages. The number of the
/// first copy; -1 when nothing was there to copy. Works by some statements for the whole branch, within a
/// transaction of the caller.
PageId copyBranch(db::Connection& connection, const CopyOrder& order);

}  // namespace torvex
