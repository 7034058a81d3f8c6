#include <gmock/gmock.h>

#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

/// HTML feed 5 and XML feed 5 of "aa.en", and one 6 beside each.
class FeedRecordsTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        for (const int id : {5, 6}) {
            const std::string name = id == 5 ? "News" : "Alerts";
            row("TORVEX_FEEDS_HTML", {{"feedId", id},
                                      {"feedSite", "aa"},
                                      {"feedLang", "en"},
                                      {"feedName", name},
                                      {"feedDescription", "About " + name},
                                      {"feedURL", "https://feeds.example/a.html"},
                                      {"feedFile", ""},
                                      {"feedParameters", "most=5"}});
            row("TORVEX_FEEDS_XML", {{"feedId", id},
                                     {"feedSite", "aa"},
                                     {"feedLang", "en"},
                                     {"feedName", name},
                                     {"feedDescription", "About " + name},
                                     {"feedURL_XML", ""},
                                     {"feedFile_XML", "001/a.xml"},
                                     {"feedURL_XSL", ""},
                                     {"feedFile_XSL", "001/a.xsl"},
                                     {"feedParameters", ""},
                                     {"feedPreserveWhiteSpace", 1}});
        }
    }
    std::string saveHtml(int id, const std::string& name, const std::string& url = "https://feeds.example/",
                         const std::string& file = "", int advId = 0) {
        return registers().saveHTMLfeed(id, "aa", "en", name, " About it ", url, file, " a=1,b=2 ", advId);
    }
    std::string saveXml(int id, const std::string& name, const std::string& urlXsl = "",
                        const std::string& fileXsl = "001/b.xsl", int advId = 0) {
        return registers().saveXMLfeed(id, "aa", "en", name, "About it", "http://feeds.example/b.xml", "",
                                       urlXsl, fileXsl, "", true, advId);
    }
    std::vector<std::string> html(int id = 0) { return linesOf(registers().getHTMLfeeds("aa", "en", id)); }
    std::vector<std::string> xml(int id = 0) { return linesOf(registers().getXMLfeeds("aa", "en", id)); }
};
INSTANTIATE_TEST_SUITE_P(Engines, FeedRecordsTest, bothEngines(), engineName);

TEST_P(FeedRecordsTest, FeedsAreListedByNameOrAlone) {
    EXPECT_THAT(html(), ElementsAre("6|Alerts|About Alerts|https://feeds.example/a.html||most=5",
                                    "5|News|About News|https://feeds.example/a.html||most=5"));
    EXPECT_THAT(html(5), ElementsAre("5|News|About News|https://feeds.example/a.html||most=5"));
    EXPECT_THAT(xml(), ElementsAre("6|Alerts|About Alerts||001/a.xml||001/a.xsl||1",
                                   "5|News|About News||001/a.xml||001/a.xsl||1"));
    EXPECT_THAT(xml(6), ElementsAre("6|Alerts|About Alerts||001/a.xml||001/a.xsl||1"));
    EXPECT_THAT(linesOf(registers().getHTMLfeeds("bb", "en", 5)), testing::IsEmpty());
    EXPECT_THAT(linesOf(registers().getXMLfeeds("bb", "en", 5)), testing::IsEmpty());
}

TEST_P(FeedRecordsTest, AnHtmlFeedIsAddedAndSavedAndLetGo) {
    const std::string id = saveHtml(0, "  Weather ", " https://feeds.example/w ", "", 231);
    EXPECT_THAT(html(std::stoi(id)), ElementsAre(id + "|Weather|About it|https://feeds.example/w||a=1,b=2"));
    hold("TORVEX_FEEDS_HTML", "feedId", std::stoi(id), host.session.id());
    EXPECT_EQ(saveHtml(std::stoi(id), "Skies", "", "001/w.html", 231), id);
    EXPECT_THAT(html(std::stoi(id)), ElementsAre(id + "|Skies|About it||001/w.html|a=1,b=2"));
    EXPECT_EQ(cell("select lock from TORVEX_FEEDS_HTML where feedId = " + id), "");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||231|new|New HTML feed \"Weather\"",
                                          "7|Anna Author|0||231|save|HTML feed \"Skies\" has been updated"));
}

TEST_P(FeedRecordsTest, AnXmlFeedIsAddedAndSavedAndLetGo) {
    const std::string id = saveXml(0, "Weather", "", "001/b.xsl", 232);
    EXPECT_THAT(xml(std::stoi(id)),
                ElementsAre(id + "|Weather|About it|http://feeds.example/b.xml|||001/b.xsl||1"));
    hold("TORVEX_FEEDS_XML", "feedId", std::stoi(id), host.session.id());
    EXPECT_EQ(saveXml(std::stoi(id), "Skies", "https://feeds.example/b.xsl", "", 232), id);
    EXPECT_THAT(
        xml(std::stoi(id)),
        ElementsAre(id + "|Skies|About it|http://feeds.example/b.xml||https://feeds.example/b.xsl|||1"));
    EXPECT_EQ(cell("select lock from TORVEX_FEEDS_XML where feedId = " + id), "");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||232|new|New XML feed \"Weather\"",
                                          "7|Anna Author|0||232|save|XML feed \"Skies\" has been updated"));
}

TEST_P(FeedRecordsTest, LongTextsAreCut) {
    const std::string text(1200, 'x');
    EXPECT_EQ(registers().saveHTMLfeed(5, "aa", "en", text, text, "http://" + text, text, text), "5");
    EXPECT_THAT(html(5), ElementsAre("5|" + std::string(50, 'x') + "|" + std::string(500, 'x') + "|http://" +
                                     std::string(493, 'x') + "|" + std::string(500, 'x') + "|" +
                                     std::string(1000, 'x')));
}

TEST_P(FeedRecordsTest, RefusalsOfHtmlFeedsChangeNothing) {
    expectRefusal("-1", [&] { return saveHtml(99, "New"); });
    expectRefusal("-1",
                  [&] { return registers().saveHTMLfeed(5, "bb", "en", "New", "", "http://a", "", ""); });
    expectRefusal("-7",
                  [&] { return registers().saveHTMLfeed(0, "zz", "en", "New", "", "http://a", "", ""); });
    expectRefusal("-3", [&] { return saveHtml(5, " "); });
    expectRefusal("-5", [&] { return saveHtml(5, "New", " ", " "); });
    for (const auto* url :
         {"ftp://feeds.example/", "file:///etc/passwd", "feeds.example", "javascript:alert(1)"}) {
        SCOPED_TRACE(url);
        expectRefusal("-6", [&] { return saveHtml(5, "New", url); });
    }
    for (const auto* file : {"../secret.html", "001/../../x.html", "001\\..\\..\\x.html"}) {
        SCOPED_TRACE(file);
        expectRefusal("-6", [&] { return saveHtml(5, "New", "", file); });
    }
    expectRefusal("-2", [&] { return saveHtml(5, "ALERTS"); });
    expectRefusal("-2", [&] { return saveHtml(0, "news"); });
    hold("TORVEX_FEEDS_HTML", "feedId", 5, bertsSession);
    expectRefusal("-4", [&] { return saveHtml(5, "New"); });
    actAsNobody();
    expectRefusal("-10", [&] { return saveHtml(6, "New"); });
}

TEST_P(FeedRecordsTest, RefusalsOfXmlFeedsChangeNothing) {
    expectRefusal("-1", [&] { return saveXml(99, "New"); });
    expectRefusal("-2", [&] { return saveXml(5, "Alerts"); });
    expectRefusal("-3", [&] { return saveXml(5, ""); });
    expectRefusal("-5", [&] { return saveXml(5, "New", "", ""); });
    expectRefusal("-6", [&] { return saveXml(5, "New", "gopher://x"); });
    expectRefusal("-6", [&] { return saveXml(5, "New", "", "../x.xsl"); });
    hold("TORVEX_FEEDS_XML", "feedId", 5, bertsSession);
    expectRefusal("-4", [&] { return saveXml(5, "New"); });
    actAsNobody();
    expectRefusal("-10", [&] { return saveXml(6, "New"); });
}

TEST_P(FeedRecordsTest, AFailureAnywhereChangesNothing) {
    failEverywhere("5", "-99", [&] { return saveHtml(5, "New"); });
    failEverywhere("5", "-99", [&] { return saveXml(5, "New"); });
}

TEST_P(FeedRecordsTest, OfTwoWhoAddAFeedOfOneNameOneDoes) {
    beforeTransaction([&] {
        row("TORVEX_FEEDS_HTML",
            {{"feedId", 9}, {"feedSite", "aa"}, {"feedLang", "en"}, {"feedName", "Weather"}});
    });
    EXPECT_EQ(saveHtml(0, "Weather"), "-2");
}

TEST_P(FeedRecordsTest, ListsSayWhatFailed) {
    drop("TORVEX_FEEDS_HTML");
    drop("TORVEX_FEEDS_XML");
    EXPECT_THAT(errorOf([&] { html(); }), StartsWith(chain({"getHTMLfeeds !"})));
    EXPECT_THAT(errorOf([&] { xml(); }), StartsWith(chain({"getXMLfeeds !"})));
}

}  // namespace
}  // namespace torvex::test
