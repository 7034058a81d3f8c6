#include <gmock/gmock.h>

#include "search/designs/PageIndex.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class DeskImpactTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        addBert();
        role(3);
        editRights(3, "aa", "en", {"edit"});
        page("aa.en").id(1).title("Home").set("editStatus", "P").insert();
        page("aa.en.01").id(12).title("Walks").set("editStatus", "P").insert();
    }
    PageBuilder live(const std::string& node, PageId pageId, const std::string& title) {
        PageBuilder builder = page(node);
        builder.id(pageId).title(title).set("editStatus", "P");
        return builder;
    }
    std::vector<std::string> impact(const std::string& page = "12") {
        indexMissingPages(host.context(), connection());
        return linesOf(desk().getImpact(page));
    }
    /// Without the lines of the branch itself.
    std::vector<std::string> around() {
        auto lines = impact();
        std::erase_if(lines, [](const std::string& line) { return line.starts_with("page|"); });
        return lines;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskImpactTest, bothEngines(), engineName);

TEST_P(DeskImpactTest, TheWholeBranchIsListedByNode) {
    live("aa.en.01.02", 14, "Night").insert();
    live("aa.en.01.01", 13, "Day").insert();
    live("aa.en.02", 20, "Other").insert();
    EXPECT_THAT(impact("aa.en.01"),
                ElementsAre("page|12|aa.en.01|Walks|0|live", "page|13|aa.en.01.01|Day|0|live",
                            "page|14|aa.en.01.02|Night|0|live"));
}

TEST_P(DeskImpactTest, HeldAndUnapprovedPagesAreNamed) {
    live("aa.en.01.01", 13, "Day").set("lockStatus", 1).set("lockedBy", bert).insert();
    live("aa.en.01.02", 14, "Night").set("editStatus", "M").insert();
    live("aa.en.01.03", 15, "Noon").set("editStatus", "M").set("approveStatus", 1).insert();
    live("aa.en.01.04", 16, "Marked").set("deleteStatus", 1).insert();
    EXPECT_THAT(around(), ElementsAre("held|13|aa.en.01.01|Day|0|Bert Broker",
                                      "notApproved|14|aa.en.01.02|Night|0|changed",
                                      "notApproved|16|aa.en.01.04|Marked|0|marked"));
}

TEST_P(DeskImpactTest, LinksFromOutsideAreNamedOnceWhicheverTwinTheyAreIn) {
    live("aa.en.01.01", 13, "Day").insert();
    live("aa.en.02", 20, "Other").insert();
    designBody(20, 1, R"~(<a href="page(13)"><a href="page(12)">)~");
    body(20, 1, R"~(<a href="page(12)">)~");
    body(20, 2, R"~(<a href="page(aa.en.01)">)~");
    designBody(13, 1, R"~(<a href="page(12)">)~");
    designBody(20, 3, R"~(<a href="page(1)">)~");
    EXPECT_THAT(around(), ElementsAre("link|20|aa.en.02|Other|1|Walks (aa.en.01)",
                                      "link|20|aa.en.02|Other|1|Day (aa.en.01.01)",
                                      "link|20|aa.en.02|Other|2|Walks (aa.en.01)"));
}

TEST_P(DeskImpactTest, NeighboursSetByHandAreLinksOfTheSetup) {
    live("aa.en.02", 20, "Other").set("navigation", "M").set("next", 12).set("up", 12).insert();
    live("aa.en.03", 30, "Computed").set("navigation", "A").set("next", 12).insert();
    live("aa.en.04", 40, "Form").set("app_system_folder", 12).insertInDesignOnly();
    EXPECT_THAT(around(), ElementsAre("link|20|aa.en.02|Other|0|next: Walks (aa.en.01)",
                                      "link|20|aa.en.02|Other|0|up: Walks (aa.en.01)",
                                      "link|40|aa.en.04|Form|0|app_system_folder: Walks (aa.en.01)"));
}

TEST_P(DeskImpactTest, PagesThatLogInThereGroupsAndMenusAreNamed) {
    live("aa.en.01.01", 13, "Day").set("loginPage", 12).insert();
    live("aa.en.02", 20, "Other").set("loginPage", 13).insert();
    row("TORVEX_USERGROUPS", {{"groupId", 21}, {"name", "Friends"}, {"entryPage", 13}, {"exitPage", 12}});
    row("TORVEX_USERGROUPS", {{"groupId", 22}, {"name", "Staff"}, {"entryPage", 20}});
    row("TORVEX_DYNMENU_DESIGN", {{"pageId", 12}});
    row("TORVEX_DYNMENU_LIVE", {{"pageId", 12}});
    row("TORVEX_DYNMENU_LIVE", {{"pageId", 20}});
    EXPECT_THAT(around(), ElementsAre("login|20|aa.en.02|Other|0|Day (aa.en.01.01)",
                                      "entry|13|aa.en.01.01|Day|0|Friends",
                                      "exit|12|aa.en.01|Walks|0|Friends", "menu|12|aa.en.01|Walks|0|"));
}

TEST_P(DeskImpactTest, OfPagesThatIMayNotReadOnlyThatTheyAreIsTold) {
    live("bb.en", 60, "Secret plans").insert();
    designBody(60, 1, R"~(<a href="page(12)">)~");
    EXPECT_THAT(around(), ElementsAre("link|0|||0|Walks (aa.en.01)"));
    actAsSa();
    EXPECT_THAT(around(), ElementsAre("link|60|bb.en|Secret plans|1|Walks (aa.en.01)"));
}

TEST_P(DeskImpactTest, APageThatIsntThereHasNone) {
    for (const auto& bad : badIdentifiers()) EXPECT_THAT(impact(bad), IsEmpty()) << bad;
}

TEST_P(DeskImpactTest, WhatFailsIsRaised) {
    drop("TORVEX_LINKS");
    EXPECT_THAT(errorOf([&] { desk().getImpact("12"); }), StartsWith(chain({"getImpact !"})));
}

}  // namespace
}  // namespace torvex::test
