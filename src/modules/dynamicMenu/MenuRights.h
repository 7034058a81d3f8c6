#pragma once

#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "delivery/Access.h"
#include "modules/dynamicMenu/MenuPages.h"
#include "records/PageIdentity.h"

namespace torvex {

/// What the groups of pages say to one visitor about a menu's pages: the verdict that each of them would get
/// alone, without a statement for each. Pages are asked about from the root down: one that inherits its
/// groups is judged like its parent, which was let through.
class MenuRights {
  public:
    MenuRights(db::Connection& connection, PageIdentity root, Visitor visitor, std::string_view today);

    /// `groups` are those of all pages, by page and group.
    bool letThrough(const MenuPage& page, std::span<const PageGroup> groups);

  private:
    bool isMemberOf(std::span<const PageGroup> groups);

    db::Connection& connection_;
    PageIdentity root_;
    Visitor visitor_;
    std::string today_;
    bool rootLetsThrough_;
    std::optional<std::set<double>> ownGroups_;  ///< once they were asked for
};

}  // namespace torvex
