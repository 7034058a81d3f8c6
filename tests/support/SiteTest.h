#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "support/TestDatabase.h"
#include "support/TestHost.h"

namespace torvex::test {

/// One row's columns and what goes into them; columns that aren't named keep their default.
using Columns = std::vector<std::pair<std::string, Value>>;

void insertRow(db::Connection& connection, const std::string& table, const Columns& columns);

/// A page in the making. As made it is a content page that is online without limits, inherits its assets,
/// has computed neighbours and stands among its siblings by the last two digits of its node.
class PageBuilder {
  public:
    PageBuilder(db::Connection& connection, const std::string& nodeId, PageId pageId);

    PageBuilder& id(PageId pageId) { return set("pageId", pageId); }
    PageBuilder& type(const std::string& type) { return set("type", type); }
    PageBuilder& title(const std::string& title) { return set("title", title); }
    PageBuilder& order(double orderId) { return set("orderId", orderId); }
    PageBuilder& contentTemplate(int id) { return set("template", id); }
    PageBuilder& baseTemplate(int id) { return set("baseTemplate", id); }
    PageBuilder& stylesheet(int id) { return set("stylesheet", id); }
    PageBuilder& application(int id) { return set("application", id); }
    /// Set by hand.
    PageBuilder& neighbours(PageId previous, PageId next, PageId up);
    PageBuilder& online(int online = 1);
    PageBuilder& offline() { return online(0); }
    PageBuilder& dates(const std::string& from, const std::string& to);
    /// Any other column; an empty value is null. Those of the workflow go into the design alone.
    PageBuilder& set(const std::string& column, Value value);

    /// Into the design and the live table. The page's number.
    PageId insert();
    PageId insertInDesignOnly();
    PageId insertInLiveOnly();

  private:
    PageId insertInto(const std::string& table, Columns columns);

    db::Connection& connection_;
    Columns columns_;
    Columns liveColumns_;
};

/// The base of tests that serve a site: a fresh database on each engine, a host that is connected to it, and
/// a `cServer`. The installation lies at "/install/" in the memory file system; the site is "aa" and its
/// language "en" wherever nothing else is said. Nothing is there until a test makes it.
class SiteTest : public DatabaseTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    TestHost host;
    cServer& server() { return *server_; }
    /// In place of the one that is there: with modules.
    void serveWith(PageModules& modules);

    // The request
    void ask(const std::string& query, NamedValues form = {}, NamedValues serverVariables = {});

    // Rows
    PageBuilder page(const std::string& nodeId) { return {connection(), nodeId, ++lastPageId_}; }
    void row(const std::string& table, const Columns& columns) { insertRow(connection(), table, columns); }
    void body(PageId pageId, int bodyId, const std::string& text, int type = 1, int feedId = 0);
    void site(const std::string& site);
    void language(const std::string& lang, int charsetId = 1);
    void siteLanguage(const std::string& site, const std::string& lang, const std::string& title);
    void setting(const std::string& parameter, const std::string& value, const std::string& type);
    void word(double label, const std::string& text);

    // Design files: the register's entry and the file.
    void contentTemplate(int id, const std::string& site, const std::string& lang, const std::string& file,
                         const std::string& source);
    void baseTemplate(int id, const std::string& site, const std::string& lang, const std::string& file,
                      const std::string& source);
    void stylesheet(int id, const std::string& site, const std::string& lang, const std::string& file,
                    const std::string& source = "");
    void externalApplication(int id, const std::string& address);

    // Access
    void group(int groupId, const std::string& name);
    void pageGroup(PageId pageId, int groupId);
    void user(int userId, const std::string& name, const std::string& password,
              std::initializer_list<int> groups, const Value& from = {}, const Value& to = {});

    // Meta data
    void metaTag(int id, const std::string& site, const std::string& name);
    void metaData(PageId pageId, int id, const std::string& value);
    void inheritedMetaData(PageId pageId, int id);

    /// The table is gone: everything that reads it fails.
    void drop(const std::string& table);
    /// One cell of the first row that a statement finds; "" when it finds none.
    std::string cell(const std::string& statement);

  private:
    std::unique_ptr<cServer> server_;
    PageId lastPageId_ = 1000;
};

/// The description with which `call` fails; "" (and a failed test) when it doesn't, or not with an error of
/// an operation.
template <typename Call>
std::string errorOf(Call call) {
    try {
        call();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), operationErrorNumber);
        return error.what();
    }
    ADD_FAILURE() << "no error was raised";
    return {};
}

/// The lines that operations put in front of a cause, joined: the beginning of a description.
std::string chain(std::initializer_list<std::string_view> functions);

/// Texts that are no page, or would be one if they were read carelessly.
std::vector<std::string> badIdentifiers();

}  // namespace torvex::test
