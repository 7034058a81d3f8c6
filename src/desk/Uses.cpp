// desk: where something is used.

#include <optional>

#include "accounts/Actor.h"
#include "desk/DesignReach.h"
#include "desk/FirstRow.h"
#include "desk/ReachCondition.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr int mostLines = 500;

// Each gives pageId, bodyId and twin.

/// Neighbours count where they were set by hand.
constexpr std::string_view ofPage =
    "select pageId, bodyId, linkTwin as twin from TORVEX_LINKS where linkPage = ? "
    "union select pageId, bodyId, linkTwin from TORVEX_LINKS where linkKind = 'page' and linkTarget = ? "
    "union select pageId, 0, 'D' from TORVEX_PAGES_DESIGN where previous = ? and navigation = 'M' "
    "union select pageId, 0, 'D' from TORVEX_PAGES_DESIGN where next = ? and navigation = 'M' "
    "union select pageId, 0, 'D' from TORVEX_PAGES_DESIGN where up = ? and navigation = 'M' "
    "union select pageId, 0, 'D' from TORVEX_PAGES_DESIGN where loginPage = ? "
    "union select pageId, 0, 'D' from TORVEX_PAGES_DESIGN where app_system_folder = ? "
    "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where previous = ? and navigation = 'M' "
    "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where next = ? and navigation = 'M' "
    "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where up = ? and navigation = 'M' "
    "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where loginPage = ? "
    "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where app_system_folder = ?";
constexpr int columnsOfPages = 10;

// A file that no site is named for is of the page's own; a document may be named by its title.
constexpr std::string_view ofImages =
    "select k.pageId, k.bodyId, k.linkTwin as twin from TORVEX_LINKS k "
    "where k.linkKind = 'image' and k.linkTarget >= ? and k.linkTarget < ? and k.linkSite = ?";
constexpr std::string_view ofDocuments =
    "select k.pageId, k.bodyId, k.linkTwin as twin from TORVEX_LINKS k "
    "inner join TORVEX_PAGES_DESIGN p on p.pageId = k.pageId "
    "where k.linkKind = 'document' and k.linkTarget >= ? and k.linkTarget < ? "
    "and (k.linkSite = ? or (k.linkSite = '' and p.site = ?)) "
    "union select k.pageId, k.bodyId, k.linkTwin from TORVEX_DOCUMENTS t "
    "inner join TORVEX_LINKS k on k.linkKind = 'document' and k.linkTarget = t.doc_title "
    "inner join TORVEX_PAGES_DESIGN p on p.pageId = k.pageId "
    "where t.doc_filename >= ? and t.doc_filename < ? and t.doc_site = ? "
    "and (k.linkSite = t.doc_site or (k.linkSite = '' and p.site = t.doc_site))";

/// What something with a number is used by.
struct NumberedKind {
    std::string_view kind;
    std::string_view select;
};
constexpr NumberedKind numberedKinds[] = {
    {"template",
     "select pageId, 0 as bodyId, 'D' as twin from TORVEX_PAGES_DESIGN where template = ? "
     "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where template = ?"},
    {"baseTemplate",
     "select pageId, 0 as bodyId, 'D' as twin from TORVEX_PAGES_DESIGN where baseTemplate = ? "
     "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where baseTemplate = ?"},
    {"stylesheet",
     "select pageId, 0 as bodyId, 'D' as twin from TORVEX_PAGES_DESIGN where stylesheet = ? "
     "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where stylesheet = ?"},
    {"application",
     "select pageId, 0 as bodyId, 'D' as twin from TORVEX_PAGES_DESIGN where application = ? "
     "union select pageId, 0, 'L' from TORVEX_PAGES_LIVE where application = ?"},
    {"htmlFeed",
     "select pageId, bodyId, 'D' as twin from TORVEX_BODIES_DESIGN where bodyType = 2 and feedId = ? "
     "union select pageId, bodyId, 'L' from TORVEX_BODIES_LIVE where bodyType = 2 and feedId = ?"},
    {"xmlFeed",
     "select pageId, bodyId, 'D' as twin from TORVEX_BODIES_DESIGN where bodyType = 3 and feedId = ? "
     "union select pageId, bodyId, 'L' from TORVEX_BODIES_LIVE where bodyType = 3 and feedId = ?"},
    {"group",
     "select pageId, 0 as bodyId, 'D' as twin from TORVEX_PAGES_GROUPS_DESIGN where groupId = ? "
     "union select pageId, 0, 'L' from TORVEX_PAGES_GROUPS_LIVE where groupId = ?"},
};

// The uses stand between these parts. Meta data have no body.
constexpr std::string_view selectFrom =
    "select distinct u.pageId, d.site, d.lang, d.nodeId, d.title, "
    "case when u.bodyId < 0 then 0 else u.bodyId end as bodyId, u.twin from (";
constexpr std::string_view joined = ") u inner join TORVEX_PAGES_DESIGN d on d.pageId = u.pageId where ";
constexpr std::string_view ordered = " order by d.nodeId, u.twin, bodyId limit ? offset ?";
constexpr std::size_t usesColumns = 7;

/// A statement and its values: one number, texts, and that number again so many times.
struct Uses {
    std::string_view select;
    std::optional<double> number = {};
    std::vector<std::string> texts = {};
    int again = 0;

    void addTo(std::vector<db::Parameter>& values) const {
        if (number) values.emplace_back(*number);
        for (const std::string& text : texts) values.emplace_back(std::string_view(text));
        for (int i = 0; i < again; ++i) values.emplace_back(*number);
    }
};

std::optional<Uses> usesOfPage(db::Connection& connection, const std::string& id) {
    const PageIdentity page = identify(connection, id);
    if (!page.isValid()) return std::nullopt;
    return Uses{ofPage, page.pageId, {text::lower(page.nodeId)}, columnsOfPages};
}

/// Files that begin with a path end before this one.
std::string endOfPath(const std::string& path) {
    // A path ends where the next sign, which none has, would follow.
    return path.ends_with('/') ? endOfPrefix(path) : path + '\x01';
}

/// "SITE/PATH"; a path that ends in "/" is that of a folder, for all that lies in it.
std::optional<Uses> usesOfFile(bool isImage, std::string_view id) {
    const std::size_t divider = id.find('/');
    if (divider == 0 || divider == std::string_view::npos || divider + 1 == id.size()) return std::nullopt;
    const std::string site = text::lower(id.substr(0, divider));
    const std::string path(id.substr(divider + 1));
    const std::string end = endOfPath(path);
    if (isImage) return Uses{ofImages, {}, {path, end, site}, 0};
    return Uses{ofDocuments, {}, {path, end, site, site, path, end, site}, 0};
}

std::optional<Uses> usesOf(db::Connection& connection, std::string_view kind, const std::string& id) {
    if (text::equals(kind, "page")) return usesOfPage(connection, id);
    const bool isImage = text::equals(kind, "image");
    if (isImage || text::equals(kind, "document")) return usesOfFile(isImage, text::trim(id));
    if (!text::isNumeric(id)) return std::nullopt;
    for (const auto& [word, select] : numberedKinds) {
        if (text::equals(kind, word)) return Uses{select, text::toNumber(id), {}, 1};
    }
    return std::nullopt;
}

}  // namespace

Value desk::getUses(const std::string& kind, const std::string& id, double from) try {
    const auto uses = usesOf(connection(), text::trim(kind), id);
    const EditReach reach = designReachOf(connection(), actorOf(host_));
    const auto first = firstRow(from);
    if (!uses || reach.isNowhere() || !first) return {};
    const ReachCondition isReadable("d.nodeId", reach);
    std::vector<db::Parameter> values;
    uses->addTo(values);
    isReadable.addTo(values);
    values.insert(values.end(), {mostLines, *first});
    std::string statement(selectFrom);
    statement.append(uses->select).append(joined).append(isReadable.text()).append(ordered);
    ResultGrid grid(usesColumns);
    auto rows = connection().query(statement, values);
    while (rows.next()) {
        grid.add({rows.value("pageId"), rows.text("site"), rows.text("lang"), rows.text("nodeId"),
                  rows.text("title"), rows.value("bodyId"), rows.text("twin")});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getUses !");
}

}  // namespace torvex
