#pragma once

#include "support/SiteTest.h"

namespace torvex::test {

/// The base of tests of links: a site "aa" in "bb" with page 12 ("aa.bb.01"), page 13 ("aa.bb.02", offline)
/// and the home page 10 ("aa.bb"), which is the default one. Frames are off and dead links are looked for.
class LinksTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.bb").id(10).insert();
        page("aa.bb.01").id(12).insert();
        page("aa.bb.02").id(13).offline().insert();
        host.application.set("tvx_default_pageId", 10);
        host.application.set("torvex_frames", false);
        host.application.set("torvex_hyperlink_check", true);
    }

    void frames(bool on) { host.application.set("torvex_frames", on); }
    void checks(bool on) { host.application.set("torvex_hyperlink_check", on); }
    void document(const std::string& site, const std::string& file, const std::string& title = "") {
        host.files.bytes["/install/wwwroot/documents/" + site + "/" + file] = "content";
        if (!title.empty()) documentTitle(site, file, title);
    }
    void documentTitle(const std::string& site, const std::string& file, const std::string& title) {
        row("TORVEX_DOCUMENTS", {{"doc_site", site}, {"doc_filename", file}, {"doc_title", title}});
    }

    std::string build(const std::string& html) { return server().buildLinks(html, "aa"); }

    /// What the attributes of an anchor around "x" become, without the status text, which is asserted; "gone"
    /// when only the "x" is left.
    std::string anchor(const std::string& attributes) {
        const std::string html = build("<a " + attributes + ">x</a>");
        return html == "x" ? "gone" : between(html, "<a ", "x</a>");
    }
    std::string area(const std::string& attributes) {
        return between(build("<area " + attributes + ">"), "<area ", "");
    }

    static constexpr std::string_view status =
        " onmouseover=\"window.status=top.torvex_empty;return true;\" >";
    static constexpr std::string_view singleStatus =
        " onmouseover='window.status=top.torvex_empty;return true;' >";

  private:
    static std::string between(const std::string& html, std::string_view start, std::string_view end) {
        for (const std::string_view with : {status, singleStatus}) {
            const std::string tail = std::string(with).append(end);
            if (!html.starts_with(start) || !html.ends_with(tail)) continue;
            return html.substr(start.size(), html.size() - start.size() - tail.size());
        }
        return "unexpected: " + html;
    }
};

}  // namespace torvex::test
