#include "modules/shared/PageLinks.h"

#include <gtest/gtest.h>

#include "support/TemplateText.h"
#include "support/TestHost.h"

namespace torvex::test {
namespace {

constexpr PageLinkNames names{.spacer = "pSpacer",
                              .previous = "pPrevious",
                              .dots = "pDots",
                              .active = "pActive",
                              .link = "pLink",
                              .next = "pNext",
                              .number = "pageId"};

const std::string pieces = block("pPrevious", "<<!--!pageId!-->") + block("pNext", "><!--!pageId!-->") +
                           block("pDots", "..<!--!pageId!-->") + block("pActive", "[<!--!pageId!-->]") +
                           block("pLink", "<!--!pageId!-->");

std::string links(int page, int pageCount, const std::string& html) {
    TestHost host;
    return pageLinks(host.context(), names, page, pageCount, html);
}

/// With a blank between the pieces.
std::string spaced(int page, int pageCount) {
    return links(page, pageCount, pieces + block("pSpacer", " "));
}

TEST(PageLinks, AreNoneForOnePage) {
    EXPECT_EQ(spaced(1, 1), "");
    EXPECT_EQ(spaced(1, 0), "");
}

TEST(PageLinks, InTheMiddleShowFivePagesToBothSides) {
    EXPECT_EQ(spaced(15, 30), "<14 ..5 10 11 12 13 14 [15] 16 17 18 19 20 ..25 >16");
}

TEST(PageLinks, AtTheBeginningShowElevenPages) {
    EXPECT_EQ(spaced(2, 30), "<1 1 [2] 3 4 5 6 7 8 9 10 11 ..12 >3");
    EXPECT_EQ(spaced(1, 30), "[1] 2 3 4 5 6 7 8 9 10 11 ..11 >2");
}

TEST(PageLinks, AtTheEndShowElevenPages) {
    EXPECT_EQ(spaced(30, 30), "<29 ..20 20 21 22 23 24 25 26 27 28 29 [30]");
}

TEST(PageLinks, DotsStandWhereMoreThanOnePageIsLeftOut) {
    EXPECT_EQ(spaced(7, 12), "<6 2 3 4 5 6 [7] 8 9 10 11 12 >8");
    EXPECT_EQ(spaced(6, 12), "<5 1 2 3 4 5 [6] 7 8 9 10 11 >7");
    EXPECT_EQ(spaced(6, 13), "<5 1 2 3 4 5 [6] 7 8 9 10 11 ..13 >7");
}

TEST(PageLinks, OneCharacterIsCutWhateverTheSpacer) {
    EXPECT_EQ(links(1, 2, pieces), "[1] | 2 | >2 |");
    EXPECT_EQ(links(1, 2, pieces + block("pSpacer", "&middot;")), "[1]&middot;2&middot;>2&middot");
    EXPECT_EQ(links(1, 2, pieces + block("pSpacer", "·")), "[1]·2·>2");
}

TEST(PageLinks, APieceThatIsMissingIsLeftOut) {
    EXPECT_EQ(links(2, 3, block("pLink", "<!--!pageId!-->") + block("pSpacer", " ")), "1 3");
    EXPECT_EQ(links(2, 3, ""), "");
}

TEST(ListPage, IsTheNearestThatThereIs) {
    EXPECT_EQ(listPage(25, 10, 2).page, 2);
    EXPECT_EQ(listPage(25, 10, 0).page, 1);
    EXPECT_EQ(listPage(25, 10, -5).page, 1);
    EXPECT_EQ(listPage(25, 10, 4).page, 3);
    EXPECT_EQ(listPage(25, 10, 32767).page, 3);
    EXPECT_EQ(listPage(0, 10, 3).page, 1);
}

TEST(ListPage, KnowsItsFirstAndLast) {
    const ListPage last = listPage(25, 10, 3);
    EXPECT_EQ(last.pageCount, 3);
    EXPECT_EQ(last.first(), 21);
    EXPECT_EQ(last.last(), 25);
    EXPECT_EQ(last.offset(), 20);
    EXPECT_EQ(listPage(20, 10, 2).pageCount, 2);
}

TEST(ListPage, WithoutASizeIsTheWholeList) {
    const ListPage all = listPage(25, 0, 7);
    EXPECT_EQ(all.page, 1);
    EXPECT_EQ(all.pageCount, 1);
    EXPECT_EQ(all.first(), 1);
    EXPECT_EQ(all.last(), 25);
}

}  // namespace
}  // namespace torvex::test
