#include <gtest/gtest.h>

#include "support/ExpectedFile.h"
#include "support/TestHost.h"
#include "templates/HTMLTemplate.h"

/// Whole templates as sites use them: `cases/NAME.htm` is filled as a page handler would, and must give
/// `cases/NAME.expected.htm`.
namespace torvex {
namespace {

class TemplateCases : public testing::Test {
  protected:
    HTMLTemplate loaded(const std::string& name) {
        host_.request.setServerVariable("HTTP_USER_AGENT", "Mozilla/5.0 (X11; Linux x86_64)");
        host_.files.bytes["/" + name] = test::testFile("templates/cases/" + name + ".htm");
        HTMLTemplate made(host_.context());
        EXPECT_TRUE(made.load("/" + name));
        return made;
    }
    static void expect(const std::string& name, const HTMLTemplate& made) {
        test::expectFile("templates/cases/" + name + ".expected.htm", made.strVal());
    }

    test::TestHost host_;
};

TEST_F(TemplateCases, APageWithHeadLayoutAndLeftOverTags) {
    HTMLTemplate page = loaded("page");
    page.replaceTag("title", "Grüße & more");
    page.replaceTag("SECTION", "news", "u");
    page.replaceTag("crumb", "Home", "", 1);
    page.replaceTag("crumb", "Products", "", 1);
    page.replaceBlock("login", "<a href=\"/login\">log in</a>");
    page.replaceAllBlocks("banner_i", "");
    page.removeTags();
    expect("page", page);
}

TEST_F(TemplateCases, AListBuiltFromABlockOfTheTemplate) {
    HTMLTemplate page = loaded("list");
    const std::string row = page.extractBlock("row");
    std::string rows;
    for (const char* name : {"First", "Second", "Third"}) {
        HTMLTemplate line(host_.context());
        line.setStrVal(row);
        line.replaceTag("name", name);
        line.replaceTag("script", line.jsEncode("it's \"" + std::string(name) + "\""));
        rows += line.strVal();
    }
    page.replaceBlock("row", rows);
    page.replaceCustomBlock("from", "to", page.extractCustomBlock("from", "to"));
    page.replaceBlock("empty", "");
    expect("list", page);
}

TEST_F(TemplateCases, AddressesInRunningText) {
    HTMLTemplate page = loaded("addresses");
    page.emailToLinks();
    expect("addresses", page);
}

TEST_F(TemplateCases, AMalformedTemplateKeepsWhatCannotBeUnderstood) {
    HTMLTemplate page = loaded("malformed");
    page.replaceAllBlocks("row_i", "[row]");
    page.replaceTag("name", "[name]");
    page.removeTags();
    expect("malformed", page);
}

}  // namespace
}  // namespace torvex
