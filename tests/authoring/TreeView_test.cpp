#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class TreeViewTest : public ManagerTest {
  protected:
    std::string view(const std::string& tvMode, const std::string& mode = "L",
                     const std::string& site = "aa") {
        host.response = Response();
        manager().treeView(site, "en", mode, tvMode);
        return host.response.body();
    }
    void imageFolder(const std::string& id, const std::string& name) { folder("IMAGES", id, name); }
    void documentFolder(const std::string& id, const std::string& name) { folder("DOCUMENTS", id, name); }
    void folder(const std::string& kind, const std::string& id, const std::string& name) {
        row("TORVEX_" + kind + "_FOLDERS", {{"fld_site", "aa"},
                                            {"fld_id", id},
                                            {"fld_name", name},
                                            {"fld_level", static_cast<int>(id.size() / 3)},
                                            {"fld_parent", id.substr(0, id.size() - 3)}});
    }
    void image(int id, const std::string& folder, const std::string& title, const std::string& file) {
        row("TORVEX_IMAGES", {{"imgId", id},
                              {"img_site", "aa"},
                              {"img_fldId", folder},
                              {"img_title", title},
                              {"img_filename", file},
                              {"img_size", 1234},
                              {"img_width", 40},
                              {"img_height", 30}});
    }
    void document(int id, const std::string& folder, const std::string& title, const std::string& file,
                  const std::string& type) {
        row("TORVEX_DOCUMENTS", {{"docId", id},
                                 {"doc_site", "aa"},
                                 {"doc_fldId", folder},
                                 {"doc_title", title},
                                 {"doc_filename", file},
                                 {"doc_size", 77},
                                 {"doc_type", type}});
    }
    /// Where the calls stand, so that their order can be compared.
    static std::size_t at(const std::string& text, const std::string& call) {
        const std::size_t found = text.find(call);
        EXPECT_NE(found, std::string::npos) << call;
        return found;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, TreeViewTest, bothEngines(), engineName);

TEST_P(TreeViewTest, WithoutALoginThereIsOneBlank) {
    actAsNobody();
    EXPECT_EQ(view("pages"), " ");
    EXPECT_TRUE(host.response.headers.empty());
}

TEST_P(TreeViewTest, TheAnswerIsAPageThatIsNeverKept) {
    host.application.set("torvex_interface_charset", "utf-8");
    const std::string page = view("images");
    EXPECT_EQ(host.response.contentType, "text/html");
    EXPECT_EQ(host.response.charset, "utf-8");
    EXPECT_EQ(host.response.expires, 0);
    EXPECT_EQ(host.response.cacheControl, "no-cache");
    EXPECT_EQ(host.response.headers, (decltype(host.response.headers){{"Pragma", "no-cache"}}));
    EXPECT_THAT(page, HasSubstr("text/html; charset=utf-8"));
    EXPECT_THAT(page, Not(HasSubstr("<!--!")));
}

TEST_P(TreeViewTest, AnUnknownModeWritesTheEmptyTemplate) {
    page("aa.en").insert();
    image(1, "", "Rose", "rose.jpg");
    for (const auto* mode : {"", "others", "page"}) {
        const std::string page = view(mode);
        EXPECT_THAT(page, HasSubstr("oncontextmenu=\"return false\"")) << mode;
        EXPECT_THAT(page, Not(HasSubstr("aa.en"))) << mode;
        EXPECT_THAT(page, Not(HasSubstr("rose"))) << mode;
        EXPECT_THAT(page, Not(HasSubstr("<!--!"))) << mode;
    }
}

TEST_P(TreeViewTest, AllKindsDefineTheSameFunctions) {
    for (const auto* mode : {"pages", "pictures", "images", "other", "OTHER"}) {
        const std::string page = view(mode);
        for (const auto* function : {"Folder(",
                                     "setStateFolder(isOpen)",
                                     "propagateChangesInState(folder)",
                                     "hideFolder(",
                                     "initializeFolder(level, lastNode, leftSide)",
                                     "drawFolder(leftSide)",
                                     "addChild(childNode)",
                                     "folderSubEntries(",
                                     "Item(",
                                     "hideItem(",
                                     "initializeItem(",
                                     "drawItem(",
                                     "display(",
                                     "createEntryIndex(",
                                     "clickOnNode(folderId)",
                                     "initializeDocument(",
                                     "gFld(",
                                     "gLnk(",
                                     "fld(parentFolder, childFolder)",
                                     "item(parentFolder, document)",
                                     "preview(itemId)",
                                     "insertItem("}) {
            EXPECT_THAT(page, HasSubstr(std::string("function ") + function)) << mode;
        }
    }
    EXPECT_THAT(view("other"), HasSubstr("function insert(itemId, ext)"));
    EXPECT_THAT(view("other"), HasSubstr("function clickInsert(folderId)"));
    EXPECT_THAT(view("other"), HasSubstr("function dir(folderId)"));
    EXPECT_THAT(view("images"), HasSubstr("function insert(itemId)"));
}

// ---- Pages ----

TEST_P(TreeViewTest, WebsitesAreFoldersOfTheRoot) {
    const std::string page = view("pages");
    EXPECT_THAT(page, HasSubstr("Saa = fld(Froot,gFld(true,function () { clickOnNode(Saa.id); },'',"
                                "'Site&nbsp;aa','siteOpen','siteClsd',''));"));
    EXPECT_THAT(page, HasSubstr("SaaLen = fld(Saa,gFld(true,function () { clickOnNode(SaaLen.id); },'',"
                                "'Language&nbsp;en','siteOpen','siteClsd',''));"));
}

TEST_P(TreeViewTest, APageWithChildrenIsAFolderAndOneWithoutAnItem) {
    page("aa.en").id(1).title("My home").insert();
    page("aa.en.01").id(2).type("F").title("New Folder").insert();
    page("aa.en.01.01").id(3).type("A").title("Search").insert();
    const std::string page = view("pages");
    EXPECT_THAT(page,
                HasSubstr("Iaaen = fld(SaaLen,gFld(false,1,'aa.en','My&nbsp;home','page','page','P'));"));
    EXPECT_THAT(
        page,
        HasSubstr("Iaaen01 = fld(Iaaen,gFld(false,2,'aa.en.01','New&nbsp;folder','ofld','cfld','F'));"));
    EXPECT_THAT(page, HasSubstr("Iaaen0101 = item(Iaaen01,gLnk(3,'aa.en.01.01','Search','appl','A'));"));
}

TEST_P(TreeViewTest, ANewFolderShowsTheWordOfTheInterface) {
    word(1212, "Neuer Ordner");
    page("aa.en").id(1).type("F").title("NEW FOLDER").insert();
    EXPECT_THAT(view("pages"), HasSubstr("'Neuer&nbsp;Ordner'"));
    word(1212, "");
    EXPECT_THAT(view("pages"), HasSubstr("'New&nbsp;folder'"));
}

TEST_P(TreeViewTest, TheModeChoosesTheTree) {
    const PageId id = page("aa.en").title("Design").insertInDesignOnly();
    page("aa.en").id(id).title("Live").insertInLiveOnly();
    page("aa.en.01").insertInDesignOnly();
    EXPECT_THAT(view("pages", "L"),
                HasSubstr("item(SaaLen,gLnk(" + std::to_string(static_cast<int>(id)) + ",'aa.en','Live'"));
    EXPECT_THAT(view("pages", "L"), HasSubstr("var mode = 'L';"));
    EXPECT_THAT(view("pages", "D"), HasSubstr("'aa.en','Design'"));
    EXPECT_THAT(view("pages", "x"), HasSubstr("aa.en.01"));
    EXPECT_THAT(view("pages", "x"), HasSubstr("var mode = 'D';"));
}

TEST_P(TreeViewTest, SiblingsKeepTheirOrder) {
    page("aa.en").insert();
    page("aa.en.01").order(3).insert();
    page("aa.en.02").order(1).insert();
    page("aa.en.03").order(2).insert();
    page("aa.en.03.01").insert();
    const std::string page = view("pages");
    EXPECT_LT(at(page, "Iaaen02 = item("), at(page, "Iaaen03 = fld("));
    EXPECT_LT(at(page, "Iaaen03 = fld("), at(page, "Iaaen01 = item("));
}

TEST_P(TreeViewTest, WhatLacksItsParentIsLeftOut) {
    page("aa.en.01").insert();
    page("zz.en").insert();
    const std::string page = view("pages");
    EXPECT_THAT(page, Not(HasSubstr("Iaaen01")));
    EXPECT_THAT(page, Not(HasSubstr("Izzen")));
}

TEST_P(TreeViewTest, TitlesCantLeaveTheirPlace) {
    page("aa.en").title("</script><b>'\"\\\r\n").insert();
    site("x'");
    const std::string page = view("pages");
    EXPECT_THAT(page, HasSubstr("'&lt;/script&gt;&lt;b&gt;\\'&quot;\\\\\\x0d\\x0a'"));
    EXPECT_THAT(page, HasSubstr("Sx_27 = fld(Froot,"));
}

// ---- Documents ----

TEST_P(TreeViewTest, DocumentsHangInTheirFolders) {
    documentFolder("001", "Plans");
    documentFolder("001002", "new folder");
    documentFolder("002", "Empty");
    document(5, "001002", "Site plan", "001/002/plan.pdf", "pdf");
    document(6, "001", "Table", "001/table.csv", "csv");
    document(7, "", "Top", "top.txt", "txt");
    host.files.bytes["/install/wwwroot/torvex/images/tv_icon_pdf.gif"] = "GIF";
    const std::string page = view("other");
    EXPECT_THAT(page, HasSubstr("var url = '/documents/';"));
    EXPECT_THAT(page, HasSubstr("Froot = gFld(true,'Froot','Site aa',3);"));
    EXPECT_THAT(page, HasSubstr("F001 = fld(Froot,gFld(false,'F001','Plans',2));"));
    EXPECT_THAT(page, HasSubstr("F001002 = fld(F001,gFld(false,'F001002','New folder',1));"));
    EXPECT_THAT(page, HasSubstr("F002 = fld(Froot,gFld(false,'F002','Empty',0));"));
    EXPECT_THAT(page,
                HasSubstr("I5 = item(F001002,gLnk(5,'I5','Site plan','aa/','001/002/plan.pdf',77,'pdf'));"));
    EXPECT_THAT(page, HasSubstr("I6 = item(F001,gLnk(6,'I6','Table','aa/','001/table.csv',77,'other'));"));
    EXPECT_THAT(page, HasSubstr("I7 = item(Froot,gLnk(7,"));
}

TEST_P(TreeViewTest, DocumentsOfAnotherSiteStayThere) {
    document(5, "", "Ours", "ours.txt", "txt");
    EXPECT_THAT(view("other", "L", " AA "), HasSubstr("Ours"));
    const std::string page = view("other", "L", "bb");
    EXPECT_THAT(page, Not(HasSubstr("Ours")));
    EXPECT_THAT(page, HasSubstr("Froot = gFld(true,'Froot','',0);"));
}

// ---- Images ----

TEST_P(TreeViewTest, ImagesTellTheirSize) {
    imageFolder("001", "Flowers");
    image(9, "001", "It's a rose", "001/rose.JPG");
    const std::string page = view("pictures");
    EXPECT_THAT(page, HasSubstr("var url = '/images/';"));
    EXPECT_THAT(page, HasSubstr("Froot = gFld(true,'Site aa',1);"));
    EXPECT_THAT(page, HasSubstr("F001 = fld(Froot,gFld(false,'Flowers',1));"));
    EXPECT_THAT(page,
                HasSubstr("I9 = item(F001,gLnk(9,'It\\'s a rose','aa/','001/rose.JPG',40,30,1234,'jpg'));"));
    EXPECT_EQ(view("images"), page);
}

TEST_P(TreeViewTest, FilesAreSortedByTitle) {
    image(1, "", "b", "b.gif");
    image(2, "", "A", "a.gif");
    const std::string page = view("images");
    EXPECT_LT(at(page, "I2 = item("), at(page, "I1 = item("));
}

TEST_P(TreeViewTest, ABrokenDatabaseIsAnError) {
    drop("TORVEX_IMAGES");
    EXPECT_TRUE(errorOf([&] { view("images"); }).starts_with(chain({"treeView !"})));
}

}  // namespace
}  // namespace torvex::test
