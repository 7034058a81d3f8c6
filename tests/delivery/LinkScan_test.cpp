#include "delivery/LinkScan.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text/Text.h"
#include "support/ThreadTime.h"

namespace torvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Remembers what it was shown, and answers what the test wants.
class RecordingPolicy : public LinkPolicy {
  public:
    std::vector<std::string> prepared;
    std::vector<std::string> seen;
    std::vector<LinkTag> kinds;
    std::string answer = "<A>";

    void prepare(const std::vector<std::string>& startTags) override {
        EXPECT_TRUE(seen.empty() || kinds.back() == LinkTag::Anchor);
        prepared.insert(prepared.end(), startTags.begin(), startTags.end());
    }
    std::string rewrite(std::string startTag, LinkTag kind) override {
        seen.push_back(std::move(startTag));
        kinds.push_back(kind);
        return kind == LinkTag::Anchor ? answer : "<AREA>";
    }
};

/// Gives every tag back as it came.
class KeepingPolicy : public RecordingPolicy {
  public:
    std::string rewrite(std::string startTag, LinkTag kind) override {
        RecordingPolicy::rewrite(startTag, kind);
        return startTag;
    }
};

std::string rewritten(std::string_view html) {
    RecordingPolicy policy;
    return rewriteLinks(html, policy);
}

std::string kept(std::string_view html) {
    KeepingPolicy policy;
    return rewriteLinks(html, policy);
}

std::vector<std::string> tagsSeen(std::string_view html) {
    RecordingPolicy policy;
    rewriteLinks(html, policy);
    return policy.seen;
}

TEST(LinkScan, TextWithoutLinksStaysAsItIs) {
    EXPECT_EQ(rewritten(""), "");
    EXPECT_EQ(rewritten("a < b > c"), "a < b > c");
}

TEST(LinkScan, AnAnchorGetsTheNewStartTagAndKeepsItsText) {
    EXPECT_EQ(rewritten("1<a href=x>word</a>2"), "1<A>word</a>2");
}

TEST(LinkScan, ThePolicySeesTheStartTagFromItsBeginningToItsEnd) {
    EXPECT_THAT(tagsSeen("1<a href=\"x\" class=c>word</a>2"), ElementsAre("<a href=\"x\" class=c>"));
}

TEST(LinkScan, AnAnchorWhoseTagGoesLeavesItsWords) {
    RecordingPolicy policy;
    policy.answer = "";
    EXPECT_EQ(rewriteLinks("1<a href=x>the <b>word</b></a>2", policy), "1the <b>word</b>2");
}

TEST(LinkScan, AnAreaGetsTheNewTagAndHasNoText) {
    EXPECT_EQ(rewritten("<map><area href=x></map>"), "<map><AREA></map>");
}

TEST(LinkScan, AreasAreOfTheirOwnKind) {
    RecordingPolicy policy;
    rewriteLinks("<area href=1><a href=2>x</a>", policy);
    EXPECT_THAT(policy.kinds, ElementsAre(LinkTag::Anchor, LinkTag::Area));
}

TEST(LinkScan, TagsAreFoundWhereverTheyStand) {
    for (std::size_t before = 0; before < 300; ++before) {
        const std::string words(before, 'x');
        EXPECT_EQ(rewritten(words + "<a b>c</a>" + words), words + "<A>c</a>" + words) << before;
        EXPECT_EQ(rewritten(words + "<area b>"), words + "<AREA>") << before;
    }
}

TEST(LinkScan, TagsAreFoundIgnoringCase) {
    EXPECT_EQ(rewritten("<A HREF=x>w</A><AREA HREF=y>"), "<A>w</a><AREA>");
}

TEST(LinkScan, ALinkEndsInTheEndTagAsTheSystemWritesIt) {
    EXPECT_EQ(rewritten("<a href=x>w</A>"), "<A>w</a>");
    EXPECT_EQ(rewritten("<a href=x>w<a href=y>"), "<a href=x>w<a href=y>");
}

TEST(LinkScan, OtherTagsThatBeginWithTheSameLetterAreNoLinks) {
    EXPECT_THAT(tagsSeen("<abbr>x</abbr><article>y</article><a>z</a><areas>"), IsEmpty());
}

TEST(LinkScan, ATagWithoutABlankBehindItsNameIsNoLink) {
    EXPECT_THAT(tagsSeen("<a\nhref=x>word</a>"), IsEmpty());
}

TEST(LinkScan, LinksAheadOfTheBodyAreLeftAlone) {
    EXPECT_EQ(rewritten("<head><a href=1>x</a><area href=2></head><body><a href=3>y</a>"),
              "<head><a href=1>x</a><area href=2></head><body><A>y</a>");
}

TEST(LinkScan, WithoutABodyTheWholeTextCounts) {
    EXPECT_EQ(rewritten("<head><a href=1>x</a></head>"), "<head><A>x</a></head>");
}

TEST(LinkScan, TheFirstBodyIsTheOneThatCounts) {
    EXPECT_EQ(rewritten("<BODY><a href=1>x</a><body><a href=2>y</a>"), "<BODY><A>x</a><body><A>y</a>");
}

TEST(LinkScan, AnAnchorWithoutAnEndStopsTheScanOfAnchors) {
    EXPECT_EQ(rewritten("<a href=1>x</a><a href=2>y"), "<A>x</a><a href=2>y");
}

TEST(LinkScan, AreasAreHandledBehindAnAnchorWithoutAnEnd) {
    EXPECT_EQ(rewritten("<a href=2>y<area href=3>z"), "<a href=2>y<AREA>z");
}

TEST(LinkScan, AnUnclosedStartTagStopsTheScanOfAnchors) {
    EXPECT_EQ(rewritten("<a href=1>x</a> <a href=2"), "<A>x</a> <a href=2");
}

TEST(LinkScan, AnUnclosedAreaStopsTheScanOfAreas) {
    EXPECT_EQ(rewritten("<area href=1><area href=2"), "<AREA><area href=2");
}

TEST(LinkScan, AnAnchorAtTheVeryEndStays) {
    EXPECT_EQ(rewritten("word <a "), "word <a ");
    EXPECT_EQ(rewritten("word <area "), "word <area ");
    EXPECT_EQ(rewritten("word <a"), "word <a");
}

TEST(LinkScan, AnchorsInAnchorsBelongToTheText) {
    EXPECT_EQ(rewritten("<a href=1>x<a href=2>y</a>z</a>"), "<A>x<a href=2>y</a>z</a>");
}

TEST(LinkScan, TheTextOfALinkThatGoesIsNotSearchedAgain) {
    RecordingPolicy policy;
    policy.answer = "";
    EXPECT_EQ(rewriteLinks("<a href=1>x<a href=2>y</a>", policy), "x<a href=2>y");
    EXPECT_THAT(policy.seen, ElementsAre("<a href=1>"));
}

TEST(LinkScan, AreasWithinAnchorsAreHandled) {
    EXPECT_EQ(rewritten("<a href=1>x<area href=2>y</a>"), "<A>x<AREA>y</a>");
}

TEST(LinkScan, AMarkerInAnAttributeDoesNotEndTheTag) {
    RecordingPolicy policy;
    EXPECT_EQ(rewriteLinks("<a href=\"page(<!--!id-->)\" title=t>x</a>", policy), "<A>x</a>");
    ASSERT_EQ(policy.seen.size(), 1U);
    EXPECT_TRUE(policy.seen.front().ends_with("title=t>"));
}

TEST(LinkScan, TagsAreHandedOverWithOneClosingSignOnly) {
    const auto seen = tagsSeen("<a href=\"<!--!a-->\" title='<!--!b-->'>x</a>");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(std::count(seen.front().begin(), seen.front().end(), '>'), 1);
}

TEST(LinkScan, MarkersComeBackAsTheyWere) {
    constexpr auto html = "<!--!x--><a href=\"<!--!a-->\">w<!--!b--></a><area alt='<!--!c-->'><!-- d -->";
    EXPECT_EQ(kept(html), html);
}

TEST(LinkScan, ACommentAheadOfALinkDoesNotEndTheSearchEarly) {
    EXPECT_EQ(rewritten("<!-- note --><a href=1>x</a>"), "<!-- note --><A>x</a>");
}

TEST(LinkScan, ALinkInACommentIsALinkAsWell) {
    EXPECT_EQ(rewritten("<!-- <a href=1>x</a> -->"), "<!-- <A>x</a> -->");
}

TEST(LinkScan, ACommentBetweenStartAndEndOfALinkStays) {
    EXPECT_EQ(rewritten("<a href=1>x<!-- y --></a>"), "<A>x<!-- y --></a>");
}

TEST(LinkScan, ASignInAQuotedAttributeEndsTheTag) {
    EXPECT_THAT(tagsSeen("<a title=\"a>b\" href=1>x</a>"), ElementsAre("<a title=\"a>"));
}

TEST(LinkScan, AllTagsAreShownBeforeTheFirstIsRewritten) {
    RecordingPolicy policy;
    rewriteLinks("<a href=1>x</a><a href=2>y</a>", policy);
    EXPECT_THAT(policy.prepared, ElementsAre("<a href=1>", "<a href=2>"));
}

TEST(LinkScan, TextBeyondAsciiStays) {
    constexpr auto html = "Gärtnerei <a href=ä>Ω…</a> §§ |-§ <area alt=ß>";
    EXPECT_EQ(kept(html), html);
}

TEST(LinkScan, MalformedTextStays) {
    const std::string html = "\xC3<a href=\xFF>\xE2\x82</a>\x80";
    EXPECT_EQ(kept(html), html);
}

TEST(LinkScan, TenThousandLinksAreAllRewritten) {
    std::string html;
    std::string expected;
    for (int i = 0; i < 10'000; ++i) {
        html += "<p><a href=\"page(" + std::to_string(i) + ")\">word</a></p>";
        expected += "<p><A>word</a></p>";
    }
    EXPECT_EQ(rewritten(html), expected);
}

TEST(LinkScan, AnchorsWithoutAnEndCostNoMoreThanOneSearch) {
    std::string html;
    for (int i = 0; i < 300'000; ++i) html += "<a x>";
    const auto taken = test::threadTimeOf([&] { EXPECT_EQ(rewritten(html), html); });
    EXPECT_LT(taken, std::chrono::seconds(5));
}

TEST(LinkScan, ATagFullOfCommentEndsCostsNoMoreThanOneSearch) {
    std::string html;
    for (int i = 0; i < 100'000; ++i) html += "<a -->";
    const auto taken = test::threadTimeOf([&] { EXPECT_EQ(rewritten(html), html); });
    EXPECT_LT(taken, std::chrono::seconds(5));
}

}  // namespace
}  // namespace torvex
