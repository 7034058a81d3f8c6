#include "authoring/EditFrame.h"

#include "platform/Session.h"
#include "platform/text/Text.h"
#include "platform/xml/XmlDocument.h"
#include "support/BodiesTest.h"

namespace torvex::test {
namespace {

class EditFrameTest : public BodiesTest {
  protected:
    void SetUp() override {
        BodiesTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en.01").id(12).insert();
        designBody(12, 1, "<p>one</p>");
        designBody(12, 2, "two", 3, 15);
        word(7, "Edit");
        word(19, "Copy");
        word(3061, "Settings");
    }
    std::string framed(const std::string& html, const std::string& ident = "12") {
        return manager().fillBodies(ident, "D", html, true);
    }
    static int count(const std::string& html, const std::string& what) {
        int found = 0;
        for (auto at = html.find(what); at != std::string::npos; at = html.find(what, at + 1)) ++found;
        return found;
    }
    void expectHolds(const std::string& html, std::initializer_list<const char*> parts) {
        for (const char* part : parts)
            EXPECT_NE(html.find(part), std::string::npos) << part << "\nin " << html;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, EditFrameTest, bothEngines(), engineName);

TEST_P(EditFrameTest, AStoredTextCanBeEdited) {
    expectHolds(framed("<!--!torvex_body_1!-->"),
                {"<table class=\"bodyborder\"", "class=\"bodyheader\"", "name=\"body1\"", "<p>one</p>",
                 "<a class=\"bodyLink\" href=\"javascript:top.link.editBody('aa.en.01',1)\" title=\"Edit 1\"",
                 "javascript:top.link.setupBody('aa.en.01',1,1,0)", "src=\"/torvex/images/body_setup.gif\"",
                 "alt=\"Settings 1\""});
}

TEST_P(EditFrameTest, AFeedHasNoTextToBeEdited) {
    const std::string html = framed("<!--!torvex_body_1!--><!--!torvex_body_2!-->");
    EXPECT_EQ(count(html, "editBody("), 1);
    expectHolds(
        html, {"<span class=\"bodyLink\"", ">2</span>", "javascript:top.link.setupBody('aa.en.01',2,3,15)"});
}

TEST_P(EditFrameTest, ABodyThatIsNotThereIsAnEmptyStoredText) {
    const std::string html = framed(
        "<!--!torvex_body_1!--><!--!torvex_body_2!--><!--!torvex_body_3_start!-->sample"
        "<!--!torvex_body_3_end!-->");
    expectHolds(html, {"top.link.editBody('aa.en.01',3)", "setupBody('aa.en.01',3,1,0)", "&nbsp;"});
    EXPECT_EQ(html.find("sample"), std::string::npos);
}

TEST_P(EditFrameTest, TheCopyButtonTellsWhatIsCopied) {
    expectHolds(framed("<!--!torvex_body_1!-->"),
                {"<img id=\"copy1\" src=\"/torvex/images/body_copy_up.gif\"", "alt=\"Copy 1\"",
                 "tabindex=\"0\"", "onmouseover=\"buttonOver(this)\"", "onmouseout=\"buttonOut(this)\"",
                 "onmousedown=\"buttonDown(this)\"",
                 "onclick=\"top.content.nodeId='aa.en.01';top.content.bodyId=1;top.link.copyBody();\""});
}

TEST_P(EditFrameTest, ThePageGetsTheFormOnceAheadOfItsEnd) {
    const std::string html =
        framed("<body></body>x<!--!torvex_body_1!--><!--!torvex_body_2!--></BODY></html>");
    EXPECT_EQ(count(html, "<form "), 1);
    EXPECT_TRUE(html.ends_with("</script>\r\n</BODY></html>"));
    expectHolds(html,
                {"<div id=\"bodySetup\"", "<form name=\"editBody\" method=\"post\" action=\"view.asp\">",
                 "<input type=\"hidden\" name=\"html\" value=\"\">",
                 "<input type=\"hidden\" name=\"pageId\" value=\"12\">",
                 "<input type=\"hidden\" name=\"bodyId\" value=\"\">",
                 "<input type=\"hidden\" name=\"job\" value=\"save\">",
                 "<input type=\"hidden\" name=\"mode\" value=\"D\">", "document.onclick"});
}

TEST_P(EditFrameTest, APageWithoutItsEndGetsTheFormAtTheEnd) {
    EXPECT_TRUE(framed("<!--!torvex_body_1!-->").ends_with("</script>\r\n"));
}

TEST_P(EditFrameTest, WithoutTheFlagThereAreNoFrames) {
    EXPECT_EQ(manager().fillBodies("12", "D", "<!--!torvex_body_1!--></body>"), "<p>one</p></body>");
}

TEST_P(EditFrameTest, FramesAreWellFormed) {
    word(7, "<\"Edit\" & 'x'>");
    word(19, "\"Copy\"");
    const std::string html = framed("<r><!--!torvex_body_1!--><!--!torvex_body_2!--></body></r>");
    std::string xml = html.substr(0, html.find("<div id=\"bodySetup\"")) + "</r>";
    // In HTML images have no end tag.
    for (const char* end : {"this.click();}\">", "margin:0;border:0\">"}) {
        xml = text::replaceAll(xml, end, text::replaceAll(end, ">", "/>"));
    }
    EXPECT_NO_THROW(XmlDocument::parse(xml, XmlBlanks::Keep)) << xml;
}

TEST_P(EditFrameTest, TheSwitchOfThePageBuildsItForEditing) {
    contentTemplate(1, "aa", "en", "content.html",
                    "<!--!torvex_content_start!--><!--!torvex_body_1!--><!--!torvex_body_2!-->"
                    "<!--!torvex_content_end!-->");
    baseTemplate(1, "aa", "en", "base.html", "<body><!--!torvex_content!--></body>");
    connection().execute("update TORVEX_PAGES_DESIGN set template = 1, baseTemplate = 1");
    manager().getPage("12", "D");
    const std::string html = manager().torvex_preparePage("D", " #EDIT# ");
    EXPECT_EQ(count(html, "class=\"bodyborder\""), 2);
    expectHolds(html,
                {"<a class=\"bodyLink\" href=\"javascript:top.link.editBody('aa.en.01',1)\" title=\"Edit 1\"",
                 "<form name=\"editBody\"", "</body>"});
    EXPECT_EQ(manager().torvex_preparePage("D").find("bodyborder"), std::string::npos);
}

TEST_P(EditFrameTest, ABodyOfFiveMegabytesIsFramed) {
    const std::string large(5 * 1024 * 1024, 'x');
    designBody(12, 3, large + "</body>");
    const std::string html =
        framed("<!--!torvex_body_1!--><!--!torvex_body_2!--><!--!torvex_body_3!--></body>");
    EXPECT_GT(html.size(), large.size());
    EXPECT_TRUE(html.ends_with("</script>\r\n</body>"));
}

}  // namespace
}  // namespace torvex::test
