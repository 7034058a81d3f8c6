#include <string>
#include <vector>

#include "support/SiteTest.h"
#include "templates/BaseTemplate.h"
#include "templates/StyleSheet.h"

namespace torvex::test {
namespace {

/// A register of design files, whichever one: what the tests below ask of it, in one set of words.
class DesignRegister {
  public:
    virtual ~DesignRegister() = default;

    virtual std::string prefix() const = 0;  ///< of its columns
    virtual std::string table() const = 0;
    virtual std::string folder() const = 0;      ///< of its files
    virtual std::string pageColumn() const = 0;  ///< by which a page names an entry

    virtual void connect(db::ConnectionSource connection) = 0;
    virtual std::string check(const std::string& site, int id, const std::string& name,
                              const std::string& file) = 0;
    virtual bool read(int id) = 0;
    virtual int idOf(const std::string& name, const std::string& site) = 0;
    virtual Value list() = 0;
    virtual std::string fileOf(const std::string& pageIdent, const std::string& mode = "L") = 0;
    virtual std::string nameOf(const std::string& pageIdent, const std::string& mode = "L") = 0;
    virtual std::string getNodeId(PageId pageId) = 0;
    virtual PageId getPageId(const std::string& nodeId) = 0;

    /// The entry last read, its properties divided by "|".
    virtual bool exists() const = 0;
    virtual std::string entry() const = 0;

    /// The lines that failures of `check`, `read`, `idOf`, `list`, `fileOf` and `nameOf` begin with.
    virtual std::vector<const char*> lines() const = 0;
};

class BaseTemplates final : public DesignRegister {
  public:
    explicit BaseTemplates(HostContext& host) : assets_(host) {}

    std::string prefix() const override { return "btpl_"; }
    std::string table() const override { return "TORVEX_BASETEMPLATES"; }
    std::string folder() const override { return "/install/baseTemplates/"; }
    std::string pageColumn() const override { return "baseTemplate"; }

    void connect(db::ConnectionSource connection) override { assets_.connect(std::move(connection)); }
    std::string check(const std::string& site, int id, const std::string& name,
                      const std::string& file) override {
        return assets_.checkBaseTemplate(site, "en", id, name, file);
    }
    bool read(int id) override { return assets_.getBaseTemplate(id); }
    int idOf(const std::string& name, const std::string& site) override {
        return assets_.getBaseTemplateId(name, site, "en");
    }
    Value list() override { return assets_.getBaseTemplateList("aa", "en"); }
    std::string fileOf(const std::string& pageIdent, const std::string& mode) override {
        return assets_.getBaseTemplateFile(pageIdent, mode);
    }
    std::string nameOf(const std::string& pageIdent, const std::string& mode) override {
        return assets_.getBaseTemplateName(pageIdent, mode);
    }
    std::string getNodeId(PageId pageId) override { return assets_.getNodeId(pageId); }
    PageId getPageId(const std::string& nodeId) override { return assets_.getPageId(nodeId); }

    bool exists() const override { return assets_.btplExists(); }
    std::string entry() const override {
        return assets_.btplSite() + "|" + assets_.btplLang() + "|" + assets_.btplName() + "|" +
               assets_.btplDescription() + "|" + assets_.btplFilename() + "|" + assets_.btplSource();
    }
    std::vector<const char*> lines() const override {
        return {"checkBaseTemplate !",   "getBaseTemplate !",     "getBaseTemplateId !",
                "getBaseTemplateList !", "getBaseTemplateFile !", "getBaseTemplateName !"};
    }

  private:
    BaseTemplate assets_;
};

class StyleSheets final : public DesignRegister {
  public:
    explicit StyleSheets(HostContext& host) : assets_(host) {}

    std::string prefix() const override { return "ss_"; }
    std::string table() const override { return "TORVEX_STYLESHEETS"; }
    std::string folder() const override { return "/install/wwwroot/stylesheets/"; }
    std::string pageColumn() const override { return "stylesheet"; }

    void connect(db::ConnectionSource connection) override { assets_.connect(std::move(connection)); }
    std::string check(const std::string& site, int id, const std::string& name,
                      const std::string& file) override {
        return assets_.checkStylesheet(site, "en", id, name, file);
    }
    bool read(int id) override { return assets_.getStylesheet(id); }
    int idOf(const std::string& name, const std::string& site) override {
        return assets_.getStylesheetId(name, site, "en");
    }
    Value list() override { return assets_.getStylesheetList("aa", "en"); }
    std::string fileOf(const std::string& pageIdent, const std::string& mode) override {
        return assets_.getStylesheetFile(pageIdent, mode);
    }
    std::string nameOf(const std::string& pageIdent, const std::string& mode) override {
        return assets_.getStylesheetName(pageIdent, mode);
    }
    std::string getNodeId(PageId pageId) override { return assets_.getNodeId(pageId); }
    PageId getPageId(const std::string& nodeId) override { return assets_.getPageId(nodeId); }

    bool exists() const override { return assets_.ssExists(); }
    std::string entry() const override {
        return assets_.ssSite() + "|" + assets_.ssLang() + "|" + assets_.ssName() + "|" +
               assets_.ssDescription() + "|" + assets_.ssFilename() + "|" + assets_.ssSource();
    }
    std::vector<const char*> lines() const override {
        return {"checkStylesheet !",   "getStylesheet !",     "getStylesheetId !",
                "getStylesheetList !", "getStyleSheetFile !", "getStyleSheetName !"};
    }

  private:
    StyleSheet assets_;
};

/// Every behaviour is looked at in both registers, one after the other.
class DesignRegistersTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        baseTemplates_.connect(connection());
        styleSheets_.connect(connection());
    }

    std::vector<DesignRegister*> registers() { return {&baseTemplates_, &styleSheets_}; }

    void entry(int id, const std::string& name, const std::string& file, const std::string& site = "aa") {
        for (const DesignRegister* assets : registers()) {
            const std::string prefix = assets->prefix();
            row(assets->table(), {{prefix + "id", id},
                                  {prefix + "site", site},
                                  {prefix + "lang", "en"},
                                  {prefix + "name", name},
                                  {prefix + "description", "Of " + name},
                                  {prefix + "filename", file}});
        }
    }

    /// A page that names an entry, 0 for none, in each register.
    PageBuilder pageWith(const std::string& nodeId, PageId pageId, int id) {
        PageBuilder built = page(nodeId);
        built.id(pageId);
        if (id != 0) {
            for (const DesignRegister* assets : registers()) built.set(assets->pageColumn(), id);
        }
        return built;
    }

  private:
    BaseTemplates baseTemplates_{host.context()};
    StyleSheets styleSheets_{host.context()};
};
INSTANTIATE_TEST_SUITE_P(Engines, DesignRegistersTest, bothEngines(), engineName);

TEST_P(DesignRegistersTest, ANewNameAndFileAreFree) {
    entry(1, "Plain", "plain.x");
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->check("aa", -1, "Wide", "wide.x"), "0");
        EXPECT_EQ(assets->check("bb", -1, "Plain", "plain.x"), "0");
    }
}

TEST_P(DesignRegistersTest, ATakenNameStandsBeforeATakenFile) {
    entry(1, "Plain", "plain.x");
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->check("aa", -1, "plain", "PLAIN.x"), "1");
        EXPECT_EQ(assets->check("aa", -1, "Wide", "C:\\files\\PLAIN.x"), "2");
    }
}

TEST_P(DesignRegistersTest, AnEntryIsNoConflictWithItself) {
    entry(1, "Plain", "plain.x");
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->check("aa", 1, "Plain", "plain.x"), "0");
    }
}

TEST_P(DesignRegistersTest, AnEntryIsReadWithTheTextOfItsFile) {
    entry(7, "Plain", "plain.x");
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        host.files.bytes[assets->folder() + "aa/en/plain.x"] = "text of " + assets->prefix();
        EXPECT_FALSE(assets->exists());
        EXPECT_TRUE(assets->read(7));
        EXPECT_TRUE(assets->exists());
        EXPECT_EQ(assets->entry(), "aa|en|Plain|Of Plain|plain.x|text of " + assets->prefix());
    }
}

TEST_P(DesignRegistersTest, AnUnknownEntryClearsTheOneBefore) {
    entry(7, "Plain", "plain.x");
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_TRUE(assets->read(7));
        EXPECT_FALSE(assets->read(8));
        EXPECT_FALSE(assets->exists());
        EXPECT_EQ(assets->entry(), "|||||");
    }
}

TEST_P(DesignRegistersTest, AnEntryIsFoundByItsName) {
    entry(7, "Plain", "plain.x");
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->idOf("PLAIN", "aa"), 7);
        EXPECT_EQ(assets->idOf("Plain", "bb"), -1);
        EXPECT_EQ(assets->idOf("Wide", "aa"), -1);
    }
}

TEST_P(DesignRegistersTest, TheListComesByNameInThreeColumns) {
    entry(1, "Wide", "1.x");
    entry(2, "narrow", "2.x");
    entry(3, "Other", "3.x", "bb");
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        const Value list = assets->list();
        ASSERT_TRUE(list.isGrid());
        ASSERT_EQ(list.grid().columns(), 3);
        ASSERT_EQ(list.grid().rows(), 2);
        EXPECT_EQ(list.grid().at(0, 0), Value(2));
        EXPECT_EQ(list.grid().at(1, 0), Value("narrow"));
        EXPECT_EQ(list.grid().at(2, 0), Value("Of narrow"));
        EXPECT_EQ(list.grid().at(1, 1), Value("Wide"));
    }
}

TEST_P(DesignRegistersTest, AListWithoutEntriesIsEmpty) {
    for (auto* assets : registers()) EXPECT_TRUE(assets->list().isEmpty()) << assets->table();
}

TEST_P(DesignRegistersTest, APageInheritsFromTheNearestAncestorThatNamesOne) {
    entry(7, "Plain", " plain.x ");
    entry(8, "Root", "root.x");
    pageWith("aa.en", 10, 8).insert();
    pageWith("aa.en.01", 11, 7).insert();
    pageWith("aa.en.01.01", 12, 0).insert();
    pageWith("aa.en.02", 13, 0).insert();
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->fileOf("12"), "plain.x");
        EXPECT_EQ(assets->nameOf(" AA.en.01.01 "), "Plain");
        EXPECT_EQ(assets->fileOf("13"), "root.x");
    }
}

TEST_P(DesignRegistersTest, APageThatInheritsUpToTheRootHasNone) {
    pageWith("aa.en", 10, 0).insert();
    pageWith("aa.en.01", 11, 0).insert();
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->fileOf("11"), "");
        EXPECT_EQ(assets->nameOf("11"), "");
    }
}

TEST_P(DesignRegistersTest, TheModePicksTheTwin) {
    entry(7, "Plain", "plain.x");
    entry(8, "Design", "design.x");
    pageWith("aa.en.01", 12, 7).insertInLiveOnly();
    pageWith("aa.en.01", 12, 8).insertInDesignOnly();
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->fileOf("12"), "plain.x");
        EXPECT_EQ(assets->fileOf("12", "D"), "design.x");
        EXPECT_EQ(assets->nameOf("12", "D"), "Design");
    }
}

TEST_P(DesignRegistersTest, WhatIsNoPageHasNone) {
    entry(7, "Plain", "plain.x");
    pageWith("aa.fr", 10, 7).insert();
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        for (const std::string& bad : badIdentifiers()) {
            EXPECT_EQ(assets->fileOf(bad), "") << bad.substr(0, 40);
        }
    }
}

TEST_P(DesignRegistersTest, NamesOfPagesConvertByTheDesignTables) {
    pageWith("aa.en.01", 12, 0).insertInDesignOnly();
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        EXPECT_EQ(assets->getNodeId(12), "aa.en.01");
        EXPECT_EQ(assets->getPageId("aa.en.01"), 12);
    }
}

TEST_P(DesignRegistersTest, FailuresTellTheOperation) {
    pageWith("aa.en.01", 12, 7).insert();
    for (auto* assets : registers()) {
        SCOPED_TRACE(assets->table());
        drop(assets->table());
        const std::vector<std::string> errors{errorOf([&] { assets->check("aa", 1, "x", "y"); }),
                                              errorOf([&] { assets->read(1); }),
                                              errorOf([&] { assets->idOf("x", "aa"); }),
                                              errorOf([&] { assets->list(); }),
                                              errorOf([&] { assets->fileOf("12"); }),
                                              errorOf([&] { assets->nameOf("12"); })};
        const auto lines = assets->lines();
        ASSERT_EQ(lines.size(), errors.size());
        for (std::size_t i = 0; i < errors.size(); ++i) {
            EXPECT_TRUE(errors[i].starts_with(chain({lines[i]}))) << errors[i];
        }
    }
}

}  // namespace
}  // namespace torvex::test
