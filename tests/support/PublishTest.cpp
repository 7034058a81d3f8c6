#include "support/PublishTest.h"

#include <algorithm>
#include <fmt/format.h>

#include "records/PageIdentity.h"

namespace torvex::test {

namespace {

constexpr DateTime earlier{2026, 1, 2, 3, 4, 5};

constexpr const char* tables[] = {
    "TORVEX_PAGES_DESIGN",
    "TORVEX_PAGES_LIVE",
    "TORVEX_PAGES_GROUPS_DESIGN",
    "TORVEX_PAGES_GROUPS_LIVE",
    "TORVEX_BODIES_DESIGN",
    "TORVEX_BODIES_LIVE",
    "TORVEX_PAGES_METADATA_DESIGN",
    "TORVEX_PAGES_METADATA_LIVE",
    "TORVEX_LINKS",
    "TORVEX_PAGE_WORDS",
    "TORVEX_LOGGING",
    "TORVEX_MAILFORM",
    "TORVEX_MAILFORM_OPTIONS",
    "TORVEX_SEARCH",
    "TORVEX_SEARCH_LOG",
    "TORVEX_DYNMENU_DESIGN",
    "TORVEX_DYNMENU_LIVE",
    "TORVEX_USERGROUPS",
    "TORVEX_EDIT_RIGHTS",
    "TORVEX_LOGINS",
};

std::string shown(const Value& value) {
    return value.isEmpty() ? "-" : value.toText();
}

}  // namespace

void PublishTest::SetUp() {
    ManagerTest::SetUp();
    if (HasFatalFailure()) return;
    failing_ = std::make_unique<FailingDatabase>(database());
    host.database.target = failing_.get();
    login(bert, "bert", "Bert Broker", "session-of-bert");
    page("aa.en").insert();
}

void PublishTest::TearDown() {
    host.database.target = nullptr;
    ManagerTest::TearDown();
}

PageBuilder PublishTest::approved(const std::string& nodeId) {
    PageBuilder builder = page(nodeId);
    builder.set("editStatus", "M").set("approveStatus", 1).set("approvedBy", bert);
    builder.set("approvingDate", earlier).set("editor", bert).set("editingDate", earlier);
    return builder;
}

PageBuilder PublishTest::marked(const std::string& nodeId) {
    PageBuilder builder = approved(nodeId);
    builder.set("deleteStatus", 1).set("deletedBy", bert).set("deletingDate", earlier);
    return builder;
}

void PublishTest::designBody(PageId pageId, int bodyId, const std::string& text, int type, int feedId) {
    row("TORVEX_BODIES_DESIGN",
        {{"pageId", pageId}, {"bodyId", bodyId}, {"bodyType", type}, {"feedId", feedId}, {"bodyText", text}});
}

void PublishTest::designGroup(PageId pageId, int groupId) {
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", pageId}, {"groupId", groupId}});
}

void PublishTest::designMetadata(PageId pageId, int id, const Value& value, int inherited) {
    row("TORVEX_PAGES_METADATA_DESIGN", {{"metaData_pageId", pageId},
                                         {"metaData_id", id},
                                         {"metaData_inherited", inherited},
                                         {"metaData_value", value}});
}

void PublishTest::hits(const std::string& nodeId, const std::string& day, int count) {
    row("TORVEX_LOGGING", {{"nodeId", nodeId},
                           {"yyyymmdd", day},
                           {"site", siteOf(nodeId)},
                           {"lang", langOf(nodeId)},
                           {"hits", count}});
}

std::string PublishTest::cellOf(const std::string& table, PageId pageId, const std::string& column) {
    auto rows = connection().query("select " + column + " from " + table + " where pageId = ?", {pageId});
    return rows.next() ? shown(rows.value(std::size_t{0})) : std::string();
}

std::string PublishTest::live(PageId pageId, const std::string& column) {
    return cellOf("TORVEX_PAGES_LIVE", pageId, column);
}

std::string PublishTest::design(PageId pageId, const std::string& column) {
    return cellOf("TORVEX_PAGES_DESIGN", pageId, column);
}

Content PublishTest::content() {
    Content held;
    for (const char* table : tables) {
        auto& lines = held[table];
        auto rows = connection().query(std::string("select * from ") + table);
        while (rows.next()) {
            std::string line;
            for (std::size_t i = 0; i < rows.columns(); ++i) line += shown(rows.value(i)) + "|";
            lines.push_back(line);
        }
        std::sort(lines.begin(), lines.end());
    }
    return held;
}

std::string PublishTest::annasLine(PageId pageId, const std::string& nodeId, const std::string& action,
                                   const std::string& description) {
    return fmt::format("{}|Anna Author|{}|{}|0|{}|{}", anna, ident(pageId), nodeId, action, description);
}

std::string PublishTest::snapshotPath(const std::string& nodeId) {
    return fmt::format("/install/search/html/{}/{}/{}.html", langOf(nodeId), siteOf(nodeId), nodeId);
}

}  // namespace torvex::test
