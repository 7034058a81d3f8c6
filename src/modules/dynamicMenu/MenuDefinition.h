#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "modules/dynamicMenu/MenuView.h"
#include "records/PageIdentity.h"

namespace torvex {
namespace db {
class Connection;
}

/// What a menu is like, as it is kept with the page that it stands below.
struct MenuDefinition {
    PageIdentity root;
    int minLevels = 0;  ///< so many levels below the root are shown wherever the visitor is
    int maxLevels = 0;  ///< and so many where they lie on her way
    int display = 0;
    int extranet = 0;
    std::string templateFile;  ///< "" when the template isn't one of the system

    bool showsWholeWay() const { return display == 1; }  ///< not just its deepest item
    bool marksOneItem() const { return display == 0; }
    bool asksForRights() const { return extranet == 0; }

    /// The lengths of the nodes at which the levels end.
    int minLength() const { return lengthAt(minLevels); }
    int maxLength() const { return lengthAt(maxLevels); }

  private:
    int lengthAt(int levels) const {
        return static_cast<int>(root.nodeId.size()) + levels * static_cast<int>(PageIdentity::levelLength);
    }
};

/// The menu of a page: its own, or that of the nearest page above it that has one.
std::optional<MenuDefinition> menuInForce(db::Connection& connection, std::string_view nodeId, Twin twin);

}  // namespace torvex
