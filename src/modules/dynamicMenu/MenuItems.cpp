#include "modules/dynamicMenu/MenuItems.h"

#include <optional>

#include "delivery/Access.h"
#include "modules/dynamicMenu/MenuPages.h"
#include "modules/dynamicMenu/MenuRights.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"

namespace torvex {

namespace {

/// Collects the items of one menu.
class ItemCollection {
  public:
    ItemCollection(HostContext& host, db::Connection& connection, const MenuDefinition& menu,
                   std::string_view currentNode, const MenuView& view)
        : host_(host),
          connection_(connection),
          menu_(menu),
          view_(view),
          today_(host.clock.today()),
          rights_(visitorsRights()),
          pages_(connection, {menu.root.nodeId, currentNode, menu.minLength(), menu.maxLength(), view.twin,
                              today_, rights_.has_value()}) {}

    std::vector<MenuItem> run() {
        addChildrenOf(menu_.root.nodeId);
        return std::move(items_);
    }

  private:
    void addChildrenOf(const std::string& nodeId) {
        host_.deadline().check();
        for (const auto& page : pages_.childrenOf(nodeId)) {
            if (!page.isInMenu || !isShown(page) || !isOpen(page)) continue;
            items_.push_back({page.pageId, page.nodeId, page.title});
            if (static_cast<int>(page.nodeId.size()) < menu_.maxLength()) addChildrenOf(page.nodeId);
        }
    }

    /// The page, or what a folder leads to.
    bool isShown(const MenuPage& page) const {
        if (view_.twin == Twin::Design) return true;
        const MenuPage* at = &page;
        while (at != nullptr && at->isFolder) at = pages_.firstChildOf(*at);
        return at != nullptr && at->isOnline;
    }

    /// Nothing when everything is open to who looks at the menu.
    std::optional<MenuRights> visitorsRights() const {
        if (view_.forAuthors || !menu_.asksForRights() || !hasExtranet(host_)) return std::nullopt;
        return asLevel("hasAccess !",
                       [&] { return MenuRights(connection_, menu_.root, visitorOf(host_), today_); });
    }

    /// The groups of every page on the way to what is shown are asked.
    bool isOpen(const MenuPage& page) {
        if (!rights_) return true;
        return asLevel("hasAccess !", [&] {
            const MenuPage* at = &page;
            while (at != nullptr && rights_->letThrough(*at, pages_.groups())) {
                if (!at->isFolder) return true;
                at = pages_.firstChildOf(*at);
            }
            return false;
        });
    }

    HostContext& host_;
    db::Connection& connection_;
    const MenuDefinition& menu_;
    const MenuView view_;
    const std::string today_;
    std::optional<MenuRights> rights_;
    MenuPages pages_;
    std::vector<MenuItem> items_;
};

}  // namespace

std::vector<MenuItem> itemsOf(HostContext& host, db::Connection& connection, const MenuDefinition& menu,
                              std::string_view currentNode, const MenuView& view) try {
    return ItemCollection(host, connection, menu, currentNode, view).run();
} catch (...) {
    raiseFrom("addItems (dynMenu) !");
}

}  // namespace torvex
