#include "modules/dynamicMenu/MenuRights.h"

#include <algorithm>

#include "delivery/PageRecord.h"
#include "platform/text/Text.h"

namespace torvex {

MenuRights::MenuRights(db::Connection& connection, PageIdentity root, Visitor visitor, std::string_view today)
    : connection_(connection),
      root_(std::move(root)),
      visitor_(std::move(visitor)),
      today_(today),
      rootLetsThrough_(groupVerdict(connection, root_.pageId, root_.nodeId, visitor_, today_) >=
                       pageAccess::open) {}

bool MenuRights::letThrough(const MenuPage& page, std::span<const PageGroup> groups) {
    const auto first = std::ranges::lower_bound(groups, page.pageId, {}, &PageGroup::pageId);
    const auto last = std::ranges::upper_bound(groups, page.pageId, {}, &PageGroup::pageId);
    if (first == last) return false;
    if (first->group == inheritedGroup)
        return rootLetsThrough_ || !text::equals(parentOf(page.nodeId), root_.nodeId);
    return first->group <= everybodyGroup || isMemberOf({first, last});
}

bool MenuRights::isMemberOf(std::span<const PageGroup> groups) {
    if (visitor_.username.empty() || visitor_.password.empty()) return false;
    if (!ownGroups_) ownGroups_ = groupsOfVisitor(connection_, visitor_, today_);
    return std::ranges::any_of(
        groups, [this](double group) { return ownGroups_->contains(group); }, &PageGroup::group);
}

}  // namespace torvex
