#include <gmock/gmock.h>

#include "modules/dynamicMenu/dynMenu.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

struct Given {
    PageId pageId = 10;
    int minLevels = 1;
    int maxLevels = 2;
    int templateId = 50;
    int display = 1;
    int extranet = 0;
    bool marked = false;
    std::string site = "aa";
};

/// Pages 10 "aa.en" and 11 "aa.en.01", and the template 50 for modules.
class RegistersMenusTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).title("Garden").insert();
        page("aa.en.01").id(11).title("Visit").insert();
        contentTemplate(50, "aa", "en", "menu.html", "");
        contentTemplate(51, "aa", "en", "page.html", "");
        connection().execute(
            "update TORVEX_TEMPLATES set tpl_system = case when tpl_id = 51 then 0 else 1 end");
    }
    std::string save(const Given& given) {
        return registers().saveMenu(given.pageId, given.site, "en", given.minLevels, given.maxLevels,
                                    given.templateId, given.display, given.extranet, given.marked, 244);
    }
    std::vector<std::string> design() {
        return rowsOf(
            "select site, lang, pageId, minLevels, maxLevels, templateId, display, extranet, deleted, "
            "modified "
            "from TORVEX_DYNMENU_DESIGN order by pageId, deleted");
    }
    void publish() {
        dynMenu menu(host.context());
        menu.connect(connection());
        menu.publish("aa", "en");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersMenusTest, bothEngines(), engineName);

TEST_P(RegistersMenusTest, APageGetsAMenuInTheDesign) {
    EXPECT_EQ(save({}), "0");
    EXPECT_THAT(design(), ElementsAre("aa|en|10|1|2|50|1|0|0|1"));
    EXPECT_EQ(cell("select count(*) from TORVEX_DYNMENU_LIVE"), "0");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||244|save|Menu of the page \"Garden\" has been updated"));
}

TEST_P(RegistersMenusTest, APageHasOneMenu) {
    save({});
    EXPECT_EQ(save({.maxLevels = 4, .display = 0, .extranet = 1}), "0");
    EXPECT_THAT(design(), ElementsAre("aa|en|10|1|4|50|0|1|0|1"));
}

TEST_P(RegistersMenusTest, MenusAreListedByTheirPages) {
    save({.pageId = 11});
    publish();
    save({});
    const auto lines = linesOf(registers().getMenus(" AA ", "en"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines.at(0), StartsWith("10|aa.en|Garden|1|2|50|"));
    EXPECT_THAT(lines.at(0), testing::EndsWith("|1|0|0|1|0")) << "changed, and not live";
    EXPECT_THAT(lines.at(1), testing::EndsWith("|1|0|0|0|1"));
    EXPECT_THAT(linesOf(registers().getMenus("aa", "de")), IsEmpty());
}

TEST_P(RegistersMenusTest, AMarkedMenuGoesWithThePublishing) {
    save({});
    publish();
    EXPECT_EQ(save({.marked = true}), "0");
    EXPECT_EQ(cell("select count(*) from TORVEX_DYNMENU_LIVE"), "1");
    publish();
    EXPECT_THAT(design(), IsEmpty());
    EXPECT_EQ(cell("select count(*) from TORVEX_DYNMENU_LIVE"), "0");
}

TEST_P(RegistersMenusTest, AMarkIsTakenBack) {
    save({.marked = true});
    EXPECT_EQ(save({}), "0");
    EXPECT_THAT(design(), ElementsAre("aa|en|10|1|2|50|1|0|0|1"));
}

TEST_P(RegistersMenusTest, BesideOneThatIsMarkedTheOtherIsChanged) {
    const auto row = [&](int deleted) {
        this->row("TORVEX_DYNMENU_DESIGN",
                  {{"site", "aa"}, {"lang", "en"}, {"pageId", 10}, {"templateId", 50}, {"deleted", deleted}});
    };
    row(1);
    row(0);
    EXPECT_EQ(save({.maxLevels = 9}), "0");
    EXPECT_THAT(design(), ElementsAre("aa|en|10|1|9|50|1|0|0|1", "aa|en|10|0|0|50|0|0|1|0"));
}

TEST_P(RegistersMenusTest, LevelsAreBounded) {
    EXPECT_EQ(save({.minLevels = -1, .maxLevels = 1000}), "0");
    EXPECT_THAT(design(), ElementsAre("aa|en|10|0|20|50|1|0|0|1"));
}

TEST_P(RegistersMenusTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save({.pageId = 99}); });
    expectRefusal("-1", [&] { return save({.site = "bb"}); });
    expectRefusal("-4", [&] { return save({.display = 2}); });
    expectRefusal("-4", [&] { return save({.extranet = -1}); });
    expectRefusal("-5", [&] { return save({.templateId = 51}); });
    expectRefusal("-5", [&] { return save({.templateId = 99}); });
    actAsNobody();
    expectRefusal("-10", [&] { return save({}); });
}

TEST_P(RegistersMenusTest, AFailureAnywhereChangesNothing) {
    failEverywhere("0", "-99", [&] { return save({}); });
}

TEST_P(RegistersMenusTest, TheListSaysWhatFailed) {
    connection().execute("drop table TORVEX_DYNMENU_LIVE");
    EXPECT_THAT(errorOf([&] { registers().getMenus("aa", "en"); }), StartsWith(chain({"getMenus !"})));
}

}  // namespace
}  // namespace torvex::test
