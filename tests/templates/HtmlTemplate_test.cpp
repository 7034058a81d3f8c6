#include "templates/HTMLTemplate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Errors.h"
#include "support/TestHost.h"

namespace torvex {
namespace {

using test::TestHost;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* mozilla = "Mozilla/5.0 (X11; Linux x86_64) Gecko/20100101 Firefox/115.0";
constexpr const char* explorer = "Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)";

std::string messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 40000);
        return error.what();
    }
    return "nothing was thrown";
}

class HtmlTemplate : public testing::Test {
  protected:
    HTMLTemplate with(const std::string& text) {
        HTMLTemplate made(host_.context());
        made.setStrVal(text);
        return made;
    }
    std::string loadedFor(const std::string& agent) {
        host_.request.setServerVariable("HTTP_USER_AGENT", agent);
        host_.files.bytes["/t.htm"] =
            "a<!--!IE_start!-->ie<!--!IE_end!--><!--!NS_start!-->ns<!--!NS_end!-->z";
        HTMLTemplate made(host_.context());
        EXPECT_TRUE(made.load("/t.htm"));
        return made.strVal();
    }

    TestHost host_;
};

TEST_F(HtmlTemplate, LoadKeepsTheBlockOfTheBrowserInUseWithItsMarkers) {
    EXPECT_EQ(loadedFor(explorer), "a<!--!IE_start!-->ie<!--!IE_end!-->z");
    EXPECT_EQ(loadedFor(mozilla), "a<!--!NS_start!-->ns<!--!NS_end!-->z");
}

TEST_F(HtmlTemplate, ABrowserThatIsNoMozillaCountsAsInternetExplorer) {
    EXPECT_THAT(loadedFor("curl/8.0"), HasSubstr("ie"));
    EXPECT_THAT(loadedFor(""), HasSubstr("ie"));
    EXPECT_THAT(loadedFor("MOZILLA/3.0"), HasSubstr("ns"));
    EXPECT_THAT(loadedFor("something MsIe"), HasSubstr("ie"));
}

TEST_F(HtmlTemplate, LoadOfAMissingFileReturnsFalseWithAnEmptyBuffer) {
    HTMLTemplate made = with("before");
    EXPECT_FALSE(made.load("/none.htm"));
    EXPECT_EQ(made.strVal(), "");
}

TEST_F(HtmlTemplate, LoadReadsTheFileOnce) {
    loadedFor(mozilla);
    EXPECT_EQ(host_.files.reads, 1);
}

TEST_F(HtmlTemplate, LoadReadsUnicodeWhenAsked) {
    using namespace std::string_literals;
    host_.files.bytes["/t.htm"] = "\xE9\0"s;
    HTMLTemplate made(host_.context());
    EXPECT_TRUE(made.load("/t.htm", TextFormat::Unicode));
    EXPECT_EQ(made.strVal(), "é");
}

TEST_F(HtmlTemplate, AFailureOfLoadCarriesItsLine) {
    host_.files.readFailure = "the disk is on fire";
    HTMLTemplate made = with("");
    EXPECT_EQ(messageOf([&] { made.load("/t.htm"); }),
              "Error in function Load (HTMLTemplate) !\r\n/t.htm: the disk is on fire");
}

TEST_F(HtmlTemplate, SaveWritesTheBufferAndALineBreak) {
    EXPECT_TRUE(with("é").save("\\folder\\t.htm"));
    EXPECT_EQ(host_.files.bytes.at("/folder/t.htm"), "é\r\n");
}

TEST_F(HtmlTemplate, SaveOverwrites) {
    host_.files.bytes["/t.htm"] = "something longer than that";
    with("x").save("/t.htm");
    EXPECT_EQ(host_.files.bytes.at("/t.htm"), "x\r\n");
}

TEST_F(HtmlTemplate, SaveAsUnicodeWritesUtf16) {
    using namespace std::string_literals;
    EXPECT_TRUE(with("x").save("/t.htm", true));
    EXPECT_EQ(host_.files.bytes.at("/t.htm"), "\xFF\xFEx\0\r\0\n\0"s);
}

TEST_F(HtmlTemplate, AFailureOfSaveIsRaisedAndLeavesTheFile) {
    host_.files.bytes["/t.htm"] = "old";
    host_.files.writeFailure = "no space";
    EXPECT_EQ(messageOf([&] { with("x").save("/t.htm"); }), "Error in function save !\r\n/t.htm: no space");
    EXPECT_EQ(host_.files.bytes.at("/t.htm"), "old");
}

TEST_F(HtmlTemplate, ABlockExistsOnlyWithItsEndBehindItsStart) {
    EXPECT_TRUE(with("<!--!a_start!--><!--!a_end!-->").blockExists("a"));
    EXPECT_TRUE(with("<!--!A_START!-->x<!--!a_End!-->").blockExists("a"));
    EXPECT_FALSE(with("<!--!a_end!-->").blockExists("a"));
    EXPECT_FALSE(with("<!--!a_start!-->").blockExists("a"));
    EXPECT_FALSE(with("<!--!a_end!--><!--!a_start!-->").blockExists("a"));
    EXPECT_FALSE(with("").blockExists("a"));
}

TEST_F(HtmlTemplate, ExtractBlockGivesTheFirstBlockAndLeavesTheBuffer) {
    const std::string text = "<!--!a_start!-->1<!--!a_end!--><!--!a_start!-->2<!--!a_end!-->";
    HTMLTemplate made = with(text);
    EXPECT_EQ(made.extractBlock("A"), "1");
    EXPECT_EQ(made.strVal(), text);
}

TEST_F(HtmlTemplate, TheFirstEndEndsABlock) {
    const HTMLTemplate made = with("<!--!a_start!-->1<!--!a_start!-->2<!--!a_end!-->3<!--!a_end!-->");
    EXPECT_EQ(made.extractBlock("a"), "1<!--!a_start!-->2");
}

TEST_F(HtmlTemplate, AnEndAheadOfTheStartIsPassedOver) {
    EXPECT_EQ(with("<!--!a_end!--><!--!a_start!-->1<!--!a_end!-->").extractBlock("a"), "1");
}

TEST_F(HtmlTemplate, ACustomBlockLiesBetweenTwoTags) {
    HTMLTemplate made = with("0<!--!from!-->1<!--!to!-->2");
    EXPECT_EQ(made.extractCustomBlock("FROM", "to"), "1");
    made.replaceCustomBlock("from", "TO", "x");
    EXPECT_EQ(made.strVal(), "0x2");
}

TEST_F(HtmlTemplate, ACustomBlockMayLieBetweenTwoTagsOfOneName) {
    EXPECT_EQ(with("<!--!line!-->1<!--!line!-->2<!--!line!-->").extractCustomBlock("line", "line"), "1");
}

TEST_F(HtmlTemplate, ReplaceBlockReplacesTheFirstWithItsMarkers) {
    HTMLTemplate made = with("0<!--!a_start!-->1<!--!a_end!-->2<!--!a_start!-->3<!--!a_end!-->");
    made.replaceBlock("a", "<!--!a_start!-->");
    EXPECT_EQ(made.strVal(), "0<!--!a_start!-->2<!--!a_start!-->3<!--!a_end!-->");
}

TEST_F(HtmlTemplate, ReplaceBlockMayTakeAPartOfTheBufferItself) {
    HTMLTemplate made = with("ab<!--!a_start!-->1<!--!a_end!-->");
    made.replaceBlock("a", std::string_view(made.strVal()).substr(0, 2));
    EXPECT_EQ(made.strVal(), "abab");
}

class MissingBlock : public HtmlTemplate {
  protected:
    void expectAnswer(const std::function<void(HTMLTemplate&)>& operation, const std::string& what) {
        host_.application.set("torvex_interface_charset", "utf-8");
        HTMLTemplate made = with("untouched");
        EXPECT_THROW(operation(made), ResponseEnded);
        EXPECT_EQ(made.strVal(), "untouched");
        EXPECT_TRUE(host_.response.isEnded());
        EXPECT_EQ(host_.response.contentType, "text/html");
        EXPECT_EQ(host_.response.charset, "utf-8");
        EXPECT_EQ(
            host_.response.body(),
            "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"></head><body>"
            "<div align=center><font size=2 color=#ff0000 face=Arial><br><br><br><b>" +
                what + " not found !</b></font></div></body></html>");
    }
};

TEST_F(MissingBlock, IsAnsweredByExtractBlock) {
    expectAnswer([](auto& made) { made.extractBlock("a"); }, "Block \"a\"");
}

TEST_F(MissingBlock, IsAnsweredByReplaceBlock) {
    expectAnswer([](auto& made) { made.replaceBlock("a", "x"); }, "Block \"a\"");
}

TEST_F(MissingBlock, IsAnsweredByExtractCustomBlock) {
    expectAnswer([](auto& made) { made.extractCustomBlock("a", "b"); }, "Custom block \"a...b\"");
}

TEST_F(MissingBlock, IsAnsweredByReplaceCustomBlock) {
    expectAnswer([](auto& made) { made.replaceCustomBlock("a", "b", "x"); }, "Custom block \"a...b\"");
}

TEST_F(MissingBlock, IsNamedAsTextAndNotAsMarkup) {
    expectAnswer([](auto& made) { made.extractBlock("<b>"); }, "Block \"&lt;b&gt;\"");
}

TEST_F(HtmlTemplate, JsEncodeEscapesBackslashesAndBothQuotes) {
    EXPECT_EQ(with("").jsEncode("a\\b'c\"d\\'"), "a\\\\b\\'c\\\"d\\\\\\'");
    EXPECT_EQ(with("").jsEncode("é\n"), "é\n");
}

TEST_F(HtmlTemplate, TheDatabaseIsAskedForOnlyWhenItIsNeeded) {
    HTMLTemplate made = with("<body></body>");
    made.syncFrames("12");
    EXPECT_EQ(made.strVal(), "<body></body>");
}

TEST_F(HtmlTemplate, WithoutConnectTheFirstQueryFailsWithTheOperationsLine) {
    HTMLTemplate made = with("buffer");
    EXPECT_THAT(messageOf([&] { made.getNodeId(12); }), StartsWith("Error in function getNodeId !\r\n"));
    EXPECT_THAT(messageOf([&] { made.getPageId("aa.bb"); }), StartsWith("Error in function getPageId !\r\n"));
    EXPECT_THAT(messageOf([&] { made.loadAppTpl("12", "x"); }),
                StartsWith("Error in function loadAppTpl !\r\n"));
    host_.application.set("torvex_frames", true);
    EXPECT_THAT(messageOf([&] { made.syncFrames("12"); }), StartsWith("Error in function syncFrames !\r\n"));
}

}  // namespace
}  // namespace torvex
