// The tag of the dynamic menu in pages, for visitors and for authors.

#include "authoring/cManager.h"
#include "modules/SiteModules.h"
#include "platform/text/Text.h"
#include "support/MenuTest.h"
#include "templates/Markers.h"

namespace torvex::test {
namespace {

class MenuAssemblyTest : public MenuTest {
  protected:
    void SetUp() override {
        MenuTest::SetUp();
        if (HasFatalFailure()) return;
        serveWith(modules_);
        contentTemplate(8, "aa", "en", "content.html",
                        block("torvex_content", "content[<!--!torvex_dynMenu!-->]"));
        baseTemplate(9, "aa", "en", "base.html",
                     "<!--!torvex_head!-->base[<!--!torvex_dynMenu!-->]<!--!torvex_content!-->");
        for (const std::string twin : {"DESIGN", "LIVE"}) {
            connection().execute("update TORVEX_PAGES_" + twin + " set template = 8, baseTemplate = 9");
        }
        systemTemplate(
            1, menuLayout(block("dynMenu_level", block("dynMenu_itemOn", "*<!--!dynMenu_pageId!-->") +
                                                     block("dynMenu_itemOff", "-<!--!dynMenu_pageId!-->"))));
    }

    std::string served(const std::string& ident) {
        server().getPage(ident);
        return plain(server().torvex_preparePage());
    }
    std::string previewed(const std::string& ident, const std::string& mode) {
        cManager manager(host.context(), &modules_);
        manager.connect(connection());
        manager.getPage(ident, mode);
        return plain(manager.torvex_preparePage(mode));
    }

    static constexpr const char* menuOf12 = "{-11*12-31-13}";

  private:
    /// Without markers and line breaks.
    static std::string plain(std::string text) {
        text = markers::withoutMarkers(text);
        std::erase(text, '\r');
        std::erase(text, '\n');
        return text;
    }

    SiteModules modules_;
};
INSTANTIATE_TEST_SUITE_P(Engines, MenuAssemblyTest, bothEngines(), engineName);

TEST_P(MenuAssemblyTest, VisitorsGetTheMenuAtItsTagsInBothTemplates) {
    menuAt(10, {});
    const std::string menu = menuOf12;
    EXPECT_EQ(served("12"), "headbase[" + menu + "]content[" + menu + "]");
}

TEST_P(MenuAssemblyTest, ATagWithoutAMenuStaysAsItIs) {
    EXPECT_EQ(served("12"), "base[]content[]");
}

TEST_P(MenuAssemblyTest, AuthorsGetTheMenuOfTheTwinThatTheyLookAt) {
    menuAt(10, {}, true, false);
    EXPECT_EQ(served("12"), "base[]content[]");
    EXPECT_TRUE(text::contains(previewed("12", "D"), menuOf12));
    EXPECT_FALSE(text::contains(previewed("12", "L"), menuOf12));
    menuAt(10, {}, false, true);
    EXPECT_TRUE(text::contains(previewed("12", "L"), menuOf12));
}

TEST_P(MenuAssemblyTest, AuthorsSeeItemsThatTheirVisitorsMayNotOpen) {
    menuAt(10, {});
    host.application.set("torvex_extranet", true);
    pageGroup(10, 1);
    pageGroup(12, 1);
    EXPECT_TRUE(text::contains(served("12"), "{*12}"));
    EXPECT_TRUE(text::contains(previewed("12", "L"), menuOf12));
}

TEST_P(MenuAssemblyTest, AFailureEndsThePageWithAllLines) {
    menuAt(10, {});
    server().getPage("12");
    drop("TORVEX_DYNMENU_LIVE");
    EXPECT_TRUE(errorOf([&] {
                    server().torvex_preparePage();
                }).starts_with(chain({"torvex_preparePage !", "load (dynMenu) !"})));
}

}  // namespace
}  // namespace torvex::test
