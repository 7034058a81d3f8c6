#include "delivery/AccessOfMany.h"

#include <gmock/gmock.h>
#include <random>

#include "support/ExtranetTest.h"
#include "support/InterruptedConnection.h"

namespace torvex::test {
namespace {

class AccessOfManyTest : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_doc_security", true);
    }
    void folderGroup(const std::string& type, const std::string& id, int group) {
        row("TORVEX_FOLDERS_GROUPS",
            {{"fld_type", type}, {"fld_site", "aa"}, {"fld_id", id}, {"groupId", group}});
    }
    /// Visitors of all kinds: none, with and without groups, with a wrong password, with half a login.
    void logInAs(int kind) {
        static const std::pair<const char*, const char*> kinds[] = {
            {"", ""},    {"ann", "annpw"}, {"ben", "benpw"},   {"cleo", "cleopw"}, {"ann", "wrong"},
            {"ann", ""}, {"", "annpw"},    {"dora", "dorapw"}, {"ANN", "ANNPW"}};
        host.session.set("tvx_username", kinds[kind].first);
        host.session.set("tvx_password", kinds[kind].second);
    }
    static constexpr int visitorKinds = 9;
};
INSTANTIATE_TEST_SUITE_P(Engines, AccessOfManyTest, bothEngines(), engineName);

/// Branches of pages whose groups are their own, inherited, several or none, among them folders, pages that
/// aren't live, and pages that have moved since they were published.
TEST_P(AccessOfManyTest, PagesAreJudgedAsTheyAreOneByOne) {
    std::mt19937 random(7);
    const auto pick = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    user(104, "dora", "dorapw", {2, 3}, "20200101", "20201231");
    group(4, "guests");
    std::vector<std::string> nodes = {"aa.bb"};
    std::vector<PageIdentity> pages;
    for (int i = 0; i < 120; ++i) {
        const std::string parent = nodes[static_cast<std::size_t>(pick(static_cast<int>(nodes.size()) - 1))];
        const std::string node = parent + "." + std::to_string(10 + i % 89);
        if (std::find(nodes.begin(), nodes.end(), node) != nodes.end()) continue;
        nodes.push_back(node);
        const PageId pageId = 2000 + i;
        PageBuilder made = page(node);
        made.id(pageId).type(pick(5) == 0 ? "F" : "P");
        switch (pick(9)) {
            case 0:
                made.insertInDesignOnly();
                break;
            case 1:
                made.insertInDesignOnly();
                page("aa.bb.02.0" + std::to_string(2 + i % 8)).id(pageId).insertInLiveOnly();
                break;
            default:
                made.insert();
        }
        for (int group = pick(6); group < 5; group += 1 + pick(3)) pageGroup(pageId, group);
        pages.push_back({pageId, node});
    }
    pages.push_back({-1, "aa.bb.01"});
    pages.push_back({12, "aa"});
    pages.push_back({99999, "aa.bb.77"});
    for (int id = 10; id <= 18; ++id) pages.push_back({static_cast<PageId>(id), "aa.bb"});
    int allowed = 0;
    for (int kind = 0; kind < visitorKinds; ++kind) {
        logInAs(kind);
        AccessOfMany together(host.context(), connection());
        together.learnPages(pages);
        AccessOfMany alone(host.context(), connection());
        for (const PageIdentity& page : pages) {
            SCOPED_TRACE(page.nodeId + " for visitor " + std::to_string(kind));
            const bool may = mayEnter(host.context(), connection(), page);
            EXPECT_EQ(together.mayEnter(page), may);
            EXPECT_EQ(alone.mayEnter(page), may);
            allowed += may ? 1 : 0;
        }
    }
    EXPECT_GT(allowed, 100);
    EXPECT_LT(allowed, visitorKinds * 100);
}

TEST_P(AccessOfManyTest, WithoutAnExtranetEveryLivePageIsOpen) {
    host.application.set("torvex_extranet", false);
    page("aa.bb.20").id(30).insertInDesignOnly();
    AccessOfMany access(host.context(), connection());
    access.learnPages({{12, "aa.bb.02"}, {15, "aa.bb.04"}, {30, "aa.bb.20"}});
    EXPECT_TRUE(access.mayEnter({12, "aa.bb.02"}));
    EXPECT_TRUE(access.mayEnter({15, "aa.bb.04"}));
    EXPECT_FALSE(access.mayEnter({30, "aa.bb.20"}));
}

TEST_P(AccessOfManyTest, FoldersAreJudgedAsTheyAreOneByOne) {
    std::mt19937 random(11);
    const auto pick = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    user(104, "dora", "dorapw", {2, 3}, "20200101", "20201231");
    std::vector<std::string> folders = {
        "/install/wwwroot/documents/",      "/install/wwwroot/documents/a/",
        "/install/wwwroot/documents/aa/",   "/install/wwwroot/documents/bb/001/",
        "/install/wwwroot/documents/aa/x/", "/elsewhere/aa/001/"};
    for (int group = pick(4); group < 4; group += 2) folderGroup("doc", "", group);
    for (int i = 1; i <= 30; ++i) {
        const std::string first = "0" + std::to_string(10 + i % 6);
        const std::string second = "0" + std::to_string(10 + i);
        for (int group = pick(4); group < 4; group += 1 + pick(2)) folderGroup("doc", first + second, group);
        if (i <= 6) folderGroup("doc", first, pick(3));
        folderGroup("img", first, 3);
        folders.push_back("/install/wwwroot/documents/aa/" + first + "/" + second + "/");
        folders.push_back("/install/wwwroot/documents/AA/" + first + "/");
    }
    for (const bool security : {true, false}) {
        host.application.set("torvex_doc_security", security);
        for (int kind = 0; kind < visitorKinds; ++kind) {
            logInAs(kind);
            AccessOfMany together(host.context(), connection());
            together.learnFolders(folders);
            AccessOfMany alone(host.context(), connection());
            for (const std::string& folder : folders) {
                SCOPED_TRACE(folder + " for visitor " + std::to_string(kind));
                const int access = server().checkFolderAccess(folder);
                EXPECT_EQ(together.folderAccess(folder), access);
                EXPECT_EQ(alone.folderAccess(folder), access);
            }
        }
    }
    host.session.set("torvex_username", "author");
    EXPECT_EQ(AccessOfMany(host.context(), connection()).folderAccess(folders.back()), 0);
}

TEST_P(AccessOfManyTest, WhatIsLearnedCostsAFewStatements) {
    std::vector<PageIdentity> pages;
    for (int i = 0; i < 96; ++i) {
        const std::string node = "aa.bb.02." + std::to_string(10 + i % 90) + (i >= 90 ? ".01" : "");
        page(node).id(2000 + i).insert();
        pageGroup(2000 + i, 0);
        pages.push_back({static_cast<PageId>(2000 + i), node});
    }
    logIn("ben");
    InterruptedConnection counted(connection());
    AccessOfMany access(host.context(), counted);
    access.learnPages(pages);
    for (const PageIdentity& page : pages) EXPECT_TRUE(access.mayEnter(page)) << page.nodeId;
    EXPECT_LT(counted.queries, 12);
}

}  // namespace
}  // namespace torvex::test
