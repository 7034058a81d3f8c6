#include "modules/forum/ReactionThread.h"

#include <gmock/gmock.h>

#include "modules/forum/TemplateParts.h"

namespace torvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

Contribution reaction(int id, const std::string& reference) {
    return {id, reference, "t" + std::to_string(id), "x", "Ann", "20260601"};
}

std::string thread(const std::string& row, const std::vector<Contribution>& reactions, int shown = 0) {
    const ForumAddress address(11);
    return reactionThread(RowTemplate(row), reactions, {address, 1, 2, shown, "20260608"});
}

/// Without line breaks and anchors.
std::string shape(const std::vector<Contribution>& reactions) {
    std::string html = thread("<!--!reaction_id!-->", reactions);
    std::erase(html, '\n');
    for (auto at = html.find("<li id"); at != std::string::npos; at = html.find("<li id"))
        html.replace(at, html.find('>', at) - at + 1, "(");
    for (const auto& [from, to] : std::initializer_list<std::pair<std::string, std::string>>{
             {"</li>", ")"}, {"<ol class=\"forum_thread\">", "["}, {"<ol>", "["}, {"</ol>", "]"}}) {
        for (auto at = html.find(from); at != std::string::npos; at = html.find(from))
            html.replace(at, from.size(), to);
    }
    return html;
}

TEST(ReactionThread, AnswersStandBelowWhatTheyAnswer) {
    EXPECT_EQ(shape({reaction(1, "01"), reaction(2, "01.01"), reaction(3, "01.01.01"), reaction(4, "01.02"),
                     reaction(5, "02")}),
              "[(1[(2[(3)])(4)])(5)]");
}

TEST(ReactionThread, WhoseParentIsNotShownStandsBelowTheNearestThatIs) {
    EXPECT_EQ(shape({reaction(1, "01"), reaction(2, "01.01.01"), reaction(3, "02.01"), reaction(4, "02.02")}),
              "[(1[(2)])(3)(4)]");
}

TEST(ReactionThread, PlacesThatAreTakenTwiceStandSideBySide) {
    EXPECT_EQ(shape({reaction(1, "01"), reaction(2, "01"), reaction(3, "")}), "[(1)(2)(3)]");
}

TEST(ReactionThread, WithoutReactionsThereIsNoList) {
    EXPECT_EQ(thread("x", {}), "");
}

TEST(ReactionThread, EachEntryCanBeLedTo) {
    EXPECT_THAT(thread("<!--!reaction_URL!-->", {reaction(7, "01")}),
                HasSubstr("<li id=\"reaction-7\">/torvex_forum/reactions.asp?pageId=11&amp;forumId=1&amp;"
                          "topicId=2&amp;reactionId=7#reaction-7"));
    EXPECT_THAT(
        thread("<!--!reaction_reactURL!-->", {reaction(7, "01")}),
        HasSubstr("/torvex_forum/reaction.asp?pageId=11&amp;forumId=1&amp;topicId=2&amp;reactionId=7<"));
}

TEST(ReactionThread, BlocksTellWhatIsNewAndWhatIsRead) {
    const std::string row =
        "<!--!reaction_new_start!-->NEW<!--!reaction_new_end!--><!--!reaction_shown_start!-->READ"
        "<!--!reaction_shown_end!-->";
    auto fresh = reaction(1, "01");
    fresh.day = "20260608";
    EXPECT_THAT(thread(row, {fresh}, 1), HasSubstr(">NEWREAD<"));
    EXPECT_THAT(thread(row, {reaction(1, "01")}), HasSubstr("\"></li>"));
}

TEST(ReactionThread, NothingOfAPostIsReadAsMarkupOrAsAPlaceToFill) {
    auto evil = reaction(1, "01");
    evil.title = "<!--!reaction_text!--><b>";
    evil.text = "<!--!torvex_body_1!--><script>";
    evil.author = "\"><i>";
    const std::string html =
        thread("<!--!reaction_title!-->|<!--!reaction_text!-->|<!--!reaction_author!-->", {evil});
    EXPECT_THAT(html, Not(HasSubstr("<!--!")));
    EXPECT_THAT(html, Not(HasSubstr("<script")));
    EXPECT_THAT(html, Not(HasSubstr("<b>")));
    EXPECT_THAT(html, Not(HasSubstr("<i>")));
}

}  // namespace
}  // namespace torvex
