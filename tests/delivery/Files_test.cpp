#include "accounts/SecondFactor.h"
#include "delivery/AccessOfMany.h"
#include "support/ExtranetTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

constexpr auto images = "/install/wwwroot/images/";
constexpr auto documents = "/install/wwwroot/documents/";

/// Media folders of the site "aa": 001 is for members, 002 open, 003 has no groups, 001001 and 004 inherit.
class FilesTest : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_img_security", true);
        host.application.set("torvex_doc_security", true);
        for (const auto* type : {"img", "doc"}) {
            folder(type, "", 0);
            folder(type, "001", 2);
            folder(type, "001001", 0);
            folder(type, "002", 1);
            folder(type, "004", 0);
        }
    }
    void folder(const std::string& type, const std::string& id, int groupId) {
        row("TORVEX_FOLDERS_GROUPS",
            {{"fld_type", type}, {"fld_site", "aa"}, {"fld_id", id}, {"groupId", groupId}});
    }
    int access(const std::string& folder) { return server().checkFolderAccess(folder); }
    int image(const std::string& folder) { return access(images + folder); }
    int document(const std::string& folder) { return access(documents + folder); }

    void file(const std::string& path, const std::string& content = "content") {
        host.files.bytes[path] = content;
    }
    std::string send(const std::string& path, bool securityCheck = true) {
        host.response = {};
        return server().sendBinaryFile(path, securityCheck);
    }
    void expectNothingSent() { EXPECT_FALSE(host.response.isTouched()); }
};
INSTANTIATE_TEST_SUITE_P(Engines, FilesTest, bothEngines(), engineName);

// checkFolderAccess.

TEST_P(FilesTest, AnAuthorSeesEverything) {
    host.session.set("torvex_username", "author");
    EXPECT_EQ(document("aa/001/"), 0);
    EXPECT_EQ(document(""), 0);
}

TEST_P(FilesTest, FoldersThatHoldNoMediaAreOpen) {
    EXPECT_EQ(access("/install/wwwroot/stylesheets/"), 0);
    EXPECT_EQ(access(""), 0);
}

TEST_P(FilesTest, WithoutTheTypesSecurityItsFoldersAreOpen) {
    host.application.set("torvex_doc_security", false);
    EXPECT_EQ(document("aa/001/"), 0);
    EXPECT_EQ(document(""), 0);
    EXPECT_EQ(image("aa/001/"), 100);
    host.application.set("torvex_img_security", false);
    EXPECT_EQ(image("aa/001/"), 0);
}

TEST_P(FilesTest, AFolderWithoutASiteIsABadPath) {
    EXPECT_EQ(document(""), -99);
    EXPECT_EQ(document("a/"), -99);
    EXPECT_EQ(image(""), 100);
}

TEST_P(FilesTest, WithoutTheExtranetFoldersAreOpen) {
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(document("aa/001/"), 0);
    EXPECT_EQ(image("aa/003/"), 0);
    EXPECT_EQ(document(""), -99);
}

TEST_P(FilesTest, AFolderWithoutGroupsIsRefused) {
    logIn("ben");
    EXPECT_EQ(document("aa/003/"), -1);
    EXPECT_EQ(document("zz/001/"), -1);
    EXPECT_EQ(image("aa/003/"), 100);
}

TEST_P(FilesTest, AFolderForEverybodyIsOpen) {
    EXPECT_EQ(document("aa/002/"), 0);
    EXPECT_EQ(image("aa/002/"), 0);
}

TEST_P(FilesTest, InheritanceUpToTheTopIsOpen) {
    EXPECT_EQ(document("aa/"), 0);
    EXPECT_EQ(document("aa/004/"), 0);
    EXPECT_EQ(image("aa/004/"), 0);
}

TEST_P(FilesTest, InheritanceNeedsGroupsOnTheWholeWay) {
    connection().execute("delete from TORVEX_FOLDERS_GROUPS where fld_id = ''");
    EXPECT_EQ(document("aa/004/"), -1);
}

TEST_P(FilesTest, AGuardedFolderNeedsALogin) {
    EXPECT_EQ(document("aa/001/"), -2);
    EXPECT_EQ(image("aa/001/"), 100);
}

TEST_P(FilesTest, AMemberIsAUserOfTheFolder) {
    logIn("ben");
    EXPECT_EQ(document("aa/001/"), 1);
    EXPECT_EQ(image("aa/001/"), 1);
}

TEST_P(FilesTest, AFolderInAGuardedOneIsGuarded) {
    EXPECT_EQ(document("aa/001/001/"), -2);
    EXPECT_EQ(document("aa/001001/"), -2);
    logIn("ben");
    EXPECT_EQ(document("aa/001/001/"), 1);
}

TEST_P(FilesTest, AUserOfNoneOfItsGroupsIsRefused) {
    logIn("cleo");
    EXPECT_EQ(document("aa/001/"), -2);
    EXPECT_EQ(image("aa/001/"), 100);
}

TEST_P(FilesTest, AWrongPasswordIsRefused) {
    logIn("ben");
    host.session.set("tvx_password", "wrong");
    EXPECT_EQ(document("aa/001/"), -2);
}

TEST_P(FilesTest, AUserNeedsValidDates) {
    user(110, "past", "pastpw", {2}, "", "20260614");
    user(111, "today", "todaypw", {2}, "20260615", "20260615");
    logIn("past");
    EXPECT_EQ(document("aa/001/"), -2);
    EXPECT_EQ(image("aa/001/"), 100);
    logIn("today");
    EXPECT_EQ(document("aa/001/"), 1);
}

TEST_P(FilesTest, PathsIgnoreCase) {
    EXPECT_EQ(access("/INSTALL/wwwroot/Documents/AA/001/"), -2);
}

TEST_P(FilesTest, GuardsCanNotBeLeftByPoints) {
    logIn("cleo");
    EXPECT_LT(document("aa/002/../001/"), 0);
    EXPECT_LT(document("../documents/aa/001/"), 0);
}

TEST_P(FilesTest, ImagesAndDocumentsHaveGroupsOfTheirOwn) {
    connection().execute(
        "update TORVEX_FOLDERS_GROUPS set groupId = 1 where fld_type = 'img' and fld_id = '001'");
    EXPECT_EQ(image("aa/001/"), 0);
    EXPECT_EQ(document("aa/001/"), -2);
}

// sendBinaryFile.

TEST_P(FilesTest, AFileIsSentWithItsTypeAndName) {
    file("/install/wwwroot/documents/aa/002/plan.pdf", std::string("%PDF\0bytes", 10));
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/plan.pdf"), "0");
    EXPECT_EQ(host.response.contentType, "application/pdf");
    EXPECT_EQ(header(host, "Content-Disposition"), "inline; filename=plan.pdf");
    EXPECT_EQ(host.response.body(), std::string("%PDF\0bytes", 10));
    EXPECT_TRUE(host.response.isBinary());
}

TEST_P(FilesTest, BlanksAroundAreCutAndBothDividersCount) {
    file("/install/wwwroot/documents/aa/002/plan.pdf");
    EXPECT_EQ(send("  \\install\\wwwroot\\documents\\aa\\002\\plan.pdf "), "0");
    EXPECT_EQ(header(host, "Content-Disposition"), "inline; filename=plan.pdf");
}

TEST_P(FilesTest, WithoutAFolderOrANameNothingIsSent) {
    file("plan.pdf");
    EXPECT_EQ(send("plan.pdf"), "-99");
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/"), "-99");
    EXPECT_EQ(send(""), "-99");
    EXPECT_EQ(send("   "), "-99");
    expectNothingSent();
}

TEST_P(FilesTest, AMissingFileIsNotFound) {
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/none.pdf"), "-99");
    expectNothingSent();
}

TEST_P(FilesTest, AnEmptyFileIsNotFound) {
    file("/install/wwwroot/documents/aa/002/empty.pdf", "");
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/empty.pdf"), "-99");
    expectNothingSent();
}

TEST_P(FilesTest, AFileThatCanNotBeReadIsNotFound) {
    file("/install/wwwroot/documents/aa/002/plan.pdf");
    host.files.readFailure = "input/output error";
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/plan.pdf"), "-99");
    expectNothingSent();
}

TEST_P(FilesTest, AGuardedDocumentGivesTheCodeOfTheFolder) {
    file("/install/wwwroot/documents/aa/001/plan.pdf");
    file("/install/wwwroot/documents/aa/003/plan.pdf");
    EXPECT_EQ(send("/install/wwwroot/documents/aa/001/plan.pdf"), "-2");
    EXPECT_EQ(send("/install/wwwroot/documents/aa/003/plan.pdf"), "-1");
    EXPECT_EQ(send("/install/wwwroot/documents/plan.pdf"), "-99");
    expectNothingSent();
}

TEST_P(FilesTest, TheCodeOfTheFolderComesAheadOfTheFile) {
    EXPECT_EQ(send("/install/wwwroot/documents/aa/001/none.pdf"), "-2");
}

TEST_P(FilesTest, WithoutTheCheckAnyFileIsSent) {
    host.application.set("tvx_website_ssl", true);
    ask("", {}, {{"https", "off"}});
    file("/install/wwwroot/documents/aa/001/plan.pdf");
    EXPECT_EQ(send("/install/wwwroot/documents/aa/001/plan.pdf", false), "0");
}

TEST_P(FilesTest, AMemberGetsTheDocument) {
    logIn("ben");
    file("/install/wwwroot/documents/aa/001/plan.pdf");
    EXPECT_EQ(send("/install/wwwroot/documents/aa/001/plan.pdf"), "0");
}

TEST_P(FilesTest, AGuardedImageIsABlankPicture) {
    file("/install/wwwroot/images/aa/001/photo.jpg", "photo");
    file("/install/wwwroot/torvex/images/spacer.gif", "GIF89a");
    EXPECT_EQ(send("/install/wwwroot/images/aa/001/photo.jpg"), "0");
    EXPECT_EQ(host.response.body(), "GIF89a");
    EXPECT_EQ(host.response.contentType, "image/gif");
    EXPECT_EQ(header(host, "Content-Disposition"), "inline; filename=spacer.gif");
}

TEST_P(FilesTest, AMemberGetsTheImage) {
    logIn("ben");
    file("/install/wwwroot/images/aa/001/photo.jpg", "photo");
    EXPECT_EQ(send("/install/wwwroot/images/aa/001/photo.jpg"), "0");
    EXPECT_EQ(host.response.body(), "photo");
}

TEST_P(FilesTest, WithoutTheBlankPictureNothingIsSent) {
    file("/install/wwwroot/images/aa/001/photo.jpg", "photo");
    EXPECT_EQ(send("/install/wwwroot/images/aa/001/photo.jpg"), "-99");
    expectNothingSent();
}

TEST_P(FilesTest, ADocumentOfASecureSiteNeedsASecureAddress) {
    host.application.set("tvx_website_ssl", true);
    file("/install/wwwroot/documents/aa/002/plan.pdf");
    ask("", {}, {{"https", "OFF"}});
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/plan.pdf"), "-10");
    expectNothingSent();
    ask("", {}, {{"https", "on"}});
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/plan.pdf"), "0");
}

TEST_P(FilesTest, AMembersDocumentOfASecureExtranetNeedsASecureAddress) {
    host.application.set("tvx_extranet_ssl", true);
    file("/install/wwwroot/documents/aa/001/plan.pdf");
    file("/install/wwwroot/documents/aa/002/plan.pdf");
    logIn("ben");
    ask("", {}, {{"https", "off"}});
    EXPECT_EQ(send("/install/wwwroot/documents/aa/001/plan.pdf"), "-10");
    EXPECT_EQ(send("/install/wwwroot/documents/aa/002/plan.pdf"), "0");
}

/// Until then she is nobody to them.
TEST_P(FilesTest, AnAuthorWhoHasStillToSetUpADemandedFactorSeesNoGuardedFolder) {
    host.session.set("torvex_username", "anna");
    host.session.set("torvex_loginId", 7);
    row("TORVEX_ROLES", {{"roleId", 33}, {"roleName", "Careful"}, {"secondFactor", 1}});
    EXPECT_EQ(server().checkFolderAccess("/install/wwwroot/documents/aa/001/"), 0);
    row("TORVEX_ROLES_LOGINS", {{"roleId", 33}, {"loginId", 7}});
    EXPECT_EQ(server().checkFolderAccess("/install/wwwroot/documents/aa/001/"), -2);
    EXPECT_EQ(server().checkFolderAccess("/install/wwwroot/documents/aa/002/"), 0);
    EXPECT_EQ(AccessOfMany(host.context(), connection()).folderAccess("/install/wwwroot/documents/aa/001/"),
              -2);
    giveSecondFactor(connection(), ofLogin(7), "MZXW6YTB", 1, host.clock.now());
    EXPECT_EQ(server().checkFolderAccess("/install/wwwroot/documents/aa/001/"), 0);
}

TEST_P(FilesTest, AnAuthorsOwnSettingDecidesOnTheSecureAddress) {
    host.session.set("torvex_username", "author");
    host.application.set("tvx_website_ssl", true);
    file("/install/wwwroot/documents/aa/001/plan.pdf");
    ask("", {}, {{"https", "off"}});
    EXPECT_EQ(send("/install/wwwroot/documents/aa/001/plan.pdf"), "0");
    host.session.set("torvex_ssl", true);
    EXPECT_EQ(send("/install/wwwroot/documents/aa/001/plan.pdf"), "-10");
}

TEST_P(FilesTest, ImagesNeedNoSecureAddress) {
    host.application.set("tvx_website_ssl", true);
    file("/install/wwwroot/images/aa/002/photo.jpg");
    ask("", {}, {{"https", "off"}});
    EXPECT_EQ(send("/install/wwwroot/images/aa/002/photo.jpg"), "0");
}

TEST_P(FilesTest, TypesFollowTheExtension) {
    for (const auto& [name, type] : std::initializer_list<std::pair<const char*, const char*>>{
             {"a.gif", "image/gif"},
             {"a.JPG", "image/jpeg"},
             {"a.jpeg", "image/jpeg"},
             {"a.bmp", "image/bmp"},
             {"a.doc", "application/msword"},
             {"a.xls", "application/vnd.ms-excel"},
             {"a.b.pdf", "application/pdf"},
             {"a.png", "image/png"},
             {"a.CSV", "text/csv"},
             {"a.nosuchtype", "application/octet-stream"},
             {"a.", "application/octet-stream"},
             {"a'b.x'y", "application/octet-stream"}}) {
        file(std::string("/any/") + name);
        EXPECT_EQ(send(std::string("/any/") + name), "0") << name;
        EXPECT_EQ(host.response.contentType, type) << name;
    }
}

TEST_P(FilesTest, FailuresBearTheirLines) {
    drop("TORVEX_MIMETYPES");
    file("/any/a.xyz");
    EXPECT_TRUE(errorOf([&] { send("/any/a.xyz"); }).starts_with(chain({"SendBinaryFile !"})));
    drop("TORVEX_FOLDERS_GROUPS");
    EXPECT_TRUE(errorOf([&] {
                    send("/install/wwwroot/documents/aa/001/x.pdf");
                }).starts_with(chain({"SendBinaryFile !", "checkFolderAccess !"})));
}

}  // namespace
}  // namespace torvex::test
