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

}  // namespace
}  // namespace torvex::test
