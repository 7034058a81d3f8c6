// How a menu is drawn from the blocks and tags of its template.

#include "platform/Errors.h"
#include "platform/Response.h"
#include "support/MenuTest.h"

namespace torvex::test {
namespace {

class MenuLayoutTest : public MenuTest {
  protected:
    /// The menu of page 12, whose template holds `content`.
    std::string drawn(const std::string& content, const std::string& ident = "12", const MenuRow& made = {}) {
        connection().execute("delete from TORVEX_TEMPLATES");
        connection().execute("delete from TORVEX_DYNMENU_DESIGN");
        connection().execute("delete from TORVEX_DYNMENU_LIVE");
        menu(made, block("torvex_content", content));
        EXPECT_TRUE(loaded().load(ident));
        return loaded().dmContent();
    }
    /// One active item, "12", drawn by a layout.
    std::string item(const std::string& layout) {
        const std::string content = drawn(block(
            "dynMenu", "{" +
                           block("dynMenu_levels", block("dynMenu_level", block("dynMenu_itemOn", layout) +
                                                                              block("dynMenu_itemOff", ""))) +
                           "}"));
        const std::size_t begin = content.find("{\r") + 2;
        return content.substr(begin, content.find('}') - begin);
    }
    /// That drawing ends the request with the page that names a block.
    void expectNotFound(const std::string& name, const std::string& content) {
        EXPECT_THROW(drawn(content), ResponseEnded);
        EXPECT_NE(host.response.body().find("Block \"" + name + "\" not found !"), std::string::npos) << name;
    }

    static std::string leveled(const std::string& levels) {
        return block("dynMenu", block("dynMenu_levels", levels));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MenuLayoutTest, bothEngines(), engineName);

TEST_P(MenuLayoutTest, TheTagsOfAnItemAreFilled) {
    change(12, "title", "Über <uns> & \"mehr\"");
    EXPECT_EQ(item("<!--!dynMenu_Id!-->|<!--!dynMenu_pageId!-->|<!--!dynMenu_pageTitle!-->"),
              "aaen02|12|Über &lt;uns&gt; &amp; &quot;mehr&quot;");
    EXPECT_EQ(item("<!--!UCase(dynMenu_pageTitle)!-->|<!--!LCase(dynMenu_pageTitle)!-->"),
              "ÜBER &LT;UNS&GT; &AMP; &QUOT;MEHR&QUOT;|über &lt;uns&gt; &amp; &quot;mehr&quot;");
}

TEST_P(MenuLayoutTest, TagsMayStandInAnyCaseAndAsOftenAsOneLikes) {
    EXPECT_EQ(item("<!--!DYNMENU_PAGEID!--><!--!dynmenu_pageid!--> <!--!other!-->"), "1212 <!--!other!-->");
}

TEST_P(MenuLayoutTest, ATitleIsNeverReadAsMarkers) {
    change(12, "title", "<!--!dynMenu_pageId!-->");
    EXPECT_EQ(item("<!--!dynMenu_pageTitle!-->"), "&lt;!--!dynMenu_pageId!--&gt;");
    change(12, "title", "");
    EXPECT_EQ(item("[<!--!dynMenu_pageTitle!-->]"), "[]");
}

TEST_P(MenuLayoutTest, ItemsAreIndentedByTheirLevel) {
    const auto image = [](int width) {
        return "<img src=\"/torvex/torvex_dynMenu/images/spacer.gif\" height=\"1\" border=\"0\" width=\"" +
               std::to_string(width) + "\" alt=\"\">";
    };
    const std::string forms = block("dynMenu_itemOn", "<!--!space!--><!--!dynMenu_pageTitle!-->") +
                              block("dynMenu_itemOff", "<!--!spacer!--><!--!dynMenu_pageTitle!-->");
    EXPECT_EQ(
        drawn(leveled(block("dynMenu_level", forms)), "51", {.minLevels = 1, .maxLevels = 4}),
        block("dynMenu", "\r" + image(0) + "11\r\r" + image(7) + "21\r\r" + image(14) + "41\r\r" + image(21) +
                             "51\r\r" + image(7) + "22\r\r" + image(0) + "12\r\r" + image(0) + "13"));
}

TEST_P(MenuLayoutTest, ADefaultLayoutAloneDrawsAllLevels) {
    EXPECT_EQ(drawn(leveled(block("dynMenu_level", itemLayout())), "41"),
              block("dynMenu", "\r-11\r\r-21\r\r*41\r\r-22\r\r-12\r\r-13"));
}

TEST_P(MenuLayoutTest, ALevelWithoutALayoutLooksLikeTheOneAbove) {
    const std::string levels =
        block("dynMenu_level1", itemLayout("one ")) + block("dynMenu_level3", itemLayout("three "));
    EXPECT_EQ(
        drawn(leveled(levels), "51", {.minLevels = 1, .maxLevels = 4}),
        block("dynMenu", "\r-one 11\r\r-one 21\r\r-three 41\r\r*three 51\r\r-one 22\r\r-one 12\r\r-one 13"));
}

TEST_P(MenuLayoutTest, ALayoutOfALevelGoesBeforeTheDefault) {
    const std::string levels =
        block("dynMenu_level", itemLayout("d ")) + block("dynMenu_level2", itemLayout("two "));
    EXPECT_EQ(drawn(leveled(levels), "21", {.minLevels = 1, .maxLevels = 2}),
              block("dynMenu", "\r-d 11\r\r*two 21\r\r-two 22\r\r-d 12\r\r-d 13"));
}

TEST_P(MenuLayoutTest, TheSpacerOfALevelStandsBeforeItsItemsButNotBeforeTheFirst) {
    const std::string levels = block("dynMenu_level1", itemLayout() + block("dynMenu_spacer", "==")) +
                               block("dynMenu_level2", itemLayout() + block("dynMenu_spacer", "~~"));
    EXPECT_EQ(drawn(leveled(levels), "21", {.minLevels = 1, .maxLevels = 2}),
              block("dynMenu", "\r-11\r~~\r*21\r~~\r-22\r==\r-12\r==\r-13"));
}

TEST_P(MenuLayoutTest, AnItemWithoutATextLeavesNoTrace) {
    const std::string levels =
        block("dynMenu_level",
              block("dynMenu_itemOn", "*") + block("dynMenu_itemOff", "") + block("dynMenu_spacer", "="));
    EXPECT_EQ(drawn(leveled(levels), "12"), block("dynMenu", "\r*"));
}

TEST_P(MenuLayoutTest, AMenuWhoseItemsAllLackATextGoes) {
    const std::string levels =
        block("dynMenu_level", block("dynMenu_itemOn", "*") + block("dynMenu_itemOff", ""));
    EXPECT_EQ(drawn("[" + leveled(levels) + block("dynMenu_empty", "none") + "]", "10"), "[]");
}

TEST_P(MenuLayoutTest, WithoutItemsTheMenuGoesAndItsSubstituteStays) {
    const std::string content =
        "[" + leveled(block("dynMenu_level", itemLayout())) + block("dynMenu_empty", "none") + "]";
    EXPECT_EQ(drawn(content), "[" + block("dynMenu", "\r-11\r\r*12\r\r-31\r\r-13") + "]");
    connection().execute("update TORVEX_PAGES_LIVE set online = 0");
    EXPECT_EQ(drawn(content), "[" + block("dynMenu_empty", "none") + "]");
}

TEST_P(MenuLayoutTest, WithoutAnyLayoutTheMenuGoes) {
    const std::string rest = block("dynMenu_empty", "none");
    EXPECT_EQ(drawn("[" + leveled(block("dynMenu_level2", itemLayout())) + rest + "]"), "[" + rest + "]");
    EXPECT_EQ(
        drawn("[" + leveled(block("dynMenu_level1", "") + block("dynMenu_level", itemLayout())) + rest + "]"),
        "[" + rest + "]");
    EXPECT_EQ(drawn("[" + rest + "]"), "[" + rest + "]");
}

TEST_P(MenuLayoutTest, WithoutAPlaceForTheMenuNothingIsDrawn) {
    const std::string content = block("dynMenu_levels", block("dynMenu_level", itemLayout()));
    EXPECT_EQ(drawn(content), content);
}

TEST_P(MenuLayoutTest, AMenuWithoutASubstituteIsNoError) {
    EXPECT_EQ(drawn(leveled(block("dynMenu_level", itemLayout()))),
              block("dynMenu", "\r-11\r\r*12\r\r-31\r\r-13"));
}

TEST_P(MenuLayoutTest, ATemplateWithoutAPlaceForTheItemsEndsTheRequest) {
    expectNotFound("dynMenu_levels", block("dynMenu", block("dynMenu_level", itemLayout())));
}

TEST_P(MenuLayoutTest, ALayoutWithoutAFormThatIsNeededEndsTheRequest) {
    expectNotFound("dynMenu_itemOn", leveled(block("dynMenu_level", block("dynMenu_itemOff", "-"))));
    expectNotFound("dynMenu_itemOff", leveled(block("dynMenu_level", block("dynMenu_itemOn", "*"))));
}

TEST_P(MenuLayoutTest, AFormThatIsNotNeededMayBeMissing) {
    EXPECT_EQ(drawn(leveled(block("dynMenu_level", block("dynMenu_itemOff", "-"))), "10"),
              block("dynMenu", "\r-\r\r-\r\r-"));
}

}  // namespace
}  // namespace torvex::test
