#include "platform/Session.h"
#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class CharsetsTest : public SiteTest {
  protected:
    /// English is Western European, Russian Cyrillic.
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        language("en", 3);
        language("ru", 7);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, CharsetsTest, bothEngines(), engineName);

TEST_P(CharsetsTest, ACharsetIsFoundByItsLanguage) {
    EXPECT_EQ(server().getCharsetCodepage("ru"), "1251");
    EXPECT_EQ(server().getCharsetLabel("ru"), "windows-1251");
    EXPECT_EQ(server().getCharsetName("ru"), "Cyrillic (Windows)");
}

TEST_P(CharsetsTest, TheLanguageIsTakenInAnyCaseAndWithBlanks) {
    EXPECT_EQ(server().getCharsetCodepage(" RU "), "1251");
    EXPECT_EQ(server().getCharsetLabel(" RU "), "windows-1251");
    EXPECT_EQ(server().getCharsetName(" RU "), "Cyrillic (Windows)");
}

TEST_P(CharsetsTest, TextsOfACharsetAreTrimmed) {
    row("TORVEX_CHARSETS", {{"charset_id", 90}, {"charset_name", " Name "}, {"charset_label", " label "}});
    language("xx", 90);
    EXPECT_EQ(server().getCharsetLabel("xx"), "label");
    EXPECT_EQ(server().getCharsetName("xx"), "Name");
}

TEST_P(CharsetsTest, AnUnknownLanguageHasNoCharset) {
    for (const auto* lang : {"xx", "", "en'", "' or '1'='1"}) {
        EXPECT_EQ(server().getCharsetCodepage(lang), "");
        EXPECT_EQ(server().getCharsetLabel(lang), "");
        EXPECT_EQ(server().getCharsetName(lang), "");
    }
}

TEST_P(CharsetsTest, ALanguageWhoseCharsetIsGoneHasNone) {
    language("xx", 91);
    EXPECT_EQ(server().getCharsetLabel("xx"), "");
}

TEST_P(CharsetsTest, FailuresTellTheOperation) {
    drop("TORVEX_CHARSETS");
    EXPECT_TRUE(
        errorOf([&] { server().getCharsetCodepage("en"); }).starts_with(chain({"getCharsetCodepage !"})));
    EXPECT_TRUE(errorOf([&] { server().getCharsetLabel("en"); }).starts_with(chain({"getCharsetLabel !"})));
    EXPECT_TRUE(errorOf([&] { server().getCharsetName("en"); }).starts_with(chain({"getCharsetName !"})));
}

// The visitor's code page

TEST_P(CharsetsTest, TheCodePageComesFromTheLanguageOfThePage) {
    page("aa.ru.01").id(12).insert();
    ask("pageId=12");
    server().setCodePage();
    EXPECT_EQ(host.session.text("tvx_codePage"), "1251");
    EXPECT_EQ(host.session.text("tvx_charset"), "windows-1251");
    EXPECT_EQ(host.session.codePage(), 1251);
}

TEST_P(CharsetsTest, TheCodePageIsFoundByANodeToo) {
    ask("pageId=%20AA.RU.01");
    server().setCodePage();
    EXPECT_EQ(host.session.codePage(), 1251);
}

TEST_P(CharsetsTest, WithoutAPageTheCodePageOfTheSessionIsSetAgain) {
    host.session.set("tvx_codePage", "1253");
    host.session.set("tvx_charset", "windows-1253");
    server().setCodePage();
    EXPECT_EQ(host.session.codePage(), 1253);
    EXPECT_EQ(host.session.text("tvx_charset"), "windows-1253");
}

TEST_P(CharsetsTest, WithNeitherPageNorSessionTheCodePageStays) {
    const int before = host.session.codePage();
    server().setCodePage();
    EXPECT_EQ(host.session.codePage(), before);
    EXPECT_EQ(host.session.text("tvx_charset"), "");
}

TEST_P(CharsetsTest, AnUnknownPageLeavesTheSessionAlone) {
    host.session.set("tvx_codePage", "1253");
    host.session.set("tvx_charset", "windows-1253");
    const int before = host.session.codePage();
    for (const auto* query : {"pageId=77", "pageId=aa", "pageId=aa.xx.01", "pageId=-5", "pageId=1.5"}) {
        ask(query);
        server().setCodePage();
        EXPECT_EQ(host.session.codePage(), before) << query;
        EXPECT_EQ(host.session.text("tvx_charset"), "windows-1253") << query;
    }
}

TEST_P(CharsetsTest, TheCodePageHasNoErrorLineOfItsOwn) {
    ask("pageId=12");
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(errorOf([&] { server().setCodePage(); }).starts_with(chain({"getNodeId !"})));
}

// Values of a query

TEST_P(CharsetsTest, AValueIsFoundByTheNameOfItsParameter) {
    EXPECT_EQ(server().getParameterValue("id", "x.asp?a=1,id=7"), "7");
    EXPECT_EQ(server().getParameterValue("a", "x.asp?a=1,id=7"), "1");
    EXPECT_EQ(server().getParameterValue("a", "a=1&id=7"), "1");
}

TEST_P(CharsetsTest, AParameterThatIsMissingHasNoValue) {
    EXPECT_EQ(server().getParameterValue("b", "x.asp?a=1"), "");
    EXPECT_EQ(server().getParameterValue("b", ""), "");
    EXPECT_EQ(server().getParameterValue("", "x.asp?a=1"), "");
}

TEST_P(CharsetsTest, APartOfANameIsNotTheName) {
    EXPECT_EQ(server().getParameterValue("id", "x.asp?pageid=3&id=7"), "7");
    EXPECT_EQ(server().getParameterValue("id", "x.asp?idx=3"), "");
}

TEST_P(CharsetsTest, NamesAndValuesAreLoweredAndLoseTheirBlanks) {
    EXPECT_EQ(server().getParameterValue("  ID ", "x.asp? Id = A B c &y=1"), "abc");
}

TEST_P(CharsetsTest, TheFirstQuestionMarkBeginsTheQuery) {
    EXPECT_EQ(server().getParameterValue("b", "x?a=1?b&b=2"), "2");
    EXPECT_EQ(server().getParameterValue("a", "x?a=1?b&b=2"), "1?b");
}

TEST_P(CharsetsTest, TheFirstOfTwoValuesIsTaken) {
    EXPECT_EQ(server().getParameterValue("a", "a=1&a=2"), "1");
}

}  // namespace
}  // namespace torvex::test
