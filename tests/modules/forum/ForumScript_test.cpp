#include <gmock/gmock.h>

#include "support/ForumTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class ForumScriptTest : public ForumTest {
  protected:
    std::string script(const std::string& language = "en") {
        host.session.set("torvex_current_interface", language);
        return forum().getScript();
    }
    void say(int label, const std::string& text) {
        connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab1 = ? where lang_label = ?",
                             {text, label});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ForumScriptTest, bothEngines(), engineName);

TEST_P(ForumScriptTest, HoldsEveryFunction) {
    const std::string text = script();
    for (const auto* call :
         {"Folder(folderDescription, hpageId, image, onOff, reference, total)",
          "Item(itemDescription, itemLink, image, onOff, reference, total)", "setStateFolder(isOpen)",
          "propagateChangesInState(folder)", "gFld(val, title, datum, total, tot, reference, img, state)",
          "gLnk(target, title, datum, total, tot, reference, img, state)", "insFld(parent, child)",
          "insDoc(parent, child)", "clickOnFolder(", "clickOnNode(", "initializeDocument()",
          "setOnOff(reference)", "delItem(reference)", "delItems()", "edit(reference)", "back()",
          "close()"}) {
        EXPECT_THAT(text, HasSubstr("function " + std::string(call)));
    }
    for (const auto* member : {"initialize", "setState", "addChild", "createIndex", "hide", "display",
                               "renderOb", "totalHeight", "subEntries", "outputLink"}) {
        EXPECT_THAT(text, HasSubstr("this." + std::string(member) + " = "));
    }
}

TEST_P(ForumScriptTest, HoldsEveryPlaceToFill) {
    const std::string text = script();
    for (const auto* tag : {"torvex_site",
                            "torvex_lang",
                            "torvex_pageId",
                            "forum",
                            "forumId",
                            "topicId",
                            "id",
                            "ua",
                            "winHeight",
                            "topicName",
                            "total_start",
                            "total_end",
                            "mainReaction_start",
                            "mainReaction_end",
                            "reaction_start",
                            "reaction_end",
                            "name",
                            "id1",
                            "id2",
                            "value",
                            "parent",
                            "reactionTitle",
                            "reactionDate",
                            "reactionTotal",
                            "reactionOffline",
                            "reference",
                            "image",
                            "onOff"}) {
        EXPECT_THAT(text, HasSubstr("<!--!" + std::string(tag) + "!-->"));
    }
}

TEST_P(ForumScriptTest, CallsTheRemoteScriptAndThePagesByTheirNames) {
    const std::string text = script();
    EXPECT_THAT(text, HasSubstr("top.link.rsGetObject()"));
    EXPECT_THAT(text, HasSubstr("rs.forum_reactionOnOff('<!--!torvex_site!-->', '<!--!torvex_lang!-->', "
                                "forumId, topicId, reference, onOff)"));
    EXPECT_THAT(text, HasSubstr("'/torvex/torvex_forum/reactions.asp'"));
    EXPECT_THAT(text, HasSubstr("'/torvex/torvex_forum/topics.asp'"));
    EXPECT_THAT(text, HasSubstr("'/torvex/torvex_forum/reaction.asp?pageId="));
}

TEST_P(ForumScriptTest, SpeaksTheLanguageOfTheInterface) {
    for (const int label : {3, 4, 1190, 2175, 2577, 2578, 2579, 2580}) {
        EXPECT_THAT(script("en"),
                    HasSubstr(cell("select lang_vocab1 from TORVEX_INTERFACE_VOCAB where lang_label = " +
                                   std::to_string(label))));
        EXPECT_THAT(script("de"),
                    HasSubstr(cell("select lang_vocab2 from TORVEX_INTERFACE_VOCAB where lang_label = " +
                                   std::to_string(label))));
    }
    EXPECT_THAT(script(), Not(HasSubstr("[[")));
}

TEST_P(ForumScriptTest, WordsAreEncodedForHtmlAndThenForTheScript) {
    say(4, R"(No \ <b>"can't"</b> <!--!forumId!-->)");
    EXPECT_THAT(script(),
                HasSubstr(R"(alert('No \\ &lt;b&gt;&quot;can\'t&quot;&lt;/b&gt; &lt;!--!forumId!--&gt;'))"));
}

TEST_P(ForumScriptTest, WithoutALanguageItsWordsAreEmpty) {
    EXPECT_THAT(script(""), HasSubstr("alert('')"));
}

TEST_P(ForumScriptTest, SaysWhereItFailed) {
    drop("TORVEX_INTERFACE_VOCAB");
    EXPECT_THAT(errorOf([&] { script(); }), ::testing::StartsWith(chain({"getScript !"})));
}

}  // namespace
}  // namespace torvex::test
