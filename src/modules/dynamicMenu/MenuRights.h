#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "delivery/Access.h"
#include "modules/dynamicMenu/MenuPages.h"
#include "records/PageIdentity.h"

namespace torvex {

/// What the groups of pages say to one visitor about a menu's pages: the verdict that each of them would get
/// alone, from statements whose number doesn't depend on theirs. Pages are asked about from the root down:
/// one that inherits its groups is judged like its parent, which was let through.
class MenuRights {
  public:
    /// `groups` are those of all pages that will be asked about.
    MenuRights(db::Connection& connection, PageIdentity root, Visitor visitor, std::string_view today,
               std::vector<PageGroup> groups);

    bool letThrough(const MenuPage& page);

  private:
    /// A group of the visitor, and from when to when she is a user.
    struct Membership {
        double group;
        std::string validFrom;
        std::string validTo;
    };

    bool isMemberOf(std::span<const PageGroup> groups);
    bool rootLetsThrough();
    const std::vector<Membership>& memberships();

    db::Connection& connection_;
    PageIdentity root_;
    Visitor visitor_;
    std::string today_;
    std::vector<PageGroup> groups_;  ///< by page and group
    std::optional<bool> rootVerdict_;
    std::optional<std::vector<Membership>> memberships_;
};

}  // namespace torvex
