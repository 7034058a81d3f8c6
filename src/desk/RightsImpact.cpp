// registers: whom a change of a role's rights would hit.

#include <array>
#include <map>

#include "accounts/Actor.h"
#include "accounts/AdvancedRights.h"
#include "accounts/EditScope.h"
#include "accounts/RoleRights.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::size_t impactColumns = 5;

constexpr std::string_view selectHolders =
    "select distinct l.name, l.loginId, l.username from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_LOGINS l on l.loginId = a.loginId where a.roleId = ? order by l.name, l.loginId";
/// All that those who have the role may do there, by whichever role.
constexpr std::string_view selectRights =
    "select a.loginId, b.roleId, b.onOff, b.move, b.publish, b.approve, b.edit, b.scope "
    "from TORVEX_ROLES_LOGINS h inner join TORVEX_ROLES_LOGINS a on a.loginId = h.loginId "
    "inner join TORVEX_EDIT_RIGHTS b on b.roleId = a.roleId "
    "where h.roleId = ? and b.site = ? and b.lang = ?";
constexpr std::string_view countBranch =
    "select count(*) as pages from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?";
/// All that opens the entry there but the row that is to be changed.
constexpr std::string_view selectOtherAccess =
    "select distinct a.loginId, b.viewAccess, b.editAccess from TORVEX_ROLES_LOGINS h "
    "inner join TORVEX_ROLES_LOGINS a on a.loginId = h.loginId "
    "inner join TORVEX_ADVANCED_RIGHTS b on b.roleId = a.roleId "
    "where h.roleId = ? and b.advId = ? and (b.site = '' or b.site = ?) and (b.lang = '' or b.lang = ?) "
    "and not (b.roleId = ? and b.site = ? and b.lang = ?)";

struct Holder {
    int loginId;
    std::string name;
};

/// Without the administrator, whose rights come from no role.
std::vector<Holder> holdersOf(db::Connection& connection, int roleId) {
    std::vector<Holder> holders;
    auto rows = connection.query(selectHolders, {roleId});
    while (rows.next())
        if (!isAdministrator(rows.text("username")))
            holders.push_back({static_cast<int>(rows.number("loginId")), rows.text("name")});
    return holders;
}

/// Where somebody may do each of the tasks, in one tree.
using Reaches = std::array<std::vector<std::string>, editTasks.size()>;

void add(Reaches& reaches, EditTask task, const std::string& root, std::string_view scope) {
    auto& reach = reaches.at(static_cast<std::size_t>(task));
    for (std::string& node : reachInTree(root, scope)) reach.push_back(std::move(node));
}

struct Reach {
    Reaches now;
    Reaches afterwards;
};

std::map<int, Reach> reachesOf(db::Connection& connection, int roleId, const EditGrant& wanted) {
    std::map<int, Reach> logins;
    const std::string root = wanted.site + "." + wanted.lang;
    auto rows = connection.query(selectRights, {roleId, wanted.site, wanted.lang});
    while (rows.next()) {
        Reach& reach = logins[static_cast<int>(rows.number("loginId"))];
        for (const EditTask task : editTasks) {
            if (rows.number(wordOf(task)) != 1) continue;
            add(reach.now, task, root, rows.view("scope"));
            if (static_cast<int>(rows.number("roleId")) != roleId)
                add(reach.afterwards, task, root, rows.view("scope"));
        }
    }
    return logins;
}

/// How many pages lie at some nodes and below them. Each node is counted once.
class PageCounts {
  public:
    explicit PageCounts(db::Connection& connection) : connection_(connection) {}

    int of(const std::vector<std::string>& nodes) {
        int sum = 0;
        for (const std::string& node : outermost(nodes)) sum += ofBranch(node);
        return sum;
    }

  private:
    int ofBranch(const std::string& node) {
        const auto known = counts_.find(node);
        if (known != counts_.end()) return known->second;
        auto rows = connection_.query(countBranch, {node, endOfPrefix(node)});
        const int pages = rows.next() ? static_cast<int>(rows.number("pages")) : 0;
        return counts_[node] = pages;
    }

    db::Connection& connection_;
    std::map<std::string, int> counts_;
};

struct Access {
    bool view = false;
    bool edit = false;
};

std::map<int, Access> otherAccessOf(db::Connection& connection, int roleId, const EntryGrant& wanted) {
    std::map<int, Access> logins;
    auto rows = connection.query(selectOtherAccess, {roleId, wanted.entry, wanted.site, wanted.lang, roleId,
                                                     wanted.site, wanted.lang});
    while (rows.next()) {
        Access& access = logins[static_cast<int>(rows.number("loginId"))];
        access.view |= rows.number("viewAccess") == 1;
        access.edit |= rows.number("editAccess") == 1;
    }
    return logins;
}

}  // namespace

Value registers::weighEditRights(int roleId, const std::string& site, const std::string& lang,
                                 const std::string& rights, const std::string& scope) try {
    ResultGrid grid(impactColumns);
    const EditGrant wanted{text::lowerTrim(site), text::lowerTrim(lang),
                           editRightsFrom(text::trim(rights)).value_or(EditRights()), scope};
    auto reaches = reachesOf(connection(), roleId, wanted);
    PageCounts pages(connection());
    for (const Holder& holder : holdersOf(connection(), roleId)) {
        Reach& reach = reaches[holder.loginId];
        for (const EditTask task : editTasks) {
            const auto at = static_cast<std::size_t>(task);
            if (wanted.rights.has(task))
                add(reach.afterwards, task, wanted.site + "." + wanted.lang, wanted.scope);
            const int now = pages.of(reach.now.at(at));
            const int afterwards = pages.of(reach.afterwards.at(at));
            if (now != afterwards) grid.add({holder.loginId, holder.name, wordOf(task), now, afterwards});
        }
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("weighEditRights !");
}

Value registers::weighAdvancedRight(int roleId, int entry, const std::string& site, const std::string& lang,
                                    bool view, bool edit) try {
    ResultGrid grid(impactColumns);
    const EntryGrant wanted{entry, text::lowerTrim(site), text::lowerTrim(lang), view, edit};
    const EntryOffer offer = offerOf(connection(), entry);
    const EntryGrant had = entryGrantOf(connection(), roleId, entry, wanted.site, wanted.lang);
    auto others = otherAccessOf(connection(), roleId, wanted);
    for (const Holder& holder : holdersOf(connection(), roleId)) {
        const Access other = others[holder.loginId];
        const auto weigh = [&](std::string_view access, bool isOffered, bool now, bool afterwards) {
            if (isOffered && now != afterwards)
                grid.add({holder.loginId, holder.name, access, now ? 1 : 0, afterwards ? 1 : 0});
        };
        weigh("view", offer.view, other.view || had.view, other.view || view);
        weigh("edit", offer.edit, other.edit || had.edit, other.edit || edit);
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("weighAdvancedRight !");
}

}  // namespace torvex
