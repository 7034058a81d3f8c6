#pragma once

#include "platform/text/Text.h"
#include "support/ManagerTest.h"

namespace torvex::test {

/// The base of tests of links as authors see them: in the tree "aa.en" page 12 ("aa.en.01"), page 13
/// ("aa.en.02", offline), page 14 ("aa.en.03", of the design alone), the home page 10; page 20 of another
/// site and page 21 of another language. The words of the marks are W670 to W673.
class MarkingTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).insert();
        page("aa.en.01").id(12).insert();
        page("aa.en.02").id(13).offline().insert();
        page("aa.en.03").id(14).insertInDesignOnly();
        page("bb.en.01").id(20).insert();
        page("aa.de.01").id(21).insert();
        host.application.set("tvx_default_pageId", 10);
        host.application.set("torvex_frames", false);
        for (const int label : {670, 671, 672, 673}) word(label, "W" + std::to_string(label));
    }

    std::string build(const std::string& html, const std::string& mode = "L") {
        return manager().buildLinks(html, "aa", "en", mode);
    }
    /// The start tag that a start tag becomes.
    std::string tag(const std::string& startTag, const std::string& mode = "L") {
        const std::string html = build(startTag + "x</a>", mode);
        EXPECT_TRUE(html.ends_with("x</a>")) << html;
        return html.substr(0, html.size() - 5);
    }
    /// An anchor with this address in double quotes.
    std::string link(const std::string& address, const std::string& mode = "L") {
        return tag("<a href=\"" + address + "\">", mode);
    }

    /// A link of the page as it is when nothing is wrong with it.
    static std::string good(const std::string& address) {
        return "<a href=\"" + address + "\" onmouseover=\"window.status=top.torvex_empty;return true;\">";
    }
    /// An anchor with a mark, in the form of double quotes; `off` for one that can't be followed.
    static std::string bad(const std::string& address, const std::string& word, const std::string& status,
                           bool off = true) {
        return "<a href=\"" + address + "\" class=\"badLink\" alt=\"" + word + "\" title=\"" + word + "\" " +
               (off ? " onClick=\"return false;\"" : "") + " onmouseover=\"window.status=top." + status +
               ";return true\" onmouseout=\"window.status=top.torvex_empty;return true\" >";
    }
    static std::string missing(const std::string& address) {
        return bad(address, "W670", "torvex_pageNotFound");
    }
    static std::string singly(const std::string& text) { return text::replaceAll(text, "\"", "'"); }

    void document(const std::string& site, const std::string& file, const std::string& title = "") {
        host.files.bytes["/install/wwwroot/documents/" + site + "/" + file] = "content";
        if (title.empty()) return;
        row("TORVEX_DOCUMENTS", {{"doc_site", site}, {"doc_filename", file}, {"doc_title", title}});
    }
};

}  // namespace torvex::test
