#include "support/SetupTest.h"

#include <utility>

#include "platform/text/Text.h"
#include "support/NewPage.h"

namespace torvex::test {

namespace {

struct WrittenTable {
    const char* name;
    const char* order;
};
constexpr WrittenTable writtenTables[] = {{"TORVEX_PAGES_DESIGN", "pageId"},
                                          {"TORVEX_PAGES_LIVE", "pageId"},
                                          {"TORVEX_PAGES_GROUPS_DESIGN", "pageId, groupId"},
                                          {"TORVEX_PAGES_GROUPS_LIVE", "pageId, groupId"},
                                          {"TORVEX_BODIES_DESIGN", "pageId, bodyId"},
                                          {"TORVEX_BODIES_LIVE", "pageId, bodyId"},
                                          {"TORVEX_PAGES_METADATA_DESIGN", "metaData_pageId, metaData_id"},
                                          {"TORVEX_PAGES_METADATA_LIVE", "metaData_pageId, metaData_id"},
                                          {"TORVEX_AUDIT_TRAIL", "auditId"}};

}  // namespace

db::Lease InterruptedDatabase::open(std::string_view text, std::string_view user, std::string_view password,
                                    db::Purpose purpose) {
    if (purpose == db::Purpose::Transaction && beforeChange) std::exchange(beforeChange, nullptr)();
    return target->open(text, user, password, purpose);
}

void SetupTest::SetUp() {
    ManagerTest::SetUp();
    if (HasFatalFailure()) return;
    page("aa.en").id(10).title("Home").order(1).insert();
    page("aa.en.01").id(11).type("F").title("Eleven").insert();
    page("aa.en.02").id(12).title("Twelve").insert();
    page("aa.en.99").id(13).type("F").insert();
    page("aa.en.99.01").id(14).type("F").insert();
    baseTemplate(1, "aa", "en", "base.htm", "");
    contentTemplate(2, "aa", "en", "page.htm", "<!--!torvex_body_1!--><!--!torvex_body_2!-->");
    stylesheet(3, "aa", "en", "site.css");
    externalApplication(4, "/app.asp");
    group(5, "Staff");
}

cManager& SetupTest::filled() {
    cManager& record = nextRequest();
    fillNewPage(record, "Fresh", "P", 2);
    return record;
}

cManager& SetupTest::filled(const Record& changes) {
    changes(filled());
    return manager();
}

void SetupTest::giveDesign(cManager& record) {
    record.setPgBaseTemplateId(1);
    record.setPgTemplateId(2);
    record.setPgStylesheetId(3);
}

void SetupTest::expectRefused(const Record& changes, const std::string& code) {
    for (const bool isNew : {true, false}) {
        SCOPED_TRACE(isNew ? "saveNewPageSetup" : "savePageSetup");
        const std::string before = content();
        filled(changes);
        EXPECT_EQ(isNew ? saveNew() : saveTwelve(), code);
        EXPECT_EQ(content(), before);
    }
}

void SetupTest::expectSaved(const Record& changes, const std::function<void(PageId)>& look) {
    for (const bool isNew : {true, false}) {
        SCOPED_TRACE(isNew ? "saveNewPageSetup" : "savePageSetup");
        filled([&](cManager& record) {
            record.setPgTitle("Saved " + std::to_string(++saved_));
            changes(record);
        });
        const std::string result = isNew ? saveNew() : saveTwelve();
        EXPECT_FALSE(text::startsWith(result, "-")) << result;
        look(manager().pgPageId());
    }
}

std::string SetupTest::listed(const std::string& statement) {
    std::string list;
    auto rows = connection().query(statement);
    while (rows.next()) {
        for (std::size_t i = 0; i < rows.columns(); ++i) {
            const Value value = rows.value(i);
            list += (value.isEmpty() ? "null" : value.toText()) + (i + 1 < rows.columns() ? "|" : "\n");
        }
    }
    return list;
}

std::string SetupTest::content() {
    std::string all;
    for (const auto& [name, order] : writtenTables) {
        try {
            all += std::string(name) + "\n" +
                   listed("select * from " + std::string(name) + " order by " + order);
        } catch (const db::DatabaseError&) {
            all += "gone\n";
        }
    }
    return all;
}

std::string SetupTest::column(const std::string& name, PageId pageId) {
    return cell("select " + name + " from TORVEX_PAGES_DESIGN where pageId = " + text::fromNumber(pageId));
}

std::string SetupTest::groupsOf(PageId pageId) {
    std::string list =
        listed("select groupId from TORVEX_PAGES_GROUPS_DESIGN where pageId = " + text::fromNumber(pageId) +
               " order by groupId");
    return std::string(text::trim(text::replaceAll(list, "\n", " ")));
}

std::string SetupTest::orderOf(const std::string& nodeId) {
    return cell("select orderId from TORVEX_PAGES_DESIGN where nodeId = '" + nodeId + "'");
}

std::string SetupTest::liveOrderOf(const std::string& nodeId) {
    return cell("select orderId from TORVEX_PAGES_LIVE where nodeId = '" + nodeId + "'");
}

void SetupTest::designBody(PageId pageId, int bodyId) {
    row("TORVEX_BODIES_DESIGN", {{"pageId", pageId}, {"bodyId", bodyId}, {"bodyText", "Text"}});
}

std::string SetupTest::bodiesOf(PageId pageId) {
    std::string list =
        listed("select bodyId from TORVEX_BODIES_DESIGN where pageId = " + text::fromNumber(pageId) +
               " order by bodyId");
    return std::string(text::trim(text::replaceAll(list, "\n", " ")));
}

void SetupTest::whenItWrites(std::function<void()> event) {
    interrupted_.target = &database();
    interrupted_.beforeChange = std::move(event);
    host.database.target = &interrupted_;
}

void SetupTest::dropDesignRow(PageId pageId) {
    connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {pageId});
}

}  // namespace torvex::test
