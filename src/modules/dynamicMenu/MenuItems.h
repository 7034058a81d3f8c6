#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "modules/dynamicMenu/MenuDefinition.h"

namespace torvex {
struct HostContext;

/// One line of a menu.
struct MenuItem {
    PageId pageId;
    std::string nodeId;
    std::string title;
};

/// The items of a menu for a visitor who is at `currentNode`, children behind their parent: pages that are in
/// menus, can be shown today and are open to the visitor. Authors see the items of what is live whoever may
/// open them, and those of the design whether or not they show yet. Items that the menu hides are left out.
std::vector<MenuItem> itemsOf(HostContext& host, db::Connection& connection, const MenuDefinition& menu,
                              std::string_view currentNode, const MenuView& view);

}  // namespace torvex
