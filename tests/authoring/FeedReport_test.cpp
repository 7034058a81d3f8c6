#include "authoring/FeedReport.h"

#include "platform/HostContext.h"
#include "support/FeedTest.h"

namespace torvex {
namespace {

const std::string sheet =
    "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
    "<xsl:output method=\"html\" indent=\"no\"/><xsl:template match=\"/\"><p><xsl:value-of "
    "select=\"a\"/></p></xsl:template></xsl:stylesheet>";
const std::string start =
    "<div align=\"center\"><font size=\"2\" face=\"verdana,arial,helvetica\" color=\"#fc5a5a\">HTTP/XML "
    "error ";
const std::string end = "</font></div>";

class FeedReportTest : public test::FeedTest {
  protected:
    std::string report(const std::string& data, const std::string& stylesheet) {
        HostContext seen = context();
        const int feedId =
            addXmlFeed({{"feedURL_XML", server.url(data)}, {"feedURL_XSL", server.url(stylesheet)}});
        return reportedXmlFeed(seen, connection(), feedId);
    }
    static std::string textOf(const std::string& report) {
        EXPECT_TRUE(report.starts_with(start)) << report;
        EXPECT_TRUE(report.ends_with(end)) << report;
        return report.substr(start.size(), report.size() - start.size() - end.size());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, FeedReportTest, test::bothEngines(), test::engineName);

TEST_P(FeedReportTest, AFeedThatWorksGivesItsOutput) {
    server.answer("/a.xml", "200 OK", "", "<a>1 &lt; 2</a>");
    server.answer("/a.xsl", "200 OK", "", sheet);
    EXPECT_EQ(report("/a.xml", "/a.xsl"), "<p>1 &lt; 2</p>");
    EXPECT_EQ(server.targets(), (std::vector<std::string>{"/a.xsl", "/a.xml"}));
}

TEST_P(FeedReportTest, AnUnknownFeedIsEmpty) {
    EXPECT_EQ(reportedXmlFeed(host.context(), connection(), 4711), "");
}

TEST_P(FeedReportTest, TheStylesheetIsTriedThreeTimesFirst) {
    EXPECT_EQ(textOf(report("/a.xml", "/a.xsl")), "404 - HTTP 404 - Not Found");
    EXPECT_EQ(server.targets(), (std::vector<std::string>{"/a.xsl", "/a.xsl", "/a.xsl"}));
}

TEST_P(FeedReportTest, TheDataAreTriedThreeTimes) {
    server.answer("/a.xsl", "200 OK", "", sheet);
    server.answer("/a.xml", "503 <Busy>", "", "");
    EXPECT_EQ(textOf(report("/a.xml", "/a.xsl")), "503 - HTTP 503 - &lt;Busy&gt;");
    EXPECT_EQ(server.targets(), (std::vector<std::string>{"/a.xsl", "/a.xml", "/a.xml", "/a.xml"}));
}

TEST_P(FeedReportTest, ASecondTryMayDo) {
    server.answer("/a.xsl", "200 OK", "", sheet);
    int asked = 0;
    server.at("/a.xml", [&](test::FeedServer::Peer& peer) {
        peer.send(++asked == 1 ? test::answerText("500 No", "", "")
                               : test::answerText("200 OK", "", "<a>x</a>"));
    });
    EXPECT_EQ(report("/a.xml", "/a.xsl"), "<p>x</p>");
    EXPECT_EQ(asked, 2);
}

TEST_P(FeedReportTest, WhatIsNoXmlIsTold) {
    server.answer("/a.xsl", "200 OK", "", sheet);
    server.answer("/a.xml", "200 OK", "", "<a>never closed");
    const std::string told = textOf(report("/a.xml", "/a.xsl"));
    EXPECT_GT(std::stoi(told), 0);
    EXPECT_NE(told.find(" - "), std::string::npos);
    EXPECT_EQ(told.find('<'), std::string::npos);
}

TEST_P(FeedReportTest, AFailureWithoutACodeIsToldWithoutOne) {
    server.answer("/a.xml", "200 OK", "", "<a/>");
    server.answer("/a.xsl", "200 OK", "", "<notASheet/>");
    EXPECT_TRUE(textOf(report("/a.xml", "/a.xsl")).starts_with("- "));
    connection().execute("drop table TORVEX_FEEDS_XML");
    EXPECT_TRUE(textOf(reportedXmlFeed(host.context(), connection(), 1)).starts_with("- "));
}

TEST_P(FeedReportTest, AServerThatIsNotThereIsTold) {
    const int feedId = addXmlFeed(
        {{"feedURL_XML", "http://127.0.0.1:1/a.xml"}, {"feedURL_XSL", "http://127.0.0.1:1/a.xsl"}});
    HostContext seen = context();
    EXPECT_TRUE(textOf(reportedXmlFeed(seen, connection(), feedId)).starts_with("- "));
}

}  // namespace
}  // namespace torvex
