#include "delivery/XmlFeed.h"

#include "support/FeedTest.h"

namespace torvex {
namespace {

class XmlFeedTest : public test::FeedTest {};
INSTANTIATE_TEST_SUITE_P(Engines, XmlFeedTest, test::bothEngines(), test::engineName);

using Targets = std::vector<std::string>;

std::string sheet(const std::string& body) {
    return "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
           "<xsl:output method=\"html\" indent=\"no\"/><xsl:param name=\"q\" select=\"'none'\"/>"
           "<xsl:template match=\"/\">" +
           body + "</xsl:template></xsl:stylesheet>";
}

const std::string listSheet = sheet(
    "<ul><xsl:for-each select=\"news/item\"><li><xsl:value-of select=\".\"/></li>"
    "</xsl:for-each></ul>");
const std::string news = "<news><item>one &lt; two</item><item>caf\u00e9</item></news>";
const std::string list = "<ul><li>one &lt; two</li><li>caf\u00e9</li></ul>";

TEST_P(XmlFeedTest, AnUnknownFeedIsEmpty) {
    EXPECT_EQ(xml(77), "");
}

TEST_P(XmlFeedTest, AFeedThatLacksADocumentIsEmpty) {
    server.answer("/a.xml", "200 OK", "", news);
    server.answer("/a.xsl", "200 OK", "", listSheet);
    EXPECT_EQ(xml(addXmlFeed({})), "");
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XML", server.url("/a.xml")}})), "");
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XSL", server.url("/a.xsl")}, {"feedFile_XML", "missing.xml"}})), "");
    EXPECT_TRUE(server.targets().empty());
}

TEST_P(XmlFeedTest, TransformsFiles) {
    putDocument("a.xml", news);
    putDocument("xsl/a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", " a.xml "}, {"feedFile_XSL", "xsl\\a.xsl"}})), list);
}

TEST_P(XmlFeedTest, TransformsWhatItFetches) {
    server.answer("/a.xml", "200 OK", "", news);
    server.answer("/a.xsl", "200 OK", "", listSheet);
    EXPECT_EQ(
        xml(addXmlFeed({{"feedURL_XML", server.url("\\a.xml ")}, {"feedURL_XSL", server.url("/a.xsl")}})),
        list);
    EXPECT_EQ(server.targets(), (Targets{"/a.xsl", "/a.xml"}));
}

TEST_P(XmlFeedTest, AFileComesBeforeAnAddress) {
    putDocument("a.xml", news);
    putDocument("a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "a.xml"},
                              {"feedURL_XML", server.url("/a.xml")},
                              {"feedFile_XSL", "a.xsl"},
                              {"feedURL_XSL", server.url("/a.xsl")}})),
              list);
    EXPECT_TRUE(server.targets().empty());
}

TEST_P(XmlFeedTest, AMissingFileFallsBackToTheAddress) {
    server.answer("/a.xml", "200 OK", "", news);
    server.answer("/a.xsl", "200 OK", "", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "missing.xml"},
                              {"feedURL_XML", server.url("/a.xml")},
                              {"feedFile_XSL", "missing.xsl"},
                              {"feedURL_XSL", server.url("/a.xsl")}})),
              list);
}

TEST_P(XmlFeedTest, AFileOutsideTheDocumentsIsNotThere) {
    host.files.bytes["/tvx/docs/02/a.xml"] = news;
    putDocument("a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "../02/a.xml"}, {"feedFile_XSL", "a.xsl"}})), "");
}

TEST_P(XmlFeedTest, OnlyDynamicAddressesGetTheQuery) {
    visit("q=a%2Fb+c");
    for (const char* target : {"/a.xml", "/a.XML", "/a.php", "/a.php?x=y"})
        server.answer(target, "200 OK", "", news);
    for (const char* target : {"/a.xsl", "/a.xslt", "/s.php"}) server.answer(target, "200 OK", "", listSheet);
    const auto fetch = [&](const char* data, const char* stylesheet) {
        xml(addXmlFeed({{"feedURL_XML", server.url(data)},
                        {"feedURL_XSL", server.url(stylesheet)},
                        {"feedParameters", "p=1"}}));
    };
    fetch("/a.xml", "/a.xsl");
    fetch("/a.XML", "/a.xslt");
    fetch("/a.php?x=y", "/s.php");
    EXPECT_EQ(server.targets(), (Targets{"/a.xsl", "/a.xml", "/a.xslt", "/a.XML", "/s.php?q=a%2Fb+c&p=1",
                                         "/a.php?x=y&q=a%2Fb+c&p=1"}));
}

TEST_P(XmlFeedTest, AFileGetsNoQuery) {
    visit("q=1");
    putDocument("data.php", news);
    putDocument("sheet.php", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "data.php"}, {"feedFile_XSL", "sheet.php"}})), list);
}

TEST_P(XmlFeedTest, TheVisitorsQueryReachesTheStylesheet) {
    putDocument("a.xml", news);
    putDocument("a.xsl", sheet("[<xsl:value-of select=\"$q\"/>]"));
    const int feed = addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "a.xsl"}});
    EXPECT_EQ(xml(feed), "[none]");
    visit("q=it%27s+%22%3Cb%3E%22&=nameless&a:b=1");
    EXPECT_EQ(xml(feed), "[it's \"&lt;b&gt;\"]");
}

TEST_P(XmlFeedTest, TheFeedsOwnParameterReachesTheStylesheetInsteadOfTheVisitors) {
    putDocument("a.xml", news);
    putDocument("a.xsl", sheet("[<xsl:value-of select=\"$q\"/>]"));
    visit("q=visitor");
    EXPECT_EQ(
        xml(addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "a.xsl"}, {"feedParameters", "q=own"}})),
        "[own]");
}

TEST_P(XmlFeedTest, BlanksAreKeptWhereTheFeedSaysSo) {
    putDocument("a.xml", "<news> <item>a</item> <item>b</item></news>");
    putDocument("a.xsl", sheet("[<xsl:value-of select=\"news\"/>]"));
    const int feed = addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "a.xsl"}});
    EXPECT_EQ(xml(feed), "[ab]");
    connection().execute("update TORVEX_FEEDS_XML set feedPreserveWhiteSpace = 1 where feedId = ?", {feed});
    EXPECT_EQ(xml(feed), "[ a b]");
}

TEST_P(XmlFeedTest, TheCharsetOfTheAnswerIsHeeded) {
    server.answer("/a.xml", "200 OK", "Content-Type: text/xml; charset=iso-8859-1\r\n",
                  "<news><item>caf\xE9</item></news>");
    putDocument("a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XML", server.url("/a.xml")}, {"feedFile_XSL", "a.xsl"}})),
              "<ul><li>caf\u00e9</li></ul>");
}

TEST_P(XmlFeedTest, ADocumentInAnotherEncodingIsRead) {
    server.answer("/a.xml", "200 OK", "Content-Type: text/xml\r\n",
                  "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><news><item>caf\xE9</item></news>");
    putDocument("a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XML", server.url("/a.xml")}, {"feedFile_XSL", "a.xsl"}})),
              "<ul><li>caf\u00e9</li></ul>");
}

TEST_P(XmlFeedTest, BrokenDocumentsShowTheReason) {
    putDocument("bad.xml", "<news><item>");
    putDocument("a.xml", news);
    putDocument("a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "bad.xml"}, {"feedFile_XSL", "a.xsl"}})),
              "line 1: Premature end of data in tag item line 1");
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "bad.xml"}})),
              "line 1: Premature end of data in tag item line 1");
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "a.xml"}})),
              "line 1: document is not a stylesheet");
}

TEST_P(XmlFeedTest, AnAddressThatFailsIsTriedOnceAndShowsTheReason) {
    putDocument("a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XML", server.url("/none.xml")}, {"feedFile_XSL", "a.xsl"}})),
              "HTTP 404 - Not Found");
    EXPECT_EQ(server.targets(), (Targets{"/none.xml"}));
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XML", "file:///etc/passwd"}, {"feedFile_XSL", "a.xsl"}})),
              "only http and https addresses can be fetched");
}

TEST_P(XmlFeedTest, AnEndlessAnswerIsCutOff) {
    putDocument("a.xsl", listSheet);
    server.at("/a.xml", [](test::FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\n\r\n<news>");
        peer.sendForEver(std::string(65536, ' '));
    });
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XML", server.url("/a.xml")}, {"feedFile_XSL", "a.xsl"}})),
              "the answer is larger than 8 MB");
}

TEST_P(XmlFeedTest, ADocumentReachesNoFile) {
    server.answer("/a.xml", "200 OK", "",
                  "<!DOCTYPE news [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><news><item>&x;</item></news>");
    putDocument("a.xsl", listSheet);
    EXPECT_EQ(xml(addXmlFeed({{"feedURL_XML", server.url("/a.xml")}, {"feedFile_XSL", "a.xsl"}})),
              "line 1: the document declares entities");
}

TEST_P(XmlFeedTest, AStylesheetReachesNoFile) {
    putDocument("a.xml", news);
    putDocument("a.xsl", sheet("<xsl:copy-of select=\"document('file:///etc/passwd')\"/>"));
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "a.xsl"}})),
              "line 1: Local file read for file:///etc/passwd refused");
}

TEST_P(XmlFeedTest, TheReasonIsShownAsPlainText) {
    putDocument("a.xml", news);
    putDocument("a.xsl",
                sheet("<xsl:message terminate=\"yes\">no <xsl:value-of select=\"$q\"/></xsl:message>"));
    visit("q=%3Cscript%3E");
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "a.xsl"}})), "no &lt;script&gt;");
}

TEST_P(XmlFeedTest, ABrokenDiskShowsTheReasonAndNamesNoFolder) {
    putDocument("a.xml", news);
    putDocument("a.xsl", listSheet);
    host.files.readFailure = "input/output error";
    EXPECT_EQ(xml(addXmlFeed({{"feedFile_XML", "a.xml"}, {"feedFile_XSL", "a.xsl"}})),
              "01/a.xsl: input/output error");
}

TEST_P(XmlFeedTest, ABrokenDatabaseShowsTheReason) {
    connection().execute("drop table TORVEX_FEEDS_XML");
    EXPECT_NE(xml(1), "");
}

}  // namespace
}  // namespace torvex
