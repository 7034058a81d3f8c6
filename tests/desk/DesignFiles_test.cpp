#include <gmock/gmock.h>

#include "support/RegistersTest.h"
#include "templates/Template.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Content template 5, base template 5 and stylesheet 5 of "aa.en", each with a file, and one 6 beside it.
class DesignFilesTest : public RegistersTest {
  protected:
    static constexpr const char* rose = "/install/contentTemplates/aa/en/rose.html";
    static constexpr const char* tulip = "/install/contentTemplates/aa/en/tulip.html";

    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        contentTemplate(5, "aa", "en", "rose.html", "<p>rose</p>");
        contentTemplate(6, "aa", "en", "lily.html", "<p>lily</p>");
        baseTemplate(5, "aa", "en", "rose.html", "<html>rose</html>");
        baseTemplate(6, "aa", "en", "lily.html", "<html>lily</html>");
        stylesheet(5, "aa", "en", "rose.css", "rose {}");
        stylesheet(6, "aa", "en", "lily.css", "lily {}");
    }
    std::string save(int id, const std::string& name, const std::string& file,
                     const std::string& source = "new", int advId = 0) {
        return registers().saveTemplate(id, "aa", "en", name, "About it", file, source, false, advId);
    }
    std::string saveBase(int id, const std::string& name, const std::string& file,
                         const std::string& source = "new") {
        return registers().saveBaseTemplate(id, "aa", "en", name, "About it", file, source, 222);
    }
    std::string saveSheet(int id, const std::string& name, const std::string& file,
                          const std::string& source = "new") {
        return registers().saveStylesheet(id, "aa", "en", name, "About it", file, source, 223);
    }
    std::string rowOf(int id) {
        const auto rows = rowsOf(
            "select tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock "
            "from TORVEX_TEMPLATES where tpl_id = " +
            std::to_string(id));
        return rows.empty() ? "" : rows.front();
    }
    std::string fileAt(const std::string& path) {
        const auto found = host.files.bytes.find(path);
        return found == host.files.bytes.end() ? "none" : found->second;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DesignFilesTest, bothEngines(), engineName);

TEST_P(DesignFilesTest, ATemplateIsAddedWithItsFile) {
    const std::string id = registers().saveTemplate(0, " AA ", "EN", "  Tulips ", " They bloom ",
                                                    " Tulip.html ", "<!--!torvex_body_1!-->", true, 221);
    EXPECT_EQ(rowOf(std::stoi(id)), "aa|en|Tulips|They bloom|tulip.html|1|");
    EXPECT_EQ(fileAt(tulip), "<!--!torvex_body_1!-->");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||221|new|New content template \"Tulips\""));
}

TEST_P(DesignFilesTest, ATemplateIsSavedAndLetGo) {
    hold("TORVEX_TEMPLATES", "tpl_id", 5, host.session.id());
    EXPECT_EQ(save(5, "Roses", "rose.html", "<p>other</p>", 221), "5");
    EXPECT_EQ(rowOf(5), "aa|en|Roses|About it|rose.html|0|");
    EXPECT_EQ(fileAt(rose), "<p>other</p>");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||221|save|Content template \"Roses\" has been updated"));
}

TEST_P(DesignFilesTest, WhatIsSavedIsWhatIsRead) {
    save(5, "Roses", "rose.html", "<p>\xc3\xa9\r\n</p>");
    Template entry(host.context());
    entry.connect(connection());
    EXPECT_TRUE(entry.getTemplate(5));
    EXPECT_EQ(entry.tplSource(), "<p>\xc3\xa9\r\n</p>");
}

TEST_P(DesignFilesTest, WithoutAnEntryThereIsNoLineInTheTrail) {
    EXPECT_EQ(save(5, "Roses", "rose.html"), "5");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(DesignFilesTest, AnotherFileTakesThePlaceOfTheOneBefore) {
    EXPECT_EQ(save(5, "Roses", "tulip.html", "<p>rose</p>"), "5");
    EXPECT_EQ(fileAt(tulip), "<p>rose</p>");
    EXPECT_EQ(fileAt(rose), "none");
}

TEST_P(DesignFilesTest, AFileThatAnotherEntryHasTooStays) {
    connection().execute("update TORVEX_TEMPLATES set tpl_filename = 'rose.html' where tpl_id = 6");
    EXPECT_EQ(save(5, "Roses", "tulip.html"), "5");
    EXPECT_EQ(fileAt(rose), "<p>rose</p>");
}

TEST_P(DesignFilesTest, AFileKeepsTheNameThatItHas) {
    connection().execute("update TORVEX_TEMPLATES set tpl_filename = 'Rose.HTML' where tpl_id = 5");
    EXPECT_EQ(save(5, "Roses", "rose.html"), "5");
    EXPECT_EQ(rowOf(5), "aa|en|Roses|About it|Rose.HTML|0|");
    EXPECT_EQ(fileAt("/install/contentTemplates/aa/en/Rose.HTML"), "new");
}

TEST_P(DesignFilesTest, ATextThatCantBeReadIsReplaced) {
    host.files.bytes[rose] = "\xff\xfe\xff";
    EXPECT_EQ(save(5, "Roses", "rose.html", "<p>rose</p>"), "5");
    EXPECT_EQ(fileAt(rose), "<p>rose</p>");
}

TEST_P(DesignFilesTest, APathOfABrowserIsCut) {
    const std::string id = save(0, "Tulips", "C:\\My files\\tulip.html");
    EXPECT_EQ(rowOf(std::stoi(id)), "aa|en|Tulips|About it|tulip.html|0|");
}

TEST_P(DesignFilesTest, LongTextsAreCut) {
    EXPECT_EQ(
        registers().saveTemplate(5, "aa", "en", std::string(60, 'x'), std::string(600, 'y'), "rose.html", ""),
        "5");
    EXPECT_EQ(rowOf(5), "aa|en|" + std::string(50, 'x') + "|" + std::string(500, 'y') + "|rose.html|0|");
}

TEST_P(DesignFilesTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save(99, "Roses", "rose.html"); });
    expectRefusal("-1",
                  [&] { return registers().saveTemplate(5, "bb", "en", "Roses", "", "rose.html", ""); });
    expectRefusal("-1",
                  [&] { return registers().saveTemplate(5, "aa", "de", "Roses", "", "rose.html", ""); });
    expectRefusal("-7", [&] { return registers().saveTemplate(0, "zz", "en", "Roses", "", "new.html", ""); });
    expectRefusal("-7", [&] { return registers().saveTemplate(0, "aa", "zz", "Roses", "", "new.html", ""); });
    expectRefusal("-3", [&] { return save(5, "  ", "rose.html"); });
    for (const auto* file :
         {"", " ", ".htaccess", "../rose.html", "a/b.html", "*.html", "a\nb.html", "c:\\"}) {
        SCOPED_TRACE(file);
        expectRefusal("-6", [&] { return save(0, "New", file); });
    }
    expectRefusal("-2", [&] { return save(5, "LILY.html", "rose.html"); });
    expectRefusal("-2", [&] { return save(0, "lily.html", "new.html"); });
    expectRefusal("-5", [&] { return save(5, "Roses", "lily.html"); });
    host.files.bytes[tulip] = "nobody's";
    expectRefusal("-5", [&] { return save(0, "New", "tulip.html"); });
    hold("TORVEX_TEMPLATES", "tpl_id", 5, bertsSession);
    expectRefusal("-4", [&] { return save(5, "Roses", "rose.html"); });
    actAsNobody();
    expectRefusal("-10", [&] { return save(5, "Roses", "rose.html"); });
}

TEST_P(DesignFilesTest, AFailureAnywhereChangesNothing) {
    failEverywhere("5", "-99", [&] { return save(5, "Roses", "tulip.html", "<p>other</p>"); });
}

TEST_P(DesignFilesTest, AFailureWhileAddingLeavesNoFile) {
    const auto failing = [&] {
        const std::string id = save(0, "New", "tulip.html");
        return id == "-99" ? id : std::string("added");
    };
    failEverywhere("added", "-99", failing);
}

TEST_P(DesignFilesTest, AFileThatCantBeWrittenChangesNothing) {
    host.files.writeFailure = "the disk is full";
    const Tables before = everything();
    EXPECT_EQ(save(5, "Roses", "rose.html"), "-99");
    EXPECT_TRUE(everything() == before);
    EXPECT_EQ(fileAt(rose), "<p>rose</p>");
}

TEST_P(DesignFilesTest, OfTwoWhoAddAnEntryOfOneNameOneDoes) {
    beforeTransaction([&] { contentTemplate(9, "aa", "en", "tulip.html", "theirs"); });
    EXPECT_EQ(save(0, "tulip.html", "other.html"), "-2");
    EXPECT_EQ(fileAt(tulip), "theirs");
}

TEST_P(DesignFilesTest, ABaseTemplateIsAddedAndSaved) {
    const std::string id = saveBase(0, "Sheet", "sheet.html");
    EXPECT_EQ(fileAt("/install/baseTemplates/aa/en/sheet.html"), "new");
    EXPECT_EQ(saveBase(std::stoi(id), "Paper", "sheet.html", "newer"), id);
    EXPECT_THAT(rowsOf("select btpl_name, btpl_description, btpl_filename, lock from TORVEX_BASETEMPLATES "
                       "where btpl_id = " +
                       id),
                ElementsAre("Paper|About it|sheet.html|"));
    EXPECT_EQ(fileAt("/install/baseTemplates/aa/en/sheet.html"), "newer");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||222|new|New base template \"Sheet\"",
                            "7|Anna Author|0||222|save|Base template \"Paper\" has been updated"));
}

TEST_P(DesignFilesTest, ABaseTemplateIsRefusedAsATemplateIs) {
    expectRefusal("-1", [&] { return saveBase(99, "Sheet", "sheet.html"); });
    expectRefusal("-2", [&] { return saveBase(0, "lily.html", "sheet.html"); });
    expectRefusal("-5", [&] { return saveBase(5, "Roses", "lily.html"); });
    hold("TORVEX_BASETEMPLATES", "btpl_id", 5, bertsSession);
    expectRefusal("-4", [&] { return saveBase(5, "Roses", "rose.html"); });
}

TEST_P(DesignFilesTest, AStylesheetIsAddedAndSaved) {
    const std::string id = saveSheet(0, "Dusk", "dusk.css");
    EXPECT_EQ(fileAt("/install/wwwroot/stylesheets/aa/en/dusk.css"), "new");
    EXPECT_EQ(saveSheet(std::stoi(id), "Night", "night.css", "newer"), id);
    EXPECT_THAT(
        rowsOf("select ss_name, ss_description, ss_filename, lock from TORVEX_STYLESHEETS where ss_id = " +
               id),
        ElementsAre("Night|About it|night.css|"));
    EXPECT_EQ(fileAt("/install/wwwroot/stylesheets/aa/en/night.css"), "newer");
    EXPECT_EQ(fileAt("/install/wwwroot/stylesheets/aa/en/dusk.css"), "none");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||223|new|New stylesheet \"Dusk\"",
                                          "7|Anna Author|0||223|save|Stylesheet \"Night\" has been updated"));
}

TEST_P(DesignFilesTest, OnlyAStylesheetsFileIsLaidAmongThoseThatVisitorsFetch) {
    for (const auto* file : {"page.html", "script.js", "config.xml", "css"}) {
        SCOPED_TRACE(file);
        expectRefusal("-6", [&] { return saveSheet(0, "New", file); });
    }
    host.files.bytes["/install/wwwroot/stylesheets/aa/en/admin.css"] = "the system's";
    expectRefusal("-5", [&] { return saveSheet(0, "New", "admin.css"); });
    hold("TORVEX_STYLESHEETS", "ss_id", 5, bertsSession);
    expectRefusal("-4", [&] { return saveSheet(5, "Roses", "rose.css"); });
}

}  // namespace
}  // namespace torvex::test
