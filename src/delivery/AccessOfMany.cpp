#include "delivery/AccessOfMany.h"

#include <algorithm>

#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/db/ValueList.h"
#include "platform/text/Text.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

constexpr std::string_view selectPages = "select pageId, nodeId, type from TORVEX_PAGES_LIVE where pageId";
constexpr std::string_view selectNodes = "select pageId, nodeId from TORVEX_PAGES_DESIGN where nodeId";
constexpr std::string_view selectPageGroups =
    "select pageId, groupId from TORVEX_PAGES_GROUPS_LIVE where pageId";
constexpr std::string_view selectFolderGroups =
    "select fld_id, groupId from TORVEX_FOLDERS_GROUPS where fld_type = 'doc' and fld_site = ? and fld_id";

}  // namespace

AccessOfMany::AccessOfMany(HostContext& host, db::Connection& connection)
    : host_(host),
      connection_(connection),
      visitor_(visitorOf(host)),
      today_(host.clock.today()),
      extranet_(hasExtranet(host)) {}

void AccessOfMany::learnPages(const std::vector<PageIdentity>& pages) {
    std::vector<PageId> found;
    learnLivePages(pages, found);
    if (!extranet_) return;
    std::vector<PageId> groupsOf = found;
    learnNodes(found, groupsOf);
    learnPageGroups(groupsOf);
}

void AccessOfMany::learnLivePages(const std::vector<PageIdentity>& pages, std::vector<PageId>& found) {
    static const std::string statement = db::withList(selectPages);
    std::vector<db::Parameter> values;
    for (const PageIdentity& page : pages) {
        if (page.isValid() && pages_.try_emplace(page.pageId).second) values.emplace_back(page.pageId);
    }
    db::forEachRow(connection_, statement, values, [&](const db::Rows& rows) {
        const PageId pageId = rows.number("pageId");
        if (!pages_[pageId]) found.push_back(pageId);
        pages_[pageId] = LivePage{rows.text("nodeId"), isFolder(rows.view("type"))};
    });
}

/// All pages above the given ones, by their nodes; those that are new stand in `groupsOf` afterwards as well.
void AccessOfMany::learnNodes(const std::vector<PageId>& pages, std::vector<PageId>& groupsOf) {
    static const std::string statement = db::withList(selectNodes);
    constexpr PageId noPage = -1;
    std::vector<std::string> wanted;
    for (const PageId page : pages) {
        const std::string node = text::lower(pages_[page]->nodeId);
        if (node.size() > PageIdentity::longestNode) continue;
        std::string_view above = parentOf(node);
        for (; above.size() >= PageIdentity::rootLength; above = parentOf(above)) {
            if (!nodes_.try_emplace(std::string(above), noPage).second) break;
            wanted.emplace_back(above);
        }
    }
    const std::vector<db::Parameter> values(wanted.begin(), wanted.end());
    db::forEachRow(connection_, statement, values, [&](const db::Rows& rows) {
        const PageId pageId = rows.number("pageId", noPage);
        PageId& known = nodes_[text::lower(rows.view("nodeId"))];
        if (known == noPage) groupsOf.push_back(known = pageId);
    });
}

void AccessOfMany::learnPageGroups(const std::vector<PageId>& pages) {
    static const std::string statement = db::withList(selectPageGroups);
    std::vector<db::Parameter> values;
    for (const PageId page : pages) {
        if (pageGroups_.try_emplace(page).second) values.emplace_back(page);
    }
    db::forEachRow(connection_, statement, values, [&](const db::Rows& rows) {
        pageGroups_[rows.number("pageId")].insert(rows.number("groupId"));
    });
}

bool AccessOfMany::mayEnter(const PageIdentity& page) {
    if (!page.isValid()) return false;
    if (!pages_.contains(page.pageId)) learnPages({page});
    const auto& live = pages_[page.pageId];
    if (!live) return false;
    // The way through a folder ends where its first child does; hardly a list holds folders.
    if (live->isFolder) return torvex::mayEnter(host_, connection_, page);
    return !extranet_ || groupsLetIn(page.pageId, live->nodeId);
}

/// By the page's own groups, or those of the nearest page above that has some of its own.
bool AccessOfMany::groupsLetIn(PageId pageId, std::string_view nodeId) {
    while (nodeId.size() >= PageIdentity::rootLength) {
        const auto groups = pageGroups_.find(pageId);
        if (groups == pageGroups_.end() || groups->second.empty()) return false;
        const double lowest = *groups->second.begin();
        if (lowest > everybodyGroup) {
            const bool isNamed = !visitor_.username.empty() && !visitor_.password.empty();
            return isNamed && isMemberOfAny(groups->second);
        }
        if (lowest != inheritedGroup) return true;
        nodeId = parentOf(nodeId);
        const auto above = nodes_.find(text::lower(nodeId));
        pageId = above == nodes_.end() ? -1 : above->second;
    }
    return true;
}

bool AccessOfMany::isMemberOfAny(const Groups& groups) {
    if (!ownGroups_) ownGroups_ = groupsOfVisitor(connection_, visitor_, today_);
    return std::any_of(groups.begin(), groups.end(),
                       [this](double group) { return ownGroups_->contains(group); });
}

bool AccessOfMany::seesAllFolders() {
    if (!seesAllFolders_) seesAllFolders_ = torvex::seesAllFolders(host_, connection_);
    return *seesAllFolders_;
}

void AccessOfMany::learnFolders(const std::vector<std::string>& folders) {
    if (seesAllFolders()) return;
    std::map<std::string, std::set<std::string>> wanted;
    for (const std::string& folder : folders) {
        const auto guard = guardedFolder(host_, folder);
        const auto* guarded = std::get_if<GuardedFolder>(&guard);
        if (guarded == nullptr || guarded->type != "doc") continue;
        GuardedFolder at = *guarded;
        const std::string site = text::lower(at.site);
        do {
            const std::string id = text::lower(at.id);
            if (!folderGroups_.try_emplace({site, id}).second) break;
            wanted[site].insert(id);
        } while (at.goUp());
    }
    for (const auto& [site, ids] : wanted) learnFolderGroups(site, ids);
}

void AccessOfMany::learnFolderGroups(const std::string& site, const std::set<std::string>& ids) {
    static const std::string statement = db::withList(selectFolderGroups);
    std::vector<db::Parameter> values;
    const auto ask = [&] {
        values.resize(1 + db::listLength, values.back());
        auto rows = connection_.query(statement, values);
        while (rows.next()) {
            folderGroups_[{site, text::lower(rows.view("fld_id"))}].insert(rows.number("groupId"));
        }
        values.clear();
    };
    for (const std::string& id : ids) {
        if (values.empty()) values.emplace_back(std::string_view(site));
        values.emplace_back(std::string_view(id));
        if (values.size() == 1 + db::listLength) ask();
    }
    if (!values.empty()) ask();
}

int AccessOfMany::folderAccess(const std::string& folder) {
    if (seesAllFolders()) return folderAccess::open;
    const auto guard = guardedFolder(host_, folder);
    if (const int* code = std::get_if<int>(&guard)) return *code;
    const auto& guarded = std::get<GuardedFolder>(guard);
    if (guarded.type != "doc") return folderAccess::noGroups;
    if (!folderGroups_.contains({text::lower(guarded.site), text::lower(guarded.id)})) learnFolders({folder});
    return folderVerdict(guarded);
}

int AccessOfMany::folderVerdict(GuardedFolder folder) {
    const Groups* groups = nullptr;
    do {
        groups = &folderGroups_[{text::lower(folder.site), text::lower(folder.id)}];
        if (groups->empty()) return folderAccess::noGroups;
    } while (*groups->begin() == inheritedGroup && folder.goUp());
    if (*groups->begin() <= everybodyGroup) return folderAccess::open;
    if (visitor_.username.empty() && visitor_.password.empty()) return folderAccess::noLogin;
    return isMemberOfAny(*groups) ? folderAccess::member : folderAccess::noLogin;
}

}  // namespace torvex
