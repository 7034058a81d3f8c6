#include <gmock/gmock.h>

#include "pages/ContentPolicy.h"
#include "pages/Pages.h"
#include "platform/text/Text.h"
#include "support/LinksTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class FramesetPageTest : public LinksTest {
  protected:
    const std::string& show(const std::string& query, NamedValues serverVariables = {}) {
        host.response = {};
        ask(query, {}, std::move(serverVariables));
        framesetPage(host.context());
        return host.response.body();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, FramesetPageTest, bothEngines(), engineName);

TEST_P(FramesetPageTest, HoldsThePageInItsFrame) {
    EXPECT_THAT(show("pageId=12&n=1"), HasSubstr("src=\"/tvx.asp?pageId=12&amp;n=1\""));
}

TEST_P(FramesetPageTest, DefinesWhatLinksCall) {
    const std::string& html = show("pageId=12");
    for (const auto* name :
         {"torvex_empty = ''", "function page(", "function popup(", "function navigation("}) {
        EXPECT_THAT(html, HasSubstr(name));
    }
}

TEST_P(FramesetPageTest, RunsItsOwnScriptsAlone) {
    for (const auto* query : {"pageId=12", "pageId={{script}}"}) {
        const std::string& html = show(query);
        const std::size_t begin = html.find("<script>") + 8;
        const std::string script = html.substr(begin, html.find("</script>", begin) - begin);
        EXPECT_THAT(script, HasSubstr("function navigation("));
        EXPECT_EQ(html.find("<script>", begin), std::string::npos);
        const std::string policy = header(host, "Content-Security-Policy");
        EXPECT_THAT(policy, HasSubstr("script-src 'self'" + scriptSource(script) + ";"));
        EXPECT_THAT(policy, Not(HasSubstr("script-src 'self' 'unsafe-inline'")));
        EXPECT_THAT(policy, HasSubstr("frame-ancestors 'self'"));
    }
}

TEST_P(FramesetPageTest, BearsTheSitesTitleAndLanguage) {
    siteLanguage("aa", "bb", "Seeds & <Trees>");
    const std::string& html = show("pageId=12");
    EXPECT_THAT(html, HasSubstr("<title>Seeds &amp; &lt;Trees&gt;</title>"));
    EXPECT_THAT(html, HasSubstr("lang=\"bb\""));
}

TEST_P(FramesetPageTest, WithoutAPageHoldsTheDefaultOne) {
    EXPECT_THAT(show(""), HasSubstr("src=\"/tvx.asp?pageId=10\""));
    EXPECT_THAT(show("n=1"), HasSubstr("src=\"/tvx.asp?pageId=10&amp;n=1\""));
}

TEST_P(FramesetPageTest, ABlankPageIsNotGivenTwice) {
    for (const auto* query : {"pageId=", "pageId=&n=1", "n=1&pageId=+"}) {
        const std::string& html = show(query);
        const std::size_t at = html.find("src=\"/tvx.asp?") + 14;
        std::string inner = html.substr(at, html.find('"', at) - at);
        inner = text::replaceAll(inner, "&amp;", "&");
        const std::string asked = Request(inner, {}, {}).queryString("pageId");
        EXPECT_TRUE(text::trim(asked).empty() || asked == "10") << query << " gives " << inner;
    }
}

TEST_P(FramesetPageTest, RemembersWhetherItIsSecure) {
    show("pageId=12", {{"https", "on"}});
    EXPECT_TRUE(host.session.isTrue("ssl"));
    show("pageId=12", {{"https", "off"}});
    EXPECT_FALSE(host.session.isTrue("ssl"));
}

TEST_P(FramesetPageTest, AHostileQueryStaysInItsPlace) {
    for (const auto* query :
         {"pageId=12\"onload=\"alert(1)", "pageId=\"><script>alert(1)</script>",
          "pageId=12&x=</iframe><script>", "pageId={{title}}", "pageId=12'><img src=x>"}) {
        const std::string& html = show(query);
        EXPECT_THAT(html, Not(HasSubstr("onload=\"alert"))) << query;
        EXPECT_THAT(html, Not(HasSubstr("<script>alert"))) << query;
        EXPECT_THAT(html, Not(HasSubstr("</iframe><script>"))) << query;
        EXPECT_THAT(html, Not(HasSubstr("<img"))) << query;
        EXPECT_EQ(host.response.status, 200) << query;
    }
}

TEST_P(FramesetPageTest, ANodeThatIsNoneIsNoLanguage) {
    EXPECT_THAT(show("pageId=aa.%3C%3E.01"), HasSubstr("<html lang=\"en\">"));
}

}  // namespace
}  // namespace torvex::test
