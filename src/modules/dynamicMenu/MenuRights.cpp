#include "modules/dynamicMenu/MenuRights.h"

#include <algorithm>
#include <tuple>

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

bool comesBefore(const PageGroup& one, const PageGroup& other) {
    return std::tie(one.pageId, one.group) < std::tie(other.pageId, other.group);
}

}  // namespace

MenuRights::MenuRights(db::Connection& connection, PageIdentity root, Visitor visitor, std::string_view today,
                       std::vector<PageGroup> groups)
    : connection_(connection),
      root_(std::move(root)),
      visitor_(std::move(visitor)),
      today_(today),
      groups_(std::move(groups)) {
    std::sort(groups_.begin(), groups_.end(), comesBefore);
}

bool MenuRights::letThrough(const MenuPage& page) {
    const auto [first, last] = std::ranges::equal_range(groups_, page.pageId, {}, &PageGroup::pageId);
    if (first == last) return false;
    if (first->group == inheritedGroup)
        return !text::equals(parentOf(page.nodeId), root_.nodeId) || rootLetsThrough();
    return first->group <= everybodyGroup || isMemberOf({first, last});
}

bool MenuRights::isMemberOf(std::span<const PageGroup> groups) {
    if (visitor_.username.empty() || visitor_.password.empty()) return false;
    const auto& mine = memberships();
    const auto found = std::ranges::find_first_of(mine, groups, {}, &Membership::group, &PageGroup::group);
    return found != mine.end() && isWithin(today_, found->validFrom, found->validTo);
}

bool MenuRights::rootLetsThrough() {
    if (!rootVerdict_)
        rootVerdict_ =
            groupVerdict(connection_, root_.pageId, root_.nodeId, visitor_, today_) >= pageAccess::open;
    return *rootVerdict_;
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
