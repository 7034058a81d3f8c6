#include "search/LivePages.h"

#include <vector>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageKind.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view selectPage =
    "select a.pageId, a.nodeId, a.type, a.title, a.template, b.tpl_filename from TORVEX_PAGES_LIVE a "
    "left outer join TORVEX_TEMPLATES b on a.template = b.tpl_id where a.nodeId = ?";
constexpr std::string_view selectNextPages =
    "select a.pageId, a.nodeId, a.type, a.title, a.template, b.tpl_filename from TORVEX_PAGES_LIVE a "
    "left outer join TORVEX_TEMPLATES b on a.template = b.tpl_id where a.nodeId > ? order by a.nodeId limit "
    "500";
/// Those that `systemBranch::hasNumber` doesn't tell.
constexpr std::string_view countPages =
    "select count(*) as pages from TORVEX_PAGES_LIVE where nodeId not like '%.99%'";
constexpr std::string_view selectType = "select type from TORVEX_PAGES_LIVE where nodeId = ?";

std::vector<LivePage> read(db::Rows rows) {
    std::vector<LivePage> pages;
    while (rows.next()) {
        pages.push_back({rows.number("pageId"), rows.text("nodeId"), rows.text("type"), rows.text("title"),
                         static_cast<int>(rows.number("template")),
                         std::string(text::trim(rows.text("tpl_filename")))});
    }
    return pages;
}

void visitAll(const std::vector<LivePage>& pages, const std::function<void(const LivePage&)>& visit) {
    for (const LivePage& page : pages) {
        if (!systemBranch::hasNumber(page.nodeId)) visit(page);
    }
}

}  // namespace

bool LivePage::isFolder() const {
    return torvex::isFolder(type);
}

void visitLivePage(db::Connection& connection, std::string_view nodeId,
                   const std::function<void(const LivePage&)>& visit) {
    visitAll(read(connection.query(selectPage, {nodeId})), visit);
}

void visitLivePages(db::Connection& connection, const std::function<void(const LivePage&)>& visit) {
    std::string last;
    for (;;) {
        const auto pages = read(connection.query(selectNextPages, {last}));
        if (pages.empty()) return;
        visitAll(pages, visit);
        last = pages.back().nodeId;
    }
}

std::int64_t countLivePages(db::Connection& connection) {
    auto rows = connection.query(countPages);
    return rows.next() ? static_cast<std::int64_t>(rows.number("pages")) : 0;
}

bool hasLiveContent(db::Connection& connection, std::string_view nodeId) {
    if (systemBranch::hasNumber(nodeId)) return false;
    auto rows = connection.query(selectType, {nodeId});
    while (rows.next()) {
        if (!isFolder(rows.view("type"))) return true;
    }
    return false;
}

}  // namespace torvex
