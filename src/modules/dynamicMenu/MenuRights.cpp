#include "modules/dynamicMenu/MenuRights.h"

#include <algorithm>

#include "delivery/PageRecord.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

namespace torvex {

namespace {

constexpr std::string_view selectMemberships =
    "select b.groupId, a.validFrom, a.validTo from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on a.userId = b.userId "
    "where a.username = ? and a.password = ?";

}  // namespace

MenuRights::MenuRights(db::Connection& connection, PageIdentity root, Visitor visitor, std::string_view today)
    : connection_(connection),
      root_(std::move(root)),
      visitor_(std::move(visitor)),
      today_(today),
      rootLetsThrough_(groupVerdict(connection, root_.pageId, root_.nodeId, visitor_, today_) >=
                       pageAccess::open) {}

bool MenuRights::letThrough(const MenuPage& page, std::span<const PageGroup> groups) {
    const auto [first, last] = std::ranges::equal_range(groups, page.pageId, {}, &PageGroup::pageId);
    if (first == last) return false;
    if (first->group == inheritedGroup)
        return rootLetsThrough_ || !text::equals(parentOf(page.nodeId), root_.nodeId);
    return first->group <= everybodyGroup || isMemberOf({first, last});
}

bool MenuRights::isMemberOf(std::span<const PageGroup> groups) {
    if (visitor_.username.empty() || visitor_.password.empty()) return false;
    const auto& mine = memberships();
    const auto found = std::ranges::find_first_of(mine, groups, {}, &Membership::group, &PageGroup::group);
    return found != mine.end() && isWithin(today_, found->validFrom, found->validTo);
}

const std::vector<MenuRights::Membership>& MenuRights::memberships() {
    if (memberships_) return *memberships_;
    memberships_.emplace();
    auto rows = connection_.query(selectMemberships, {visitor_.username, visitor_.password});
    while (rows.next())
        memberships_->push_back({rows.number("groupId"), rows.text("validFrom"), rows.text("validTo")});
    return *memberships_;
}

}  // namespace torvex
