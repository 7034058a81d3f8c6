#include <gmock/gmock.h>
#include <map>

#include "support/ForumTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// A GIF of 17 by 19 pixels, as far as its size needs it.
const std::string picture = std::string("GIF89a\x11\0\x13\0\0\0\0", 13);

class ReactionTreeTest : public ForumTest {
  protected:
    std::string draw(int reactionId = 0, const std::string& mode = "L") {
        return forum().getReactionTree(1, 1, reactionId, mode);
    }
    /// The rows, topic first.
    std::vector<std::string> rows(const std::string& html) {
        const std::string begin = R"(<table cellpadding="0" cellspacing="0" border="0"><tr>)";
        std::vector<std::string> found;
        for (auto at = html.find(begin); at != std::string::npos;) {
            const auto next = html.find(begin, at + 1);
            found.push_back(html.substr(at, next - at));
            at = next;
        }
        return found;
    }
    /// The pictures of each row below the topic's: "node", "vertline node", ...
    std::vector<std::string> lines() {
        std::vector<std::string> all;
        const auto drawn = rows(draw());
        for (std::size_t i = 1; i < drawn.size(); ++i) {
            std::string names;
            const std::string mark = "<img src='images/tree_";
            for (auto at = drawn[i].find(mark); at != std::string::npos; at = drawn[i].find(mark, at + 1)) {
                const auto from = at + mark.size();
                names += (names.empty() ? "" : " ") + drawn[i].substr(from, drawn[i].find('.', from) - from);
            }
            all.push_back(names);
        }
        return all;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ReactionTreeTest, bothEngines(), engineName);

TEST_P(ReactionTreeTest, IsTheTopicAndItsReactionsExactly) {
    host.files.bytes["/install/wwwroot/torvex_forum/images/tree_blank.gif"] = picture;
    reaction(5, "01", " Green <b>", "20260603");
    EXPECT_EQ(
        draw(),
        R"x(<table class="forum_bgcolor" cellpadding="0" cellspacing="0" border="0" width="100%"><tr><td>)x"
        R"x(<table cellpadding="0" cellspacing="0" border="0"><tr><td colspan="2" nowrap>)x"
        R"x(<a href="javascript:view(1,1,0)" class="forum_topicTitle")x"
        R"x( onmouseover="status='';return true" nowrap>Moss &amp; lichen</a>)x"
        R"x(<span class="forum_topicDate"> - 01/06/2026 </span></td></tr></table>)x"
        R"x(<table cellpadding="0" cellspacing="0" border="0"><tr><td nowrap>)x"
        R"x(<img src='images/tree_lastnode.gif' width='17' height='19'></td>)x"
        R"x(<td width="100%" nowrap>&nbsp;<a href="javascript:view(1,1,5)" class="forum_reactionTitle")x"
        R"x( onmouseover="status='';return true" nowrap>Green &lt;b&gt;</a>)x"
        R"x(<span class="forum_reactionDate"> - 03/06/2026 </span></td></tr></table></td></tr></table>)x");
}

TEST_P(ReactionTreeTest, ANodeWithALaterSiblingGoesOnAndTheLastOneIsACorner) {
    reaction(1, "01");
    reaction(2, "01.01");
    reaction(3, "01.02");
    reaction(4, "02");
    EXPECT_THAT(lines(), ElementsAre("node", "vertline node", "vertline lastnode", "lastnode"));
}

TEST_P(ReactionTreeTest, BelowTheLastNodeNothingGoesOn) {
    reaction(1, "01");
    reaction(2, "01.01");
    EXPECT_THAT(lines(), ElementsAre("lastnode", "blank lastnode"));
}

TEST_P(ReactionTreeTest, ALineEndsWithItsSiblings) {
    reaction(1, "01");
    reaction(2, "01.01");
    reaction(3, "01.01.01");
    reaction(4, "02");
    reaction(5, "02.01");
    reaction(6, "02.01.01");
    EXPECT_THAT(lines(), ElementsAre("node", "vertline lastnode", "vertline blank lastnode", "lastnode",
                                     "blank lastnode", "blank blank lastnode"));
}

TEST_P(ReactionTreeTest, PlacesThatSkipALevelAreDrawnAtTheirOwn) {
    reaction(1, "01");
    reaction(2, "01.01.01");
    reaction(3, "02.01.01.01");
    reaction(4, "03");
    EXPECT_THAT(lines(),
                ElementsAre("node", "vertline blank lastnode", "vertline blank blank lastnode", "lastnode"));
}

TEST_P(ReactionTreeTest, AReactionWithoutAPlaceIsARowAllTheSame) {
    reaction(1, "");
    reaction(2, "01");
    EXPECT_THAT(lines(), ElementsAre("lastnode", "lastnode"));
}

TEST_P(ReactionTreeTest, TheOrderIsThatOfThePlacesAndNotOfTheNumbers) {
    reaction(1, "02", "second");
    reaction(2, "01.01", "below the first");
    reaction(3, "01", "first");
    const auto drawn = rows(draw());
    ASSERT_EQ(drawn.size(), 4U);
    EXPECT_THAT(drawn[1], HasSubstr(">first<"));
    EXPECT_THAT(drawn[2], HasSubstr(">below the first<"));
    EXPECT_THAT(drawn[3], HasSubstr(">second<"));
}

TEST_P(ReactionTreeTest, AReactionOffLineIsLeftOutAndItsChildrenStayAtTheirLevel) {
    reaction(1, "01", "hidden", "20260602", 0);
    reaction(2, "01.01", "child");
    EXPECT_THAT(lines(), ElementsAre("blank lastnode"));
    EXPECT_THAT(draw(), Not(HasSubstr("hidden")));
}

TEST_P(ReactionTreeTest, WhatWasMadeExactlyTheHotPeriodAgoIsNew) {
    topic(2, "Fresh", "20260608");
    reaction(1, "01", "fresh", "20260608", 1, 2);
    reaction(2, "02", "stale", "20260607", 1, 2);
    const auto drawn = rows(forum().getReactionTree(1, 2));
    const std::string mark = R"( </span>&nbsp;<img src="images/new.gif"></td>)";
    ASSERT_EQ(drawn.size(), 3U);
    EXPECT_THAT(drawn[0], HasSubstr(mark));
    EXPECT_THAT(drawn[1], HasSubstr(mark));
    EXPECT_THAT(drawn[2], Not(HasSubstr("new.gif")));
}

TEST_P(ReactionTreeTest, TheHotPeriodReachesBackIntoThePreviousYear) {
    set("forum_hotPeriod", 200);
    reaction(1, "01", "fresh", "20251127");
    reaction(2, "02", "stale", "20251126");
    const auto drawn = rows(draw());
    EXPECT_THAT(drawn.at(1), HasSubstr("new.gif"));
    EXPECT_THAT(drawn.at(2), Not(HasSubstr("new.gif")));
}

TEST_P(ReactionTreeTest, TheReactionThatIsReadNowIsMarked) {
    reaction(1, "01", "one");
    reaction(2, "02", "two");
    const auto drawn = rows(draw(2));
    EXPECT_THAT(drawn.at(1), HasSubstr(R"(class="forum_reactionTitle")"));
    EXPECT_THAT(drawn.at(1), HasSubstr(R"(class="forum_reactionDate")"));
    EXPECT_THAT(drawn.at(2), HasSubstr(R"(class="forum_reactionTitle_hl")"));
    EXPECT_THAT(drawn.at(2), HasSubstr(R"(class="forum_reactionDate_hl")"));
}

TEST_P(ReactionTreeTest, NumberZeroMarksNothing) {
    reaction(1, "01");
    EXPECT_THAT(draw(0), Not(HasSubstr("_hl")));
    EXPECT_THAT(draw(4711), Not(HasSubstr("_hl")));
}

TEST_P(ReactionTreeTest, WithoutThePictureTheSizesAreZeroAndTheTreeStillDraws) {
    reaction(1, "01");
    EXPECT_THAT(draw(), HasSubstr("<img src='images/tree_lastnode.gif' width='0' height='0'>"));
}

TEST_P(ReactionTreeTest, ATopicWithoutReactionsDrawsNothing) {
    EXPECT_EQ(draw(), "");
    reaction(1, "01", "hidden", "20260602", 0);
    EXPECT_EQ(draw(), "");
}

TEST_P(ReactionTreeTest, WithoutAForumOrATopicThereIsNothing) {
    reaction(1, "01");
    EXPECT_EQ(forum().getReactionTree(2, 1), "");
    EXPECT_EQ(forum().getReactionTree(1, 2), "");
    EXPECT_EQ(forum().getReactionTree(0, 0), "");
    EXPECT_EQ(forum().getReactionTree(-1, -1), "");
}

TEST_P(ReactionTreeTest, VisitorsSeeLiveForumsOnlyAndAuthorsThoseOfTheDesign) {
    reaction(1, "01");
    connection().execute("delete from TORVEX_FORUM_LIVE");
    EXPECT_EQ(draw(), "");
    EXPECT_EQ(draw(0, "l"), "");
    EXPECT_NE(draw(0, "d"), "");
    EXPECT_NE(draw(0, "anything"), "");
    connection().execute("delete from TORVEX_FORUM_DESIGN");
    EXPECT_EQ(draw(0, "D"), "");
}

TEST_P(ReactionTreeTest, TheReactionsOfOtherTopicsAndForumsStayThere) {
    topic(2, "Other", "20260601");
    reaction(1, "01", "here");
    reaction(2, "01", "elsewhere", "20260602", 1, 2);
    reaction(3, "01", "far away", "20260602", 1, 1, 9);
    EXPECT_THAT(draw(), HasSubstr("here"));
    EXPECT_THAT(draw(), Not(HasSubstr("elsewhere")));
    EXPECT_THAT(draw(), Not(HasSubstr("far away")));
}

TEST_P(ReactionTreeTest, NothingOfATextIsReadAsMarkupOrAsAPlaceToFill) {
    reaction(1, "01", "<script>x</script><date><node><!--!torvex_body_1!-->\"", "2026<b>02");
    const std::string html = draw();
    EXPECT_THAT(html, HasSubstr("&lt;script&gt;x&lt;/script&gt;&lt;date&gt;&lt;node&gt;&lt;!--!"));
    EXPECT_THAT(html, Not(HasSubstr("<script")));
    EXPECT_THAT(html, Not(HasSubstr("<b>")));
    EXPECT_THAT(html, Not(HasSubstr("<!--")));
}

TEST_P(ReactionTreeTest, EmptyColumnsAreEmptyTexts) {
    row("TORVEX_FORUM_REACTIONS",
        {{"reaction_id", 1}, {"reaction_forumId", 1}, {"reaction_topicId", 1}, {"reaction_online", 1}});
    EXPECT_THAT(draw(), HasSubstr(" - // </span>"));
}

TEST_P(ReactionTreeTest, SaysWhereItFailed) {
    drop("TORVEX_FORUM_REACTIONS");
    EXPECT_THAT(errorOf([&] { draw(); }), ::testing::StartsWith(chain({"getReactionTree !"})));
}

}  // namespace
}  // namespace torvex::test
