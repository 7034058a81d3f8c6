#include "support/SiteTest.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "records/PageIdentity.h"

namespace torvex::test {

namespace {

constexpr std::string_view installPath = "/install/";

db::Parameter parameterOf(const Value& value) {
    if (value.isEmpty()) return nullptr;
    if (value.isNumber()) return value.number();
    if (value.isBoolean()) return value.boolean();
    if (value.isDate()) return value.date();
    return std::string_view(value.text());
}

/// Columns that only the design has.
bool isOfWorkflow(const std::string& column) {
    constexpr std::array columns{"editStatus",       "editor",        "editingDate",  "lockStatus",
                                 "lockedBy",         "lockingDate",   "deleteStatus", "deletedBy",
                                 "deletingDate",     "approveStatus", "approvedBy",   "approvingDate",
                                 "emailNotification"};
    return std::find(columns.begin(), columns.end(), column) != columns.end();
}

}  // namespace

void insertRow(db::Connection& connection, const std::string& table, const Columns& columns) {
    std::string names;
    std::string places;
    std::vector<db::Parameter> values;
    for (const auto& [name, value] : columns) {
        names += (names.empty() ? "" : ", ") + name;
        places += places.empty() ? "?" : ", ?";
        values.push_back(parameterOf(value));
    }
    connection.execute("insert into " + table + " (" + names + ") values (" + places + ")", values);
}

PageBuilder::PageBuilder(db::Connection& connection, const std::string& nodeId, PageId pageId)
    : connection_(connection) {
    const bool isRoot = nodeId.size() <= PageIdentity::rootLength;
    set("pageId", pageId).set("nodeId", nodeId);
    set("site", siteOf(nodeId)).set("lang", langOf(nodeId));
    set("parent", isRoot ? std::string_view() : parentOf(nodeId));
    order(isRoot ? 0 : std::strtod(nodeId.substr(nodeId.size() - 2).c_str(), nullptr));
    type("P").title(nodeId).dates("00000000", "99999999").online();
}

PageBuilder& PageBuilder::neighbours(PageId previous, PageId next, PageId up) {
    return set("navigation", "M").set("previous", previous).set("next", next).set("up", up);
}

PageBuilder& PageBuilder::online(int online) {
    liveColumns_ = {{"online", online}};
    return *this;
}

PageBuilder& PageBuilder::dates(const std::string& from, const std::string& to) {
    return set("onlineFrom", from).set("onlineTo", to);
}

PageBuilder& PageBuilder::set(const std::string& column, Value value) {
    for (auto& [name, held] : columns_) {
        if (name != column) continue;
        held = std::move(value);
        return *this;
    }
    columns_.emplace_back(column, std::move(value));
    return *this;
}

PageId PageBuilder::insertInto(const std::string& table, Columns columns) {
    columns.insert(columns.begin(), columns_.begin(), columns_.end());
    insertRow(connection_, table, columns);
    return columns_.front().second.number();
}

PageId PageBuilder::insert() {
    insertInDesignOnly();
    return insertInLiveOnly();
}

PageId PageBuilder::insertInDesignOnly() {
    return insertInto("TORVEX_PAGES_DESIGN", {});
}

PageId PageBuilder::insertInLiveOnly() {
    PageBuilder live = *this;
    std::erase_if(live.columns_, [](const auto& column) { return isOfWorkflow(column.first); });
    return live.insertInto("TORVEX_PAGES_LIVE", liveColumns_);
}

void SiteTest::SetUp() {
    DatabaseTest::SetUp();
    if (HasFatalFailure()) return;
    host.database.target = &database();
    auto& values = host.application;
    values.set("torvex_odbc", connectionText());
    values.set("torvex_install_path", installPath);
    for (const auto& [key, folder] : std::initializer_list<std::pair<const char*, const char*>>{
             {"torvex_root_path", "wwwroot/"},
             {"torvex_image_dir", "wwwroot/images/"},
             {"torvex_doc_dir", "wwwroot/documents/"},
             {"torvex_contentTemplates_dir", "contentTemplates/"},
             {"torvex_adminTemplates_dir", "torvex/templates/"},
             {"torvex_baseTemplates_dir", "baseTemplates/"},
             {"torvex_stylesheets_dir", "wwwroot/stylesheets/"}}) {
        values.set(key, std::string(installPath) + folder);
    }
    values.set("torvex_imgDir", "images/");
    values.set("torvex_image_url", "/images/");
    values.set("torvex_docDir", "documents/");
    values.set("torvex_doc_url", "/documents/");
    ask("");
    server_ = std::make_unique<cServer>(host.context());
    server_->connect(connection());
}

void SiteTest::TearDown() {
    server_.reset();
    host.database.target = nullptr;
    DatabaseTest::TearDown();
}

void SiteTest::serveWith(PageModules& modules) {
    server_ = std::make_unique<cServer>(host.context(), &modules);
    server_->connect(connection());
}

void SiteTest::ask(const std::string& query, NamedValues form, NamedValues serverVariables) {
    host.request = Request(query, std::move(form), std::move(serverVariables));
    if (host.request.serverVariable("HTTP_HOST").empty()) {
        host.request.setServerVariable("HTTP_HOST", "www.site.test");
    }
}

void SiteTest::body(PageId pageId, int bodyId, const std::string& text, int type, int feedId) {
    row("TORVEX_BODIES_LIVE",
        {{"pageId", pageId}, {"bodyId", bodyId}, {"bodyType", type}, {"feedId", feedId}, {"bodyText", text}});
}

void SiteTest::site(const std::string& site) {
    row("TORVEX_SITES", {{"site", site}, {"name", "Site " + site}});
}

void SiteTest::language(const std::string& lang, int charsetId) {
    row("TORVEX_LANGUAGES", {{"lang", lang}, {"name", "Language " + lang}, {"charset_id", charsetId}});
}

void SiteTest::siteLanguage(const std::string& site, const std::string& lang, const std::string& title) {
    row("TORVEX_SITES_LANGUAGES", {{"site", site}, {"lang", lang}, {"title", title}});
}

void SiteTest::setting(const std::string& parameter, const std::string& value, const std::string& type) {
    connection().execute("delete from TORVEX_SETUP where parameter = ? and loginId = 0", {parameter});
    row("TORVEX_SETUP", {{"parameter", parameter}, {"value", value}, {"dataType", type}, {"loginId", 0}});
}

void SiteTest::word(double label, const std::string& text) {
    connection().execute("delete from TORVEX_INTERFACE_VOCAB where lang_label = ?", {label});
    row("TORVEX_INTERFACE_VOCAB", {{"lang_label", label}, {"lang_vocab1", text}});
}

void SiteTest::contentTemplate(int id, const std::string& site, const std::string& lang,
                               const std::string& file, const std::string& source) {
    row("TORVEX_TEMPLATES",
        {{"tpl_id", id}, {"tpl_site", site}, {"tpl_lang", lang}, {"tpl_name", file}, {"tpl_filename", file}});
    host.files.bytes["/install/contentTemplates/" + site + "/" + lang + "/" + file] = source;
}

void SiteTest::baseTemplate(int id, const std::string& site, const std::string& lang, const std::string& file,
                            const std::string& source) {
    row("TORVEX_BASETEMPLATES", {{"btpl_id", id},
                                 {"btpl_site", site},
                                 {"btpl_lang", lang},
                                 {"btpl_name", file},
                                 {"btpl_filename", file}});
    host.files.bytes["/install/baseTemplates/" + site + "/" + lang + "/" + file] = source;
}

void SiteTest::stylesheet(int id, const std::string& site, const std::string& lang, const std::string& file,
                          const std::string& source) {
    row("TORVEX_STYLESHEETS",
        {{"ss_id", id}, {"ss_site", site}, {"ss_lang", lang}, {"ss_name", file}, {"ss_filename", file}});
    host.files.bytes["/install/wwwroot/stylesheets/" + site + "/" + lang + "/" + file] = source;
}

void SiteTest::externalApplication(int id, const std::string& address) {
    row("TORVEX_APPLICATIONS",
        {{"app_id", id}, {"app_name", "Application " + std::to_string(id)}, {"app_href_public", address}});
}

void SiteTest::group(int groupId, const std::string& name) {
    row("TORVEX_USERGROUPS", {{"groupId", groupId}, {"name", name}});
}

void SiteTest::pageGroup(PageId pageId, int groupId) {
    row("TORVEX_PAGES_GROUPS_LIVE", {{"pageId", pageId}, {"groupId", groupId}});
}

void SiteTest::user(int userId, const std::string& name, const std::string& password,
                    std::initializer_list<int> groups, const Value& from, const Value& to) {
    row("TORVEX_USERS", {{"userId", userId},
                         {"username", name},
                         {"password", password},
                         {"validFrom", from},
                         {"validTo", to}});
    for (const int groupId : groups) row("TORVEX_GROUPS_USERS", {{"groupId", groupId}, {"userId", userId}});
}

void SiteTest::metaTag(int id, const std::string& site, const std::string& name) {
    row("TORVEX_METADATA", {{"metaData_id", id},
                            {"metaData_site", site},
                            {"metaData_name", name},
                            {"metaData_description", "Of " + name}});
}

void SiteTest::metaData(PageId pageId, int id, const std::string& value) {
    row("TORVEX_PAGES_METADATA_LIVE", {{"metaData_pageId", pageId},
                                       {"metaData_id", id},
                                       {"metaData_inherited", 0},
                                       {"metaData_value", value}});
}

void SiteTest::inheritedMetaData(PageId pageId, int id) {
    row("TORVEX_PAGES_METADATA_LIVE",
        {{"metaData_pageId", pageId}, {"metaData_id", id}, {"metaData_inherited", 1}});
}

void SiteTest::drop(const std::string& table) {
    connection().execute("drop table " + table);
}

std::string SiteTest::cell(const std::string& statement) {
    auto rows = connection().query(statement);
    return rows.next() ? rows.value(std::size_t{0}).toText() : std::string();
}

std::string chain(std::initializer_list<std::string_view> functions) {
    std::string lines;
    for (const std::string_view function : functions) {
        lines.append("Error in function ").append(function).append("\r\n");
    }
    return lines;
}

std::vector<std::string> badIdentifiers() {
    return {"",
            "   ",
            "-5",
            "0",
            "99999999999999999999",
            "1.5",
            "1e3",
            "aa.en'01",
            "' or 1=1 --",
            "aa.en.\"01\"",
            std::string("aa.en\0.01", 9),
            std::string("12\0", 3),
            "aa.en.\xC3",
            "aa.en.%",
            "aa_en",
            std::string(100 * 1024, 'a'),
            std::string(100 * 1024, '9')};
}

}  // namespace torvex::test
