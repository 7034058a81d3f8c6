// What assembly puts in a page beside its layout: modules, links, the login, an application's sub-pages.

#include "delivery/PageModules.h"
#include "platform/Session.h"
#include "support/SiteTest.h"

namespace torvex::test {
namespace {

/// Modules with a text for every page and newsflash that a test gives one.
class FakeModules final : public PageModules {
  public:
    std::map<PageId, ModuleOutput> menus;
    std::map<int, ModuleOutput> newsflashes;
    std::vector<std::string> asked;

    std::optional<ModuleOutput> dynamicMenu(const ModuleCall&, PageId pageId) override {
        asked.push_back("menu " + std::to_string(static_cast<int>(pageId)));
        const auto found = menus.find(pageId);
        return found == menus.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<ModuleOutput> newsflash(const ModuleCall&, std::string_view site, std::string_view lang,
                                          int number) override {
        asked.push_back(std::string(site) + " " + std::string(lang) + " " + std::to_string(number));
        const auto found = newsflashes.find(number);
        return found == newsflashes.end() ? std::nullopt : std::optional(found->second);
    }
};

class AssemblyPartsTest : public SiteTest {
  protected:
    FakeModules modules;

    /// Root 10 and page 12, between 11 and 13.
    void pageOf(const std::string& content, const std::string& base) {
        contentTemplate(1, "aa", "en", "content.html", content);
        baseTemplate(1, "aa", "en", "base.html", base);
        page("aa.en").id(10).title("Home").contentTemplate(1).baseTemplate(1).insert();
        for (int i = 1; i <= 3; ++i) page("aa.en.0" + std::to_string(i)).id(10 + i).insert();
    }

    std::string prepared(const std::string& ident = "12", const std::string& subTitle = "") {
        server().getPage(ident);
        return server().torvex_preparePage(subTitle);
    }

    std::string preparedFrom(const std::string& content, const std::string& base) {
        pageOf(content, base);
        return prepared();
    }

    static std::string navigationBlocks() {
        std::string text = "<!--!torvex_navigation_start!-->";
        for (const auto* name : {"torvex_previous", "torvex_next", "torvex_up"}) {
            const std::string tag = name;
            text += "<!--!" + tag + "_start!-->[<!--!" + tag + "!-->]<!--!" + tag + "_end!-->";
        }
        return text + "<!--!torvex_navigation_end!-->";
    }

    /// The page's text without markers.
    static std::string withoutMarkers(std::string text) {
        for (std::size_t at = 0; (at = text.find("<!--!")) != std::string::npos;) {
            text.erase(at, text.find("!-->", at) + 4 - at);
        }
        return text;
    }

    /// A secured page 12 that the test sees as a member.
    void becomeMember() {
        host.application.set("torvex_extranet", true);
        group(5, "members");
        pageGroup(12, 5);
        user(1, "Ann", "secret", {5});
        server().getPage("12", "Ann", "secret");
        ASSERT_EQ(server().pgAccess(), 1);
    }

    /// The application page 12 with a template page 20 titled "List" in its system folder.
    void applicationWithSubPage() {
        externalApplication(6, "/app/");
        contentTemplate(
            2, "aa", "en", "list.html",
            "<!--!torvex_content_start!-->list <!--!torvex_body_1!--><!--!torvex_content_end!-->");
        baseTemplate(2, "aa", "en", "sub.html", "sub:<!--!torvex_head!--><!--!torvex_content!-->");
        page("aa.en.01").id(12).type("A").application(6).set("app_system_folder", 0).insert();
        page("aa.en.01.99.01").id(20).title("List").contentTemplate(2).baseTemplate(2).insert();
        body(20, 1, "of the sub-page");
        body(12, 1, "of the application");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AssemblyPartsTest, bothEngines(), engineName);

// The dynamic menu

TEST_P(AssemblyPartsTest, TheMenuStandsAtItsTagInTheBaseTemplate) {
    modules.menus[12] = {"menu header", "menu"};
    serveWith(modules);
    EXPECT_EQ(preparedFrom("", "<!--!torvex_head!-->|<!--!torvex_dynMenu!-->"), "\r\n\r\nmenu header|menu");
}

TEST_P(AssemblyPartsTest, TheMenuStandsAtItsTagInTheLayout) {
    modules.menus[12] = {"", "menu"};
    serveWith(modules);
    EXPECT_EQ(
        preparedFrom("<!--!torvex_content_start!-->[<!--!torvex_dynMenu!-->]<!--!torvex_content_end!-->",
                     "<!--!torvex_content!-->"),
        "[menu]");
}

TEST_P(AssemblyPartsTest, WithoutItsTagTheMenuIsNotAskedFor) {
    modules.menus[12] = {"menu header", "menu"};
    serveWith(modules);
    EXPECT_EQ(preparedFrom("", "<!--!torvex_head!-->"), "\r\n\r\n");
    EXPECT_TRUE(modules.asked.empty());
}

TEST_P(AssemblyPartsTest, AMenuThatDoesNotLoadLeavesItsTag) {
    serveWith(modules);
    EXPECT_EQ(preparedFrom("", "<!--!torvex_dynMenu!-->"), "<!--!torvex_dynMenu!-->");
    EXPECT_EQ(modules.asked, std::vector<std::string>{"menu 12"});
}

TEST_P(AssemblyPartsTest, WithoutModulesTheMenusTagStays) {
    EXPECT_EQ(preparedFrom("", "<!--!torvex_dynMenu!-->"), "<!--!torvex_dynMenu!-->");
}

// Newsflashes

TEST_P(AssemblyPartsTest, NewsflashesStandAtTheirTagsInBothTemplates) {
    modules.newsflashes = {{3, {"h3", "three"}}, {7, {"h7", "seven"}}};
    serveWith(modules);
    EXPECT_EQ(
        preparedFrom("<!--!torvex_content_start!--><!--!torvex_newsflash_7!--><!--!torvex_content_end!-->",
                     "<!--!torvex_head!-->|<!--!torvex_newsflash_3!-->|<!--!torvex_content!-->"),
        "\r\n\r\nh7\r\nh3\r\n|three|seven");
    EXPECT_EQ(modules.asked, (std::vector<std::string>{"aa en 7", "aa en 3"}));
}

TEST_P(AssemblyPartsTest, ANewsflashThatDoesNotLoadLeavesNothingAndTheNextIsFilled) {
    modules.newsflashes = {{4, {"h4", "four"}}};
    serveWith(modules);
    EXPECT_EQ(
        preparedFrom("", "<!--!torvex_head!-->[<!--!torvex_newsflash_3!-->][<!--!torvex_newsflash_4!-->]"),
        "\r\n\r\nh4\r\n[][four]");
}

TEST_P(AssemblyPartsTest, ANewsflashIsLoadedOnceForAllItsTags) {
    modules.newsflashes = {{3, {"h3", "three"}}};
    serveWith(modules);
    EXPECT_EQ(preparedFrom("", "<!--!torvex_newsflash_3!--><!--!torvex_newsflash_3!-->"), "threethree");
    EXPECT_EQ(modules.asked.size(), 1);
}

TEST_P(AssemblyPartsTest, WithoutModulesNewsflashesLeaveNothing) {
    EXPECT_EQ(preparedFrom("", "[<!--!torvex_newsflash_3!-->]<!--!torvex_newsflash_x!-->"),
              "[]<!--!torvex_newsflash_x!-->");
}

TEST_P(AssemblyPartsTest, ANewsflashThatHoldsItsOwnTagEnds) {
    modules.newsflashes = {{3, {"h3", "three<!--!torvex_newsflash_3!-->"}}, {4, {"h4", "four"}}};
    serveWith(modules);
    EXPECT_EQ(preparedFrom("", "<!--!torvex_newsflash_3!-->|<!--!torvex_newsflash_4!-->"), "three|four");
}

TEST_P(AssemblyPartsTest, TheFailureOfAModuleEndsThePage) {
    class BrokenModules final : public PageModules {
        std::optional<ModuleOutput> dynamicMenu(const ModuleCall&, PageId) override {
            throw Error("no menu");
        }
        std::optional<ModuleOutput> newsflash(const ModuleCall&, std::string_view, std::string_view,
                                              int) override {
            return {};
        }
    } broken;
    serveWith(broken);
    pageOf("", "<!--!torvex_dynMenu!-->");
    server().getPage("12");
    EXPECT_EQ(errorOf([&] { server().torvex_preparePage(); }), chain({"torvex_preparePage !"}) + "no menu");
}

// Navigation

TEST_P(AssemblyPartsTest, LinksToTheNeighboursArePlainAddresses) {
    EXPECT_EQ(withoutMarkers(preparedFrom("", navigationBlocks())),
              "[/tvx.asp?pageId=11][/tvx.asp?pageId=13][/tvx.asp?pageId=10]");
}

TEST_P(AssemblyPartsTest, LinksInAFrameSetCallIt) {
    host.application.set("torvex_frames", true);
    EXPECT_EQ(withoutMarkers(preparedFrom("", navigationBlocks())),
              "[javascript:window.top.page('11','aa.en.01')][javascript:window.top.page('13','aa.en.03')]"
              "[javascript:window.top.page('10','aa.en')]");
}

TEST_P(AssemblyPartsTest, ANeighbourThatIsMissingLosesItsBlockAlone) {
    pageOf("", navigationBlocks());
    EXPECT_EQ(withoutMarkers(prepared("11")), "[/tvx.asp?pageId=12][/tvx.asp?pageId=10]");
}

TEST_P(AssemblyPartsTest, APageWithNothingButAnUpKeepsTheBlock) {
    pageOf("", "a" + navigationBlocks() + "b");
    page("aa.en.01.01").id(21).insert();
    EXPECT_EQ(prepared("21"),
              "a<!--!torvex_navigation_start!--><!--!torvex_up_start!-->[/tvx.asp?pageId=11]"
              "<!--!torvex_up_end!--><!--!torvex_navigation_end!-->b");
}

TEST_P(AssemblyPartsTest, APageWithoutAnyNeighbourLosesTheBlock) {
    pageOf("", "a" + navigationBlocks() + "b");
    EXPECT_EQ(prepared("10"), "ab");
}

TEST_P(AssemblyPartsTest, ANeighbourThatWentOfflineCountsAsAbsent) {
    pageOf("", navigationBlocks());
    connection().execute("update TORVEX_PAGES_LIVE set onlineTo = '20260614' where pageId in (10, 11)");
    EXPECT_EQ(withoutMarkers(prepared()), "[/tvx.asp?pageId=13]");
}

TEST_P(AssemblyPartsTest, ANeighbourThatIsAnEmptyFolderCountsAsAbsent) {
    pageOf("", navigationBlocks());
    connection().execute("update TORVEX_PAGES_LIVE set type = 'F' where pageId = 11");
    EXPECT_EQ(withoutMarkers(prepared()), "[/tvx.asp?pageId=13][/tvx.asp?pageId=10]");
}

TEST_P(AssemblyPartsTest, WithAllNeighboursOfflineTheBlockGoes) {
    pageOf("", "a" + navigationBlocks() + "b");
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId <> 12");
    EXPECT_EQ(prepared(), "ab");
}

TEST_P(AssemblyPartsTest, TagsOfNeighboursOutsideTheirBlockAreLeft) {
    EXPECT_EQ(preparedFrom("", "<!--!torvex_up!-->"), "<!--!torvex_up!-->");
}

TEST_P(AssemblyPartsTest, TheBreadcrumbStandsAtItsTag) {
    pageOf("", "<!--!torvex_breadcrumb!-->");
    EXPECT_EQ(prepared(), server().getBreadcrumb("12"));
    EXPECT_NE(prepared(), "");
}

// Login and search

TEST_P(AssemblyPartsTest, TheLoginGoesThroughTheSecureAddressWhenAnythingIsSecure) {
    pageOf("", "<!--!torvex_loginURL!-->");
    for (const auto& [website, extranet] :
         std::vector<std::pair<bool, bool>>{{false, false}, {true, false}, {false, true}, {true, true}}) {
        host.application.set("tvx_website_ssl", website);
        host.application.set("tvx_extranet_ssl", extranet);
        EXPECT_EQ(prepared(),
                  std::string(website || extranet ? "https" : "http") + "://www.site.test/tvxLogin.asp");
    }
}

TEST_P(AssemblyPartsTest, TheSearchOfAnOpenPageIsSecureOnlyWithTheWholeSite) {
    pageOf("", "<!--!search_URL!-->");
    for (const auto& [website, extranet] :
         std::vector<std::pair<bool, bool>>{{false, false}, {true, false}, {false, true}, {true, true}}) {
        host.application.set("tvx_website_ssl", website);
        host.application.set("tvx_extranet_ssl", extranet);
        EXPECT_EQ(prepared(), std::string(website ? "https" : "http") + "://www.site.test/torvex_search/");
    }
}

TEST_P(AssemblyPartsTest, TheSearchOfASecuredPageIsSecureWithTheExtranet) {
    pageOf("", "<!--!search_URL!-->");
    becomeMember();
    EXPECT_EQ(server().torvex_preparePage(), "http://www.site.test/torvex_search/");
    host.application.set("tvx_extranet_ssl", true);
    EXPECT_EQ(server().torvex_preparePage(), "https://www.site.test/torvex_search/");
    host.application.set("tvx_extranet_ssl", false);
    host.application.set("tvx_website_ssl", true);
    EXPECT_EQ(server().torvex_preparePage(), "https://www.site.test/torvex_search/");
}

constexpr const char* loginBlocks =
    "<!--!torvex_userLoggedIn_start!-->in<!--!torvex_userLoggedIn_end!-->"
    "<!--!torvex_noUserLoggedIn_start!-->out<!--!torvex_noUserLoggedIn_end!-->"
    "<!--!torvex_userLoggedIn_start!-->in2<!--!torvex_userLoggedIn_end!-->"
    "<!--!torvex_noUserLoggedIn_start!-->out2<!--!torvex_noUserLoggedIn_end!-->";

TEST_P(AssemblyPartsTest, AVisitorWithoutANameSeesNoBlockOfUsers) {
    EXPECT_EQ(withoutMarkers(preparedFrom("", loginBlocks)), "outout2");
}

TEST_P(AssemblyPartsTest, AUserSeesNoBlockOfVisitorsWithoutAName) {
    host.session.set("tvx_username", "Ann");
    EXPECT_EQ(withoutMarkers(preparedFrom("", loginBlocks)), "inin2");
}

TEST_P(AssemblyPartsTest, ALoginErrorShowsOnce) {
    pageOf("", "<!--!torvex_loginError_start!-->wrong<!--!torvex_loginError_end!-->");
    host.session.set("tvx_loginError", true);
    EXPECT_EQ(withoutMarkers(prepared()), "wrong");
    EXPECT_FALSE(host.session.isTrue("tvx_loginError"));
    EXPECT_EQ(prepared(), "");
}

TEST_P(AssemblyPartsTest, WithoutALoginErrorItsBlockGoes) {
    EXPECT_EQ(preparedFrom("", "a<!--!torvex_loginError_start!-->wrong<!--!torvex_loginError_end!-->b"),
              "ab");
}

// The order of the steps

TEST_P(AssemblyPartsTest, ALayoutMayHoldEveryTagThatALaterStepFills) {
    modules.menus[12] = {"", "menu"};
    modules.newsflashes = {{1, {"", "flash"}}};
    serveWith(modules);
    pageOf(
        "<!--!torvex_content_start!--><!--!torvex_content_1!-->|<!--!torvex_dynMenu!-->|"
        "<!--!torvex_newsflash_1!-->|" +
            navigationBlocks() +
            "|<!--!torvex_breadcrumb!-->|<!--!torvex_loginURL!-->|<!--!search_URL!-->|"
            "<!--!torvex_body_1!--><!--!torvex_content_end!-->"
            "<!--!torvex_content_1_start!-->area<!--!torvex_content_1_end!-->",
        "<!--!torvex_content!-->");
    body(12, 1, "body");
    EXPECT_EQ(withoutMarkers(prepared()),
              "area|menu|flash|[/tvx.asp?pageId=11][/tvx.asp?pageId=13][/tvx.asp?pageId=10]|" +
                  server().getBreadcrumb("12") +
                  "|http://www.site.test/tvxLogin.asp|http://www.site.test/torvex_search/|body");
}

TEST_P(AssemblyPartsTest, AMenuMayHoldTagsOfLaterSteps) {
    modules.menus[12] = {"", "<!--!search_URL!-->"};
    serveWith(modules);
    EXPECT_EQ(preparedFrom("", "<!--!torvex_dynMenu!-->"), "http://www.site.test/torvex_search/");
}

TEST_P(AssemblyPartsTest, ABodyComesLastAndItsTagsStay) {
    pageOf("", "<!--!torvex_body_1!-->");
    body(12, 1, "<!--!search_URL!--><!--!torvex_breadcrumb!-->");
    EXPECT_EQ(prepared(), "<!--!search_URL!--><!--!torvex_breadcrumb!-->");
}

// Sub-pages of an application

TEST_P(AssemblyPartsTest, ASubPageTakesTheAssetsAndBodiesOfItsTemplatePage) {
    applicationWithSubPage();
    EXPECT_EQ(prepared("12", "List"), "sub:\r\n\r\nlist of the sub-page");
}

TEST_P(AssemblyPartsTest, TheTitleOfASubPageIgnoresCaseAndBlanks) {
    applicationWithSubPage();
    EXPECT_EQ(prepared("12", "  LIST "), "sub:\r\n\r\nlist of the sub-page");
}

TEST_P(AssemblyPartsTest, ASubPageCountsAsAViewOfItsOwn) {
    applicationWithSubPage();
    prepared("12", "List");
    EXPECT_EQ(host.hits.views,
              (std::map<std::pair<std::string, std::string>, int>{{{"aa.en.01.99.01", "20260615"}, 1}}));
}

TEST_P(AssemblyPartsTest, AnOrdinaryPageIsNotCountedByAssembly) {
    preparedFrom("", "base");
    EXPECT_TRUE(host.hits.views.empty());
}

TEST_P(AssemblyPartsTest, ASubPageThatIsMissingIsAnErrorOfTheAskedPage) {
    applicationWithSubPage();
    EXPECT_EQ(prepared("12", "Nothing"), "error:/error.asp?pageId=12&error=no_template");
    EXPECT_TRUE(host.hits.views.empty());
}

TEST_P(AssemblyPartsTest, ASubPageWithoutABaseTemplateIsAnErrorOfTheAskedPage) {
    applicationWithSubPage();
    connection().execute("update TORVEX_PAGES_LIVE set baseTemplate = 0 where pageId = 20");
    EXPECT_EQ(prepared("12", "List"), "error:/error.asp?pageId=12&error=no_base_template");
}

TEST_P(AssemblyPartsTest, TheMetaDataOfASubPageAreThoseOfTheAskedPage) {
    applicationWithSubPage();
    metaTag(1, "aa", "author");
    metaData(12, 1, "Ann");
    metaData(20, 1, "Bob");
    EXPECT_NE(prepared("12", "List").find("CONTENT=\"Ann\""), std::string::npos);
    EXPECT_EQ(prepared("12", "List").find("CONTENT=\"Bob\""), std::string::npos);
}

TEST_P(AssemblyPartsTest, TheStylesheetOfASubPageIsItsOwn) {
    applicationWithSubPage();
    stylesheet(3, "aa", "en", "sub.css");
    connection().execute("update TORVEX_PAGES_LIVE set stylesheet = 3 where pageId = 20");
    EXPECT_NE(prepared("12", "List").find("/stylesheets/aa/en/sub.css"), std::string::npos);
}

}  // namespace
}  // namespace torvex::test
