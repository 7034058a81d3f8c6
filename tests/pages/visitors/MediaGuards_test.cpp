#include <gtest/gtest.h>

#include "pages/Routes.h"
#include "support/ExtranetTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

class MediaGuardsTest : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_img_security", true);
        host.application.set("torvex_doc_security", true);
        host.files.bytes["/install/wwwroot/torvex/images/spacer.gif"] = "GIF89a";
        for (const auto* type : {"img", "doc"}) {
            row("TORVEX_FOLDERS_GROUPS",
                {{"fld_type", type}, {"fld_site", "aa"}, {"fld_id", "001"}, {"groupId", 2}});
            row("TORVEX_FOLDERS_GROUPS",
                {{"fld_type", type}, {"fld_site", "aa"}, {"fld_id", "002"}, {"groupId", 1}});
        }
        guards = mediaGuards(host.application);
        ASSERT_EQ(guards.size(), 2U);
    }
    bool mayRead(const std::string& path, NamedValues serverVariables = {}) {
        host.response = {};
        serverVariables.emplace_back("script_name", path);
        ask("", {}, std::move(serverVariables));
        for (const FileGuard& guard : guards) {
            if (path.starts_with(guard.folder)) return guard.mayRead(host.context(), path);
        }
        ADD_FAILURE() << "nobody guards " << path;
        return false;
    }

    std::vector<FileGuard> guards;
};
INSTANTIATE_TEST_SUITE_P(Engines, MediaGuardsTest, bothEngines(), engineName);

TEST_P(MediaGuardsTest, GuardImagesAndDocuments) {
    EXPECT_EQ(guards[0].folder, "/images/");
    EXPECT_EQ(guards[1].folder, "/documents/");
}

TEST_P(MediaGuardsTest, AreOnWhereTheTypesSecurityIs) {
    EXPECT_TRUE(guards[0].isOn());
    EXPECT_TRUE(guards[1].isOn());
    host.application.set("torvex_img_security", false);
    host.application.set("torvex_doc_security", false);
    EXPECT_FALSE(guards[0].isOn());
    EXPECT_FALSE(guards[1].isOn());
}

TEST_P(MediaGuardsTest, DocumentsOfASecureSiteAreGuarded) {
    host.application.set("torvex_doc_security", false);
    host.application.set("tvx_website_ssl", true);
    EXPECT_TRUE(guards[1].isOn());
}

TEST_P(MediaGuardsTest, OpenFilesAreRead) {
    EXPECT_TRUE(mayRead("/images/aa/002/photo.jpg"));
    EXPECT_TRUE(mayRead("/documents/aa/002/plan.pdf"));
    EXPECT_FALSE(host.response.isTouched());
}

TEST_P(MediaGuardsTest, GuardedImagesAreBlank) {
    EXPECT_FALSE(mayRead("/images/aa/001/photo.jpg"));
    EXPECT_EQ(host.response.body(), "GIF89a");
    EXPECT_EQ(host.response.contentType, "image/gif");
    EXPECT_EQ(host.response.cacheControl, "no-store");
}

TEST_P(MediaGuardsTest, GuardedDocumentsLeadToTheErrorPage) {
    EXPECT_FALSE(mayRead("/documents/aa/001/plan.pdf"));
    EXPECT_EQ(location(host), "/error.asp?error=no_login");
}

TEST_P(MediaGuardsTest, MembersReadBoth) {
    logIn("ben");
    EXPECT_TRUE(mayRead("/images/aa/001/photo.jpg"));
    EXPECT_TRUE(mayRead("/documents/aa/001/plan.pdf"));
}

TEST_P(MediaGuardsTest, FilesThatLieInNoSiteAreRefused) {
    EXPECT_FALSE(mayRead("/documents/plan.pdf"));
    EXPECT_FALSE(mayRead("/images/photo.jpg"));
}

TEST_P(MediaGuardsTest, DocumentsOfASecureSiteMoveToTheirSecureAddress) {
    host.application.set("tvx_website_ssl", true);
    EXPECT_FALSE(mayRead("/documents/aa/002/my plan.pdf", {{"https", "off"}}));
    EXPECT_EQ(location(host), "https://www.site.test/documents/aa/002/my%20plan.pdf");
    EXPECT_TRUE(mayRead("/documents/aa/002/my plan.pdf", {{"https", "on"}}));
}

TEST_P(MediaGuardsTest, MembersDocumentsOfASecureExtranetMoveToTheirSecureAddress) {
    host.application.set("tvx_extranet_ssl", true);
    logIn("ben");
    EXPECT_FALSE(mayRead("/documents/aa/001/plan.pdf", {{"https", "off"}}));
    EXPECT_EQ(location(host), "https://www.site.test/documents/aa/001/plan.pdf");
    EXPECT_TRUE(mayRead("/documents/aa/002/plan.pdf", {{"https", "off"}}));
}

TEST_P(MediaGuardsTest, ImagesOfASecureSiteStayWhereTheyAre) {
    host.application.set("tvx_website_ssl", true);
    EXPECT_TRUE(mayRead("/images/aa/002/photo.jpg", {{"https", "off"}}));
}

}  // namespace
}  // namespace torvex::test
