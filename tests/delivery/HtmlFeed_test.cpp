#include "support/FeedTest.h"

namespace torvex {
namespace {

class HtmlFeedTest : public test::FeedTest {
  protected:
    int addressFeed(const std::string& target, std::string_view parameters = "") {
        return addHtmlFeed({{"feedURL", server.url(target)}, {"feedParameters", parameters}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, HtmlFeedTest, test::bothEngines(), test::engineName);

std::string redLine(const std::string& line) {
    return "<div align=\"center\"><font size=\"2\" color=\"#fc5a5a\">" + line + "</font></div>";
}

using Targets = std::vector<std::string>;

TEST_P(HtmlFeedTest, AnUnknownFeedIsEmpty) {
    EXPECT_EQ(html(77), "");
}

TEST_P(HtmlFeedTest, AFeedOfNothingIsEmpty) {
    EXPECT_EQ(html(addHtmlFeed({})), "");
    EXPECT_EQ(html(addHtmlFeed({{"feedURL", "  "}, {"feedFile", " "}})), "");
}

TEST_P(HtmlFeedTest, AFileComesFromTheSitesDocuments) {
    putDocument("news/today.html", "<p>caf\u00e9</p>");
    EXPECT_EQ(html(addHtmlFeed({{"feedFile", " news\\today.html "}})), "<p>caf\u00e9</p>");
    EXPECT_EQ(html(addHtmlFeed({{"feedFile", "news/today.html"}})), "<p>caf\u00e9</p>");
}

TEST_P(HtmlFeedTest, AFileLosesTheBlocksOfOtherBrowsers) {
    putDocument("a.html", "a<!--!NS_start!-->ns<!--!NS_end!-->b<!--!IE_start!-->ie<!--!IE_end!-->c");
    const std::string shown = html(addHtmlFeed({{"feedFile", "a.html"}}));
    EXPECT_EQ(shown.find("ns"), std::string::npos);
    EXPECT_NE(shown.find("ie"), std::string::npos);
}

TEST_P(HtmlFeedTest, AFileComesBeforeAnAddress) {
    putDocument("a.html", "file");
    server.answer("/a", "200 OK", "", "address");
    EXPECT_EQ(html(addHtmlFeed({{"feedFile", "a.html"}, {"feedURL", server.url("/a")}})), "file");
    EXPECT_TRUE(server.targets().empty());
}

TEST_P(HtmlFeedTest, AMissingFileShowsTheVocabularysText) {
    server.answer("/a", "200 OK", "", "address");
    EXPECT_EQ(html(addHtmlFeed({{"feedFile", "a.html"}, {"feedURL", server.url("/a")}})),
              "The file of this feed could not be read.");
    EXPECT_TRUE(server.targets().empty());
}

TEST_P(HtmlFeedTest, TheVocabularysTextIsEncoded) {
    connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab1 = ? where lang_label = 2584",
                         {"<gone>"});
    EXPECT_EQ(html(addHtmlFeed({{"feedFile", "a.html"}})), "&lt;gone&gt;");
}

TEST_P(HtmlFeedTest, AFileOutsideTheDocumentsIsNotThere) {
    host.files.bytes["/tvx/settings.toml"] = "secret";
    host.files.bytes["/tvx/docs/02/other.html"] = "other";
    for (const char* file :
         {"../../settings.toml", "..\\..\\settings.toml", "../02/other.html", "a/../../02/other.html"}) {
        EXPECT_EQ(html(addHtmlFeed({{"feedFile", file}})), "The file of this feed could not be read.")
            << file;
    }
}

TEST_P(HtmlFeedTest, ABrokenDiskCostsOneLineAndNamesNoFolder) {
    host.files.readFailure = "input/output error <5>";
    EXPECT_EQ(html(addHtmlFeed({{"feedFile", "a.html"}})),
              redLine("HTTP error - Error in function Load (HTMLTemplate) !\r\n01/a.html: input/output error "
                      "&lt;5&gt;"));
}

TEST_P(HtmlFeedTest, TheStatusStandsInFrontOfTheText) {
    server.answer("/a", "200 OK", "", "<p>text</p>");
    server.answer("/b", "206 Partial", "", "part");
    EXPECT_EQ(html(addressFeed("/a")), "200<p>text</p>");
    EXPECT_EQ(html(addressFeed("/b")), "206part");
}

TEST_P(HtmlFeedTest, AnEmptyAnswerIsItsStatus) {
    server.at("/a", [](test::FeedServer::Peer& peer) { peer.send("HTTP/1.1 204 No Content\r\n\r\n"); });
    EXPECT_EQ(html(addressFeed("/a")), "204");
}

TEST_P(HtmlFeedTest, TheTextIsDecoded) {
    server.answer("/a", "200 OK", "Content-Type: text/html; charset=iso-8859-1\r\n", "caf\xE9");
    EXPECT_EQ(html(addressFeed("/a")), "200caf\u00e9");
}

TEST_P(HtmlFeedTest, BackslashesOfAnAddressAreSlashes) {
    server.answer("/a/b", "200 OK", "", "fine");
    EXPECT_EQ(html(addressFeed("\\a\\b ")), "200fine");
}

TEST_P(HtmlFeedTest, AStaticAddressGetsNoQuery) {
    visit("q=1");
    for (const char* target : {"/a.html", "/a.htm", "/a.HTML", "/a?b=c.html"}) {
        html(addressFeed(target, "p=2"));
    }
    const Targets each{"/a.html", "/a.htm", "/a.HTML", "/a?b=c.html"};
    Targets asked = server.targets();
    asked.erase(std::unique(asked.begin(), asked.end()), asked.end());
    EXPECT_EQ(asked, each);
}

TEST_P(HtmlFeedTest, ADynamicAddressGetsTheVisitorsQueryAndTheFeeds) {
    server.answer("/a.asp", "200 OK", "", "fine");
    visit("pageId=12&q=a%2Fb+c");
    html(addressFeed("/a.asp", "style=short, lines = 5"));
    html(addressFeed("/a.asp?x=y", "style=short"));
    EXPECT_EQ(server.targets(), (Targets{"/a.asp?pageId=12&q=a%2Fb+c&style=short&lines=5",
                                         "/a.asp?x=y&pageId=12&q=a%2Fb+c&style=short"}));
}

TEST_P(HtmlFeedTest, ANameOfBothIsSentTwice) {
    server.answer("/a", "200 OK", "", "fine");
    visit("q=1");
    html(addressFeed("/a", "q=2"));
    EXPECT_EQ(server.targets(), (Targets{"/a?q=1&q=2"}));
}

TEST_P(HtmlFeedTest, AVisitorCannotSlipInAParameterOfTheFeed) {
    server.answer("/a", "200 OK", "", "fine");
    visit("x%26style=long&style%3Dlong%26y=1&z%2523=2");
    html(addressFeed("/a", "style=short"));
    EXPECT_EQ(server.targets(), (Targets{"/a?x%26style=long&style%3Dlong%26y=1&z%2523=2&style=short"}));
}

TEST_P(HtmlFeedTest, EncodesSomeMarksOfAValue) {
    server.answer("/a", "200 OK", "", "fine");
    html(addressFeed("/a", "q=a b/{[_"));
    EXPECT_EQ(server.targets(), (Targets{"/a?q=a+b%2F%7B[_"}));
}

TEST_P(HtmlFeedTest, AVisitorCannotBreakOutOfTheAddress) {
    server.answer("/a", "200 OK", "", "fine");
    visit("q=1%0D%0AHost:%20evil%0D%0A&r=%23x");
    EXPECT_EQ(html(addressFeed("/a")), "200fine");
    EXPECT_EQ(server.lastRequest().find("Host: evil"), std::string::npos);
    EXPECT_EQ(server.targets(), (Targets{"/a?q=1%0D%0AHost%3A+evil%0D%0A&r=%23x"}));
}

TEST_P(HtmlFeedTest, ABadStatusIsTriedThreeTimesAndShownInRed) {
    EXPECT_EQ(html(addressFeed("/none")), redLine("HTTP 404 - Not Found"));
    EXPECT_EQ(server.targets(), (Targets{"/none", "/none", "/none"}));
}

TEST_P(HtmlFeedTest, TheStatusTextIsEncoded) {
    server.answer("/a", "500 <b>\"Broken\" & more", "", "");
    EXPECT_EQ(html(addressFeed("/a")), redLine("HTTP 500 - &lt;b&gt;&quot;Broken&quot; &amp; more"));
}

TEST_P(HtmlFeedTest, AGoodStatusIsNotTriedAgain) {
    server.answer("/a", "200 OK", "", "");
    server.answer("/b", "304 Not Modified", "", "");
    server.answer("/c", "399 Odd", "", "");
    EXPECT_EQ(html(addressFeed("/a")), "200");
    EXPECT_EQ(html(addressFeed("/b")), "304");
    EXPECT_EQ(html(addressFeed("/c")), "399");
    EXPECT_EQ(server.targets(), (Targets{"/a", "/b", "/c"}));
}

TEST_P(HtmlFeedTest, ALaterTryMaySucceed) {
    int asked = 0;
    server.at("/a", [&asked](test::FeedServer::Peer& peer) {
        peer.send(++asked < 3 ? test::answerText("503 Busy", "", "")
                              : test::answerText("200 OK", "", "at last"));
    });
    EXPECT_EQ(html(addressFeed("/a")), "200at last");
    EXPECT_EQ(asked, 3);
}

TEST_P(HtmlFeedTest, ADeadServerCostsOneLine) {
    server.at("/a", [](test::FeedServer::Peer&) {});
    EXPECT_EQ(html(addressFeed("/a")), redLine("HTTP error - the server gave no answer"));
    EXPECT_EQ(server.targets(), (Targets{"/a"}));
}

TEST_P(HtmlFeedTest, APageThatIsFetchedAsAFeedFetchesNone) {
    server.answer("/a", "200 OK", "", "fine");
    host.request.setServerVariable("HTTP_CDN_LOOP", "other, torvex");
    EXPECT_EQ(html(addressFeed("/a")),
              redLine("HTTP error - a page that is fetched as a feed can't fetch feeds itself"));
    EXPECT_TRUE(server.targets().empty());
    host.request.setServerVariable("HTTP_CDN_LOOP", "other");
    EXPECT_EQ(html(addressFeed("/a")), "200fine");
}

TEST_P(HtmlFeedTest, AnAnswerIsFetchedOnceForAsLongAsItsSourceAllows) {
    server.answer("/kept", "200 OK", "Cache-Control: max-age=60\r\n", "kept");
    server.answer("/anew", "200 OK", "", "anew");
    for (const char* target : {"/kept", "/anew"}) {
        const int feed = addressFeed(target);
        EXPECT_EQ(html(feed), html(feed));
    }
    EXPECT_EQ(server.targets(), (Targets{"/kept", "/anew", "/anew"}));
}

TEST_P(HtmlFeedTest, WhatIsKeptForOneVisitorsParametersIsNoOthers) {
    server.answer("/a", "200 OK", "Cache-Control: max-age=60\r\n", "fine");
    const int feed = addressFeed("/a");
    visit("q=1");
    html(feed);
    visit("q=2");
    html(feed);
    EXPECT_EQ(server.targets(), (Targets{"/a?q=1", "/a?q=2"}));
}

TEST_P(HtmlFeedTest, AnotherSchemeCostsOneLine) {
    EXPECT_EQ(html(addHtmlFeed({{"feedURL", "file:///etc/passwd"}})),
              redLine("HTTP error - only http and https addresses can be fetched"));
}

TEST_P(HtmlFeedTest, ABrokenDatabaseCostsOneLine) {
    connection().execute("drop table TORVEX_FEEDS_HTML");
    const std::string shown = html(1);
    EXPECT_TRUE(shown.starts_with("<div align=\"center\"><font size=\"2\" color=\"#fc5a5a\">HTTP error - "))
        << shown;
}

}  // namespace
}  // namespace torvex
