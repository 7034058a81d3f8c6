#include "delivery/StartTag.h"

#include <gtest/gtest.h>

namespace torvex::test {
namespace {

std::string valueIn(const std::string& text, const std::string& name) {
    const StartTag tag(text);
    const auto found = tag.find(name);
    return found ? std::string(1, found->quote == 0 ? '-' : found->quote) + std::string(tag.valueOf(*found))
                 : "none";
}

std::string without(const std::string& text, const std::string& name) {
    StartTag tag(text);
    tag.remove(name);
    return tag.text();
}

TEST(StartTag, FindsAValueInEitherQuotesOrNone) {
    EXPECT_EQ(valueIn("<a href=\"x y\">", "href"), "\"x y");
    EXPECT_EQ(valueIn("<a href='x\"y'>", "href"), "'x\"y");
    EXPECT_EQ(valueIn("<a href=x>", "href"), "-x");
    EXPECT_EQ(valueIn("<a href=\"\">", "href"), "\"");
}

TEST(StartTag, BlanksMayStandAroundTheEqualsSign) {
    EXPECT_EQ(valueIn("<a href =\"x\">", "href"), "\"x");
    EXPECT_EQ(valueIn("<a href= 'x'>", "href"), "'x");
    EXPECT_EQ(valueIn("<a\r\n\thref \n=\n x>", "href"), "-x");
}

TEST(StartTag, NamesIgnoreCaseAndAreWhole) {
    EXPECT_EQ(valueIn("<A HREF=\"x\">", "href"), "\"x");
    EXPECT_EQ(valueIn("<a data-href=\"x\" hrefs=y>", "href"), "none");
    EXPECT_EQ(valueIn("<a [href]=\"x\">", "href"), "none");
    EXPECT_EQ(valueIn("<a href>", "href"), "none");
}

TEST(StartTag, WhatStandsInAValueIsNoAttribute) {
    EXPECT_EQ(valueIn("<a title=\" href='y' \" href=\"x\">", "href"), "\"x");
    EXPECT_EQ(valueIn("<a title=' target=_top '>", "target"), "none");
}

TEST(StartTag, TakesEveryAttributeOfANameOut) {
    EXPECT_EQ(without("<a target=_top href=\"x\">", "target"), "<a href=\"x\">");
    EXPECT_EQ(without("<a href=\"x\" target = \"_blank\">", "target"), "<a href=\"x\">");
    EXPECT_EQ(without("<a href=\"?target=1\" target= 'a' TARGET=b>", "target"), "<a href=\"?target=1\">");
    EXPECT_EQ(without("<a href=\"x\">", "target"), "<a href=\"x\">");
}

TEST(StartTag, AValueWithoutItsEndReachesToTheEndOfTheTag) {
    const StartTag tag("<a href=\"x target=y>");
    const auto found = tag.find("href");
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->isClosed);
    EXPECT_EQ(tag.valueOf(*found), "x target=y");
}

TEST(StartTag, OddTagsComeToAnEnd) {
    for (const char* odd : {"", "<", "<a", "<a ", "<a >", "<a =>", "<a = =\"", "<a \"'>", "<a href=", "<a /",
                            "<a ////>", "<a href=\"", "<a href='>", "<a x=y=z>"}) {
        EXPECT_EQ(without(odd, "href").empty(), std::string(odd).empty()) << odd;
        EXPECT_EQ(valueIn(odd, "target"), "none") << odd;
    }
}

TEST(StartTag, TheLastBracketIsTheEnd) {
    StartTag tag("<a title=\"a>b\">");
    tag.finish(" x>");
    EXPECT_EQ(tag.text(), "<a title=\"a>b\" x>");
}

TEST(StartTag, ManyAttributesOfANameGoInOnePass) {
    std::string many;
    for (int n = 0; n < 400'000; ++n) many += " alt=x title=y";
    EXPECT_EQ(without("<a" + many + ">", "alt").size(), 400'000u * 8 + 3);
}

}  // namespace
}  // namespace torvex::test
