#include "search/designs/LinkFinder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Each as "kind number|site|target".
std::vector<std::string> found(std::string_view html) {
    std::vector<std::string> lines;
    for (const FoundLink& link : linksIn(html, {"/images/", "/documents/"})) {
        lines.push_back(fmt::format("{} {}|{}|{}", wordOf(link.kind), link.pageId, link.site, link.target));
    }
    return lines;
}

TEST(LinkFinder, FindsPagesByTheirNumberOrNode) {
    EXPECT_THAT(
        found(R"~(<a href="page(12)">a</a> <a href='page(13)'>b</a> <A HREF = "PAGE( 'AA.en.01' )">c</A>)~"),
        ElementsAre("page 0||aa.en.01", "page 12||", "page 13||"));
}

TEST(LinkFinder, FindsPagesInAddresses) {
    EXPECT_THAT(found(R"~(<a href="tvx.asp?pageId=12&amp;x=1"><a href="/tvx.asp?x=1&pageId=13">)~"
                      R"~(<area href='frameset.asp?pageId=aa.en.01'>)~"),
                ElementsAre("page 0||aa.en.01", "page 12||", "page 13||"));
}

TEST(LinkFinder, FindsWhatStandsInTheStringOfAScript) {
    EXPECT_THAT(found(R"~(<script>x = "<a {href}=\"page(12)\">";</script>)~"), ElementsAre("page 12||"));
}

TEST(LinkFinder, FindsLinksThatLeadNowhereYet) {
    EXPECT_THAT(found(R"~(<a [href]="page(12)">a</a>)~"), ElementsAre("unchosen 0||"));
}

TEST(LinkFinder, FindsDocumentsByFileOrTitleAndTheirSite) {
    EXPECT_THAT(found(R"~(<a href="file(001/price list.pdf)"><a href="file(BB/plan%20a.pdf)">)~"
                      R"~(<a href="file('Opening hours')"><a href="/documents/AA/002/a.pdf#page=2">)~"),
                ElementsAre("document 0||001/price list.pdf", "document 0||Opening hours",
                            "document 0|aa|002/a.pdf", "document 0|bb|plan a.pdf"));
}

TEST(LinkFinder, FindsImagesWhereverTheirAddressStands) {
    EXPECT_THAT(found(R"~(<img src="/images/AA/001/rose garden.jpg"><td background='/images/aa/b%2Bc.gif'>)~"
                      R"~(<p style="background:url(/images/bb/d.png)"><img src=/images/aa/e.jpg alt=x>)~"
                      R"~(<p style="background: url('/images/bb/f.png?1')">)~"),
                ElementsAre("image 0|aa|001/rose garden.jpg", "image 0|aa|b+c.gif", "image 0|aa|e.jpg",
                            "image 0|bb|d.png", "image 0|bb|f.png"));
}

TEST(LinkFinder, FindsEachOnce) {
    EXPECT_THAT(found(R"~(<a href="page(12)"> <a href='page( 12 )'><a href="tvx.asp?pageId=12">)~"),
                ElementsAre("page 12||"));
}

TEST(LinkFinder, LeavesWhatLeadsOutside) {
    EXPECT_THAT(
        found(R"~(<a href="http://www.example.test/images/a.gif"><a href="#top"><a href="mailto:a@b.test">)~"
              R"~(<img src="https://www.example.test/images/aa/b.gif"><a data-href="page(12)">page(13))~"),
        IsEmpty());
}

TEST(LinkFinder, ReadsAnything) {
    for (const std::string_view text :
         {"", "href", "href=", "href=\"", "href=\"page(", "href='page()'", "[href", "href=\\", "/images/",
          "\"/images/aa", "\"/images//x", "(/images/aa/", "href=\"page(<!--!x!-->)\"",
          "href=\"file(<!--!x!-->)\"", "href=page(\xFF"}) {
        EXPECT_THAT(found(text), testing::Each(testing::StartsWith("page 0||"))) << text;
    }
    EXPECT_THAT(found("href=\"page(" + std::string(5000, '7') + ")\""), IsEmpty());
    EXPECT_THAT(found("href=\"page(99999999999999999999)\""), ElementsAre("page 0||99999999999999999999"));
}

/// A text after "rose.jpg" (an image) or "plan a.pdf" of site "aa" has come from folder 001 into 002003.
std::string afterMove(std::string_view html, FoundLink::Kind kind, const std::string& name,
                      const std::string& from = "001/", const std::string& to = "002/003/") {
    return withFileMoved(html, {"/images/", "/documents/"}, "aa", {kind, "aa", name, from, to});
}

TEST(LinkFinder, AnImageThatHasMovedIsFoundWhereverItsAddressStands) {
    EXPECT_EQ(
        afterMove(
            R"~(<img src="/images/AA/001/Rose.jpg?1"><p style="background: url(/images/aa/001/rose.jpg)">)~"
            R"~(<img src=/images/aa/001/rose.jpg alt="001/rose.jpg"> 001/rose.jpg)~",
            FoundLink::Kind::Image, "rose.jpg"),
        R"~(<img src="/images/AA/002/003/Rose.jpg?1"><p style="background: url(/images/aa/002/003/rose.jpg)">)~"
        R"~(<img src=/images/aa/002/003/rose.jpg alt="001/rose.jpg"> 001/rose.jpg)~");
}

TEST(LinkFinder, WhatLeadsElsewhereStaysWhenAFileMoves) {
    const std::string html =
        R"~(<img src="/images/bb/001/rose.jpg"><img src="/images/aa/001/rose.jpg.bak"><img src="/images/aa/001/1/rose.jpg">)~"
        R"~(<img src="http://example.com/images/aa/001/rose.jpg"><a href="/documents/aa/001/rose.jpg">)~"
        R"~(<a href="file(001/rose.jpg)"><a href="page(1)"><a [href]="001/rose.jpg">)~";
    EXPECT_EQ(afterMove(html, FoundLink::Kind::Image, "rose.jpg"), html);
}

TEST(LinkFinder, ADocumentThatHasMovedIsFoundInEachNotation) {
    EXPECT_EQ(
        afterMove(R"~(<a href="file(001/plan a.pdf)"><a href='file("AA/001/plan%20a.pdf")'>)~"
                  R"~(<a href="/documents/aa/001/plan%20a.pdf#page=2"><a href="file(bb/001/plan a.pdf)">)~",
                  FoundLink::Kind::Document, "plan a.pdf"),
        R"~(<a href="file(002/003/plan a.pdf)"><a href='file("AA/002/003/plan%20a.pdf")'>)~"
        R"~(<a href="/documents/aa/002/003/plan%20a.pdf#page=2"><a href="file(bb/001/plan a.pdf)">)~");
}

TEST(LinkFinder, AFileMovesOutOfAllFoldersAndBack) {
    const std::string inFolder = R"~(<a href="file(001/p.pdf)"><a href="file(aa/001/p.pdf)">)~";
    const std::string without = R"~(<a href="file(p.pdf)"><a href="file(aa/p.pdf)">)~";
    EXPECT_EQ(afterMove(inFolder, FoundLink::Kind::Document, "p.pdf", "001/", ""), without);
    EXPECT_EQ(afterMove(without, FoundLink::Kind::Document, "p.pdf", "", "001/"), inFolder);
}

}  // namespace
}  // namespace torvex::test
