// desk: links of a tree's designs that lead nowhere.

#include <algorithm>
#include <map>
#include <tuple>
#include <vector>

#include "desk/FirstRow.h"
#include "desk/desk.h"
#include "media/MediaKind.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/ValueList.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/PageId.h"

namespace torvex {

namespace {

constexpr std::size_t mostLines = 500;
constexpr std::size_t deadLinkColumns = 7;

// Targets are far fewer than links, and those that may be dead are few of them: they are found first, and then what
// leads to them. These are written as cross joins, since SQLite takes the tables of one in their order. A folder is
// never on line itself. Of pages that are switched off it is said twice: once as the index has it, and once so that
// PostgreSQL knows how few they are.

constexpr std::string_view toPages =
    "select k.pageId, d.nodeId, d.title, k.bodyId, k.linkPage as target, "
    "t.title as targetTitle, case when t.pageId is null then 'gone' when l.pageId is null then 'notLive' "
    "else 'offline' end as reason "
    "from (select linkPage from TORVEX_MISSING_PAGES "
    "union select pageId from TORVEX_PAGES_LIVE "
    "where coalesce(online, 0) <> 1 and (online is null or online <> 1) "
    "union select pageId from TORVEX_PAGES_LIVE where onlineFrom > ? "
    "union select pageId from TORVEX_PAGES_LIVE where onlineTo > '' and onlineTo < ?) x "
    "left outer join TORVEX_PAGES_DESIGN t on t.pageId = x.linkPage "
    "left outer join TORVEX_PAGES_LIVE l on l.pageId = x.linkPage "
    "cross join TORVEX_LINKS k cross join TORVEX_PAGES_DESIGN d "
    "where k.linkPage = x.linkPage and k.linkTwin = 'D' "
    "and d.pageId = k.pageId and d.site = ? and d.lang = ? "
    "and (t.pageId is null or l.pageId is null or (coalesce(l.type, '') <> 'F' "
    "and (coalesce(l.online, 0) <> 1 or coalesce(l.onlineFrom, '') > ? "
    "or coalesce(nullif(l.onlineTo, ''), '99999999') < ?))) order by d.nodeId, k.bodyId, k.linkPage limit ?";
constexpr std::string_view toNodes =
    "select k.pageId, d.nodeId, d.title, k.bodyId, x.linkTarget as target, "
    "t.title as targetTitle, case when t.pageId is null then 'gone' when l.pageId is null then 'notLive' "
    "else 'offline' end as reason "
    "from (select distinct linkTarget from TORVEX_LINKS where linkKind = 'page' and linkTarget > '') x "
    "left outer join TORVEX_PAGES_DESIGN t on t.nodeId = x.linkTarget "
    "left outer join TORVEX_PAGES_LIVE l on l.pageId = t.pageId "
    "cross join TORVEX_LINKS k cross join TORVEX_PAGES_DESIGN d "
    "where k.linkKind = 'page' and k.linkTarget = x.linkTarget and k.linkTwin = 'D' "
    "and d.pageId = k.pageId and d.site = ? and d.lang = ? "
    "and (t.pageId is null or l.pageId is null or (coalesce(l.type, '') <> 'F' "
    "and (coalesce(l.online, 0) <> 1 or coalesce(l.onlineFrom, '') > ? "
    "or coalesce(nullif(l.onlineTo, ''), '99999999') < ?))) "
    "order by d.nodeId, k.bodyId, x.linkTarget limit ?";

constexpr std::string_view toImages =
    "select k.pageId, d.nodeId, d.title, k.bodyId, k.linkSite as fileSite, k.linkTarget as target, "
    "'' as targetTitle, 'noFile' as reason from TORVEX_MISSING_IMAGES x "
    "cross join TORVEX_LINKS k cross join TORVEX_PAGES_DESIGN d "
    "where k.linkKind = 'image' and k.linkTarget = x.linkTarget "
    "and k.linkSite = x.linkSite and k.linkTwin = 'D' and d.pageId = k.pageId and d.site = ? and d.lang = ? "
    "and not exists (select 1 from TORVEX_IMAGES i "
    "where i.img_site = x.linkSite and i.img_filename = x.linkTarget) "
    "order by d.nodeId, k.bodyId, x.linkTarget limit ?";
/// Of the page's own site where none is named, by file or by title.
constexpr std::string_view toDocuments =
    "select k.pageId, d.nodeId, d.title, k.bodyId, x.fileSite, x.linkTarget as target, "
    "'' as targetTitle, 'noFile' as reason "
    "from (select linkSite, linkTarget, coalesce(nullif(linkSite, ''), ?) as fileSite from TORVEX_LINKS "
    "where linkKind = 'document' group by linkSite, linkTarget) x "
    "cross join TORVEX_LINKS k cross join TORVEX_PAGES_DESIGN d "
    "where k.linkKind = 'document' and k.linkTarget = x.linkTarget "
    "and k.linkSite = x.linkSite and k.linkTwin = 'D' and d.pageId = k.pageId and d.site = ? and d.lang = ? "
    "and not exists (select 1 from TORVEX_DOCUMENTS i "
    "where i.doc_site = x.fileSite and i.doc_filename = x.linkTarget) "
    "and not exists (select 1 from TORVEX_DOCUMENTS i "
    "where i.doc_site = x.fileSite and i.doc_title = x.linkTarget) "
    "order by d.nodeId, k.bodyId, x.linkTarget limit ?";
constexpr std::string_view unchosen =
    "select k.pageId, d.nodeId, d.title, k.bodyId, '' as target, '' as targetTitle, "
    "'unchosen' as reason from TORVEX_LINKS k "
    "inner join TORVEX_PAGES_DESIGN d on d.pageId = k.pageId "
    "where k.linkKind = 'unchosen' and k.linkTwin = 'D' and d.site = ? and d.lang = ? "
    "order by d.nodeId, k.bodyId limit ?";

/// A link as it is listed.
struct DeadLink {
    PageId pageId = 0;
    std::string nodeId;
    std::string title;
    double bodyId = 0;
    std::string target;
    std::string reason;
    std::string targetTitle;  ///< of a page
};

/// The title under which the trail knows a page last.
constexpr std::string_view lastTitles =
    "select pageId, pageTitle from TORVEX_AUDIT_TRAIL where auditId in (select max(auditId) "
    "from TORVEX_AUDIT_TRAIL where pageTitle > '' and pageId";

/// What lies in a file system is a file even where no register knows it.
class FilesOnDisk {
  public:
    FilesOnDisk(const HostContext& host, MediaKind kind) : host_(host), kind_(kind) {}

    bool has(const std::string& site, const std::string& path) {
        const auto [known, isNew] = known_.try_emplace({site, path}, false);
        if (isNew && text::find(path, "..") == text::npos) {
            known->second =
                host_.files.fileExists(mediaDirectory(host_.application, kind_, site) + "/" + path);
        }
        return known->second;
    }

  private:
    const HostContext& host_;
    MediaKind kind_;
    std::map<std::pair<std::string, std::string>, bool> known_;
};

/// The list in the making.
class DeadLinks {
  public:
    void add(const db::Rows& row) {
        links_.push_back({row.number("pageId"), row.text("nodeId"), row.text("title"),
                          std::max(row.number("bodyId"), 0.0), row.text("target"), row.text("reason"),
                          row.text("targetTitle")});
    }
    void addAll(db::Rows rows) {
        while (rows.next()) add(rows);
    }
    void addMissing(db::Rows rows, FilesOnDisk files) {
        while (rows.next()) {
            const std::string site = rows.text("fileSite");
            const std::string path = rows.text("target");
            if (files.has(site, path)) continue;
            add(rows);
            links_.back().target = site + "/" + path;
        }
    }
    void sortAndCut(int from) {
        std::sort(links_.begin(), links_.end(), [](const DeadLink& one, const DeadLink& other) {
            const int order = text::compare(one.nodeId, other.nodeId);
            if (order != 0) return order < 0;
            return std::tie(one.bodyId, one.target, one.reason) <
                   std::tie(other.bodyId, other.target, other.reason);
        });
        links_.erase(links_.begin(), links_.begin() + std::min<std::ptrdiff_t>(std::ssize(links_), from));
        if (links_.size() > mostLines) links_.resize(mostLines);
    }
    void nameWhatIsGone(db::Connection& connection) {
        const std::string statement = db::withList(lastTitles) + " group by pageId)";
        std::vector<db::Parameter> gone;
        for (const DeadLink& link : links_)
            if (isGonePage(link)) gone.emplace_back(text::toNumber(link.target));
        std::map<PageId, std::string> titles;
        db::forEachRow(connection, statement, gone,
                       [&](const db::Rows& row) { titles[row.number("pageId")] = row.text("pageTitle"); });
        for (DeadLink& link : links_)
            if (isGonePage(link)) link.targetTitle = titles[text::toNumber(link.target)];
    }
    Value grid() const {
        ResultGrid grid(deadLinkColumns);
        for (const DeadLink& link : links_) {
            grid.add({link.pageId, link.nodeId, link.title, link.bodyId, link.target, link.reason,
                      link.targetTitle});
        }
        return gridOrEmpty(std::move(grid));
    }

  private:
    /// Nodes are given anew: another page may have had this one later.
    static bool isGonePage(const DeadLink& link) {
        return link.reason == "gone" && text::isNumeric(link.target);
    }

    std::vector<DeadLink> links_;
};

}  // namespace

Value desk::getDeadLinks(const std::string& site, const std::string& lang, double from) try {
    const auto first = firstRow(from);
    if (!first) return {};
    const std::string wantedSite = text::lowerTrim(site);
    const std::string wantedLang = text::lowerTrim(lang);
    const std::string_view s = wantedSite;
    const std::string_view l = wantedLang;
    const std::string today = host_.clock.today();
    const std::string_view day = today;
    const int most = *first + static_cast<int>(mostLines);
    db::Connection& connection = this->connection();
    DeadLinks links;
    links.addAll(connection.query(toPages, {day, day, s, l, day, day, most}));
    links.addAll(connection.query(toNodes, {s, l, day, day, most}));
    links.addMissing(connection.query(toImages, {s, l, most}), FilesOnDisk(host_, MediaKind::Images));
    links.addMissing(connection.query(toDocuments, {s, s, l, most}),
                     FilesOnDisk(host_, MediaKind::Documents));
    links.addAll(connection.query(unchosen, {s, l, most}));
    links.sortAndCut(*first);
    links.nameWhatIsGone(connection);
    return links.grid();
} catch (...) {
    raiseFrom("getDeadLinks !");
}

}  // namespace torvex
