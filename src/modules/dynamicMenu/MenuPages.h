#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "modules/dynamicMenu/MenuDefinition.h"

namespace torvex {
namespace db {
class Connection;
class Rows;
}  // namespace db

/// A page as a menu looks at it.
struct MenuPage {
    PageId pageId = -1;
    std::string nodeId;
    std::string title;
    double order = 0;
    bool isFolder = false;
    bool isInMenu = false;  ///< neither taken out by its author nor of the system
    bool isOnline = false;  ///< today, were it no folder
};

/// One group of a page.
struct PageGroup {
    PageId pageId;
    double group;

    auto operator<=>(const PageGroup&) const = default;
};

/// Where a menu is drawn: below which page, for a visitor at which node, and what is there.
struct MenuPlace {
    std::string_view rootNode;
    std::string_view currentNode;
    int minLength;
    int maxLength;
    Twin twin;
    std::string_view today;  ///< yyyymmdd
    bool withGroups;         ///< of live pages
};

/// The pages below the root of a menu, as far as it opens for its visitor: in one statement, whatever their
/// number; with closed folders in it, in two. Branches that the menu hides aren't read. What `place` names
/// must outlive the object.
class MenuPages {
  public:
    MenuPages(db::Connection& connection, const MenuPlace& place);

    /// In their order; none of a branch that wasn't read.
    const std::vector<MenuPage>& childrenOf(std::string_view nodeId) const;
    /// Null when there is none. Folders that the menu doesn't open have one, too.
    const MenuPage* firstChildOf(const MenuPage& folder) const;
    /// The groups of all pages that were read, by page and group.
    const std::vector<PageGroup>& groups() const { return groups_; }

  private:
    using Families = std::unordered_map<std::string, std::vector<MenuPage>>;  ///< by the parent's node

    bool hasClosedFolders() const;
    Families read(const std::string& statement);
    MenuPage readPage(const db::Rows& rows) const;

    db::Connection& connection_;
    MenuPlace place_;
    std::string currentNode_;  ///< in lower case
    Families children_;
    Families ways_;  ///< from closed folders to what they lead to
    std::vector<PageGroup> groups_;
};

}  // namespace torvex
