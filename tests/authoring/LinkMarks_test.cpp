// The marks of links that lead nowhere, byte for byte.

#include "support/MarkingTest.h"

namespace torvex::test {
namespace {

class LinkMarksTest : public MarkingTest {};
INSTANTIATE_TEST_SUITE_P(Engines, LinkMarksTest, bothEngines(), engineName);

TEST_P(LinkMarksTest, AMissingPage) {
    EXPECT_EQ(link("page(99)"),
              "<a href=\"page(99)\" class=\"badLink\" alt=\"W670\" title=\"W670\"  onClick=\"return false;\" "
              "onmouseover=\"window.status=top.torvex_pageNotFound;return true\" "
              "onmouseout=\"window.status=top.torvex_empty;return true\" >");
    EXPECT_EQ(tag("<a href='page(99)'>"), singly(link("page(99)")));
    for (const char* mode : {"L", "D"}) {
        EXPECT_EQ(link("page(aa.en.77)", mode), missing("page(aa.en.77)"));
        EXPECT_EQ(link("page()", mode), missing("page()"));
        EXPECT_EQ(link("/tvx.asp?pageId=99", mode), missing("/tvx.asp?pageId=99"));
    }
}

TEST_P(LinkMarksTest, AnOfflinePageCanStillBeFollowed) {
    EXPECT_EQ(link("page(13)"),
              "<a href=\"javascript:top.page('13')\" class=\"badLink\" alt=\"W672\" title=\"W672\"  "
              "onmouseover=\"window.status=top.torvex_pageOffline;return true\" "
              "onmouseout=\"window.status=top.torvex_empty;return true\" >");
    EXPECT_EQ(tag("<a href='page(13)'>"),
              "<a href='javascript:top.page(\"13\")' class='badLink' alt='W672' title='W672'  "
              "onmouseover='window.status=top.torvex_pageOffline;return true' "
              "onmouseout='window.status=top.torvex_empty;return true' >");
    EXPECT_EQ(link("page(13)", "D"), good("javascript:top.page('13')"));
}

TEST_P(LinkMarksTest, APageOfTheDesignAloneIsGoodInTheDesignAndBadLive) {
    EXPECT_EQ(link("page(14)", "D"), good("javascript:top.page('14')"));
    EXPECT_EQ(link("page(aa.en.03)", "d"), good("javascript:top.page('14')"));
    EXPECT_EQ(link("page(14)", "L"), missing("page(14)"));
    EXPECT_EQ(link("page(aa.en.03)", "x"), missing("page(aa.en.03)"));
}

TEST_P(LinkMarksTest, DatesOfAPageCountBothDaysIn) {
    page("aa.en.06").id(40).dates("20260615", "20260615").insert();
    page("aa.en.07").id(41).dates("20260616", "").insert();
    page("aa.en.08").id(42).dates("", "20260614").insert();
    EXPECT_EQ(link("page(40)"), good("javascript:top.page('40')"));
    EXPECT_EQ(link("page(41)"), bad("javascript:top.page('41')", "W672", "torvex_pageOffline", false));
    EXPECT_EQ(link("page(42)"), bad("javascript:top.page('42')", "W672", "torvex_pageOffline", false));
    EXPECT_EQ(link("page(41)", "D"), good("javascript:top.page('41')"));
}

TEST_P(LinkMarksTest, ALinkThatIsNotYetChosen) {
    EXPECT_EQ(tag("<a [href]=\"\">"),
              "<a [href]=\"\" alt='W673' title='W673' onClick='return false;' "
              "onmouseover='window.status=top.torvex_linkDisabled;return true' "
              "onmouseout='window.status=top.torvex_empty;return true' >");
    EXPECT_EQ(tag("<a [href] href=\"page(12)\">", "D"),
              "<a [href] href=\"page(12)\" alt=\"W673\" title=\"W673\" onClick=\"return false;\" "
              "onmouseover=\"window.status=top.torvex_linkDisabled;return true\" "
              "onmouseout=\"window.status=top.torvex_empty;return true\" >");
}

TEST_P(LinkMarksTest, AMissingDocument) {
    EXPECT_EQ(link("file(none.pdf)"), bad("file(none.pdf)", "W671", "torvex_docNotFound"));
    EXPECT_EQ(tag("<a href='file(none.pdf)'>"), singly(bad("file(none.pdf)", "W671", "torvex_docNotFound")));
    for (const char* name : {"", " ", "../../../torvex.toml", "bb/../../x", "aa/"}) {
        EXPECT_NE(link("file(" + std::string(name) + ")").find("torvex_docNotFound"), std::string::npos)
            << name;
    }
}

TEST_P(LinkMarksTest, ADocumentPopsUp) {
    document("aa", "a.pdf");
    document("aa", "001/a b.pdf", "It's here");
    document("bb", "c.pdf");
    EXPECT_EQ(link("file(a.pdf)"), good("javascript:top.popup('/documents/aa/a.pdf','a.pdf')"));
    EXPECT_EQ(link("file( 001\\a b.pdf )"),
              good("javascript:top.popup('/documents/aa/001/a%20b.pdf','001/a b.pdf')"));
    EXPECT_EQ(link("file(BB/c.pdf)"), good("javascript:top.popup('/documents/bb/c.pdf','c.pdf')"));
    EXPECT_EQ(link("file(It's here)"),
              good("javascript:top.popup('/documents/aa/001/a%20b.pdf','It\\'s here')"));
    EXPECT_EQ(tag("<a href='file(a.pdf)' target=_blank>"),
              "<a href='javascript:top.popup(\"/documents/aa/a.pdf\",\"a.pdf\")' "
              "onmouseover='window.status=top.torvex_empty;return true;'>");
    EXPECT_EQ(tag("<a {href}=\"file(a.pdf)\">"),
              good("javascript:top.popup(\\'/documents/aa/a.pdf\\',\\'a.pdf\\')"));
}

TEST_P(LinkMarksTest, ATitleWhoseFileIsGoneIsMissing) {
    row("TORVEX_DOCUMENTS", {{"doc_site", "aa"}, {"doc_filename", "gone.pdf"}, {"doc_title", "Report"}});
    EXPECT_EQ(link("file(Report)"), bad("file(Report)", "W671", "torvex_docNotFound"));
}

TEST_P(LinkMarksTest, WhatTheTagSaysItselfDoesNotHideTheMark) {
    EXPECT_EQ(tag("<a class=\"c\" title='t' onclick=\"x()\" href=\"page(99)\">"), missing("page(99)"));
}

TEST_P(LinkMarksTest, TheWordsAreThoseOfTheInterfaceAndEncoded) {
    word(670, "It's \"gone\" <b>");
    EXPECT_EQ(link("page(99)"),
              bad("page(99)", "It&#39;s &quot;gone&quot; &lt;b&gt;", "torvex_pageNotFound"));
    connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab2 = 'Weg' where lang_label = 670");
    host.session.set("torvex_current_interface", "de");
    EXPECT_EQ(link("page(99)"), bad("page(99)", "Weg", "torvex_pageNotFound"));
    EXPECT_EQ(link("page(13)"), bad("javascript:top.page('13')", "W672", "torvex_pageOffline", false));
}

// Folders

TEST_P(LinkMarksTest, AFolderIsItsFirstChildThatIsAPageAndOnLine) {
    page("aa.en.05").id(30).type("F").insert();
    page("aa.en.05.01").id(31).order(3).insert();
    page("aa.en.05.02").id(32).order(1).type("F").insert();
    page("aa.en.05.03").id(33).order(2).offline().insert();
    EXPECT_EQ(link("page(30)"), good("javascript:top.page('31')"));
    EXPECT_EQ(link("page(aa.en.05)"), good("javascript:top.page('31')"));
    EXPECT_EQ(link("page(30)", "D"), good("javascript:top.page('33')"));
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId = 31");
    EXPECT_EQ(link("page(30)"), bad("javascript:top.page('33')", "W672", "torvex_pageOffline", false));
}

TEST_P(LinkMarksTest, AFolderWithoutAChildIsMissing) {
    page("aa.en.05").id(30).type("F").insert();
    EXPECT_EQ(link("page(30)"), missing("page(30)"));
    EXPECT_EQ(link("page(30)", "D"), missing("page(30)"));
}

TEST_P(LinkMarksTest, AFolderOfFoldersIsWhatTheFirstOfThemIs) {
    page("aa.en.05").id(30).type("F").insert();
    page("aa.en.05.01").id(31).type("F").insert();
    page("aa.en.05.01.01").id(32).insert();
    EXPECT_EQ(link("page(30)"), good("javascript:top.page('32')"));
    EXPECT_EQ(build("<a href=\"page(30)\">x</a><a href=\"page(31)\">x</a><a href=\"page(32)\">x</a>"),
              build("<a href=\"page(30)\">x</a>") + build("<a href=\"page(31)\">x</a>") +
                  build("<a href=\"page(32)\">x</a>"));
}

TEST_P(LinkMarksTest, FoldersInACircleAreMissing) {
    page("aa.en.05").id(30).type("F").set("parent", "aa.en.06").insert();
    page("aa.en.06").id(31).type("F").set("parent", "aa.en.05").insert();
    EXPECT_EQ(link("page(30)"), missing("page(30)"));
}

TEST_P(LinkMarksTest, BadIdentifiersAreMissing) {
    for (const std::string& bad : badIdentifiers()) {
        if (bad.find('"') != std::string::npos) continue;
        EXPECT_NE(link("page(" + bad + ")").find("torvex_pageNotFound"), std::string::npos)
            << bad.substr(0, 50);
    }
}

}  // namespace
}  // namespace torvex::test
