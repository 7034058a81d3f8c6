#include "modules/forum/TemplateParts.h"

#include <gtest/gtest.h>

#include "support/TestHost.h"
#include "templates/HTMLTemplate.h"

namespace torvex::test {
namespace {

const std::string layout =
    "<!--!a!-->-<!--!B!-->-<!--!kept_start!-->[<!--!a!-->]<!--!kept_end!--><!--!gone_start!-->[<!--!a!-->]"
    "<!--!gone_end!--><!--!other!-->";

TemplateParts parts() {
    TemplateParts made;
    made.text("A", "<1>").html("b", "<i>").block("kept", true).block("Gone", false);
    return made;
}

TEST(TemplateParts, FillAPage) {
    TestHost host;
    HTMLTemplate page(host.context());
    page.setStrVal(layout);
    parts().fill(page);
    EXPECT_EQ(page.strVal(), "&lt;1&gt;-<i>-[&lt;1&gt;]<!--!other!-->");
}

TEST(TemplateParts, PlacesThatAPageDoesNotHaveArePassedOver) {
    TestHost host;
    HTMLTemplate page(host.context());
    page.setStrVal("nothing here");
    parts().fill(page);
    EXPECT_EQ(page.strVal(), "nothing here");
}

TEST(TemplateParts, FillARowAsTheyFillAPage) {
    std::string html = "before ";
    RowTemplate(layout).append(html, parts());
    EXPECT_EQ(html, "before &lt;1&gt;-<i>-[&lt;1&gt;]<!--!other!-->");
}

TEST(TemplateParts, ARowMayHoldHalfAMarker) {
    for (const std::string text :
         {"", "a<!--!", "<!--!a", "x<!--!gone_start!-->y", "<!--!gone_end!-->z", "!-->"}) {
        std::string html;
        RowTemplate(text).append(html, parts());
        EXPECT_EQ(html, text == "x<!--!gone_start!-->y" ? "x" : text == "<!--!gone_end!-->z" ? "z" : text);
    }
}

TEST(TemplateParts, ADayIsFourTags) {
    TemplateParts made;
    made.day("d", "20260601").day("none", "2026<b>1");
    EXPECT_EQ(*made.tag("d_iso"), "2026-06-01");
    EXPECT_EQ(*made.tag("d_day") + *made.tag("d_month") + *made.tag("d_year"), "01062026");
    EXPECT_EQ(*made.tag("none_iso") + *made.tag("none_day") + *made.tag("none_year"), "");
    EXPECT_EQ(made.tag("e_iso"), nullptr);
}

}  // namespace
}  // namespace torvex::test
