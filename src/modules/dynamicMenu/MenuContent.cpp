#include "modules/dynamicMenu/MenuContent.h"

#include <cmath>
#include <utility>
#include <vector>

#include "modules/dynamicMenu/MenuItems.h"
#include "modules/dynamicMenu/MenuLayout.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

constexpr std::string_view selectIsItemLive =
    "select b.dynMenu from TORVEX_PAGES_DESIGN a inner join TORVEX_PAGES_LIVE b on b.pageId = a.pageId "
    "where a.nodeId = ? and a.pageId > 0";
constexpr std::string_view selectIsItemDesign =
    "select dynMenu from TORVEX_PAGES_DESIGN where nodeId = ? and pageId > 0";

constexpr char lineBreak = '\r';

bool isDynMenuItem(db::Connection& connection, std::string_view nodeId, Twin twin) try {
    auto rows = connection.query(twin == Twin::Design ? selectIsItemDesign : selectIsItemLive, {nodeId});
    return rows.next() && text::toNumber(rows.text("dynMenu")) == 1;
} catch (...) {
    raiseFrom("isDynMenuItem !");
}

/// The node of the item that is to be marked: the deepest one on the way to the current page that is no deeper
/// than the menu. Only whether a page is in menus is asked, not whether it shows.
std::string_view referenceNode(db::Connection& connection, const MenuDefinition& menu,
                               std::string_view currentNode, Twin twin) {
    const auto longest = static_cast<std::size_t>(std::max(0, menu.maxLength()));
    std::string_view node = currentNode.substr(0, longest);
    while (node.size() >= PageIdentity::rootLength && static_cast<int>(node.size()) >= menu.minLength()) {
        if (isDynMenuItem(connection, node, twin)) break;
        node = parentOf(node);
    }
    return node;
}

/// Draws the items of one menu.
class ItemRun {
  public:
    ItemRun(MenuLayouts& layouts, const MenuDefinition& menu, std::string_view currentNode,
            std::string_view referenceNode)
        : layouts_(layouts), menu_(menu), currentNode_(currentNode), referenceNode_(referenceNode) {}

    std::string draw(const std::vector<MenuItem>& items) {
        for (const auto& item : items) add(item);
        return std::move(joined_);
    }

  private:
    /// An item without any text leaves no trace.
    void add(const MenuItem& item) {
        if (isHidden(item)) return;
        LevelLayout& layout = layouts_.ofLevel(levelOf(item));
        drawn_.clear();
        formOf(item, layout).appendTo(drawn_, item);
        if (drawn_.empty()) return;
        markers::checkSize(joined_.size(), layout.spacer().size() + drawn_.size() + 2);
        if (!joined_.empty()) joined_.append(1, lineBreak).append(layout.spacer());
        joined_.append(1, lineBreak).append(drawn_);
    }

    int levelOf(const MenuItem& item) const {
        const double length =
            static_cast<double>(item.nodeId.size()) - static_cast<double>(menu_.root.nodeId.size());
        return static_cast<int>(std::nearbyint(length / PageIdentity::levelLength));
    }

    /// Whether the current page is the node's or lies below it.
    bool leadsToCurrent(std::string_view nodeId) const { return text::startsWith(currentNode_, nodeId); }

    static int lengthOf(const MenuItem& item) { return static_cast<int>(item.nodeId.size()); }

    bool isHidden(const MenuItem& item) const {
        return lengthOf(item) > menu_.minLength() && lengthOf(item) <= menu_.maxLength() &&
               !leadsToCurrent(item.nodeId) && !leadsToCurrent(parentOf(item.nodeId));
    }

    const ItemText& formOf(const MenuItem& item, LevelLayout& layout) const {
        if (leadsToCurrent(item.nodeId)) {
            const bool isActive = menu_.showsWholeWay() || text::equals(item.nodeId, referenceNode_);
            return isActive ? layout.active() : layout.inactive();
        }
        return lengthOf(item) > menu_.maxLength() ? layout.whole() : layout.inactive();
    }

    MenuLayouts& layouts_;
    const MenuDefinition& menu_;
    std::string_view currentNode_;
    std::string_view referenceNode_;
    std::string drawn_;
    std::string joined_;
};

}  // namespace

std::string filledMenu(HostContext& host, db::Connection& connection, const MenuDefinition& menu,
                       std::string_view currentNode, const MenuView& view, std::string content) try {
    HTMLTemplate page(host);
    page.setStrVal(std::move(content));
    if (!page.blockExists("dynMenu")) return page.takeStrVal();
    const std::string_view reference =
        menu.marksOneItem() ? referenceNode(connection, menu, currentNode, view.twin) : std::string_view();
    MenuLayouts layouts(host, page);
    std::vector<MenuItem> items;
    if (!layouts.isEmpty()) items = itemsOf(host, connection, menu, currentNode, view);
    if (items.empty()) {
        page.replaceBlock("dynMenu", "");
        return page.takeStrVal();
    }
    const std::string drawn = ItemRun(layouts, menu, currentNode, reference).draw(items);
    if (page.blockExists("dynMenu_empty")) page.replaceBlock("dynMenu_empty", "");
    page.replaceBlock(drawn.empty() ? "dynMenu" : "dynMenu_levels", drawn);
    return page.takeStrVal();
} catch (...) {
    raiseFrom("fillItems (dynMenu) !");
}

}  // namespace torvex
