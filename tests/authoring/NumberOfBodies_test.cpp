#include "support/SetupTest.h"

namespace torvex::test {
namespace {

class NumberOfBodiesTest : public SetupTest {
  protected:
    int bodiesIn(const std::string& source) {
        ++last_;
        contentTemplate(last_, "aa", "en", "t" + std::to_string(last_) + ".htm", source);
        return manager().getNumberOfBodies(last_);
    }

  private:
    int last_ = 50;
};
INSTANTIATE_TEST_SUITE_P(Engines, NumberOfBodiesTest, bothEngines(), engineName);

TEST_P(NumberOfBodiesTest, CountsThePlacesWithoutAGap) {
    EXPECT_EQ(bodiesIn("<!--!torvex_body_1!--><p><!--!torvex_body_2!--></p><!--!torvex_body_3!-->"), 3);
    EXPECT_EQ(bodiesIn("<!--!torvex_body_1!--><!--!torvex_body_3!-->"), 1);
    EXPECT_EQ(bodiesIn("<!--!torvex_body_2!-->"), 0);
}

TEST_P(NumberOfBodiesTest, TheOrderOfThePlacesDoesNotMatter) {
    EXPECT_EQ(bodiesIn("<!--!torvex_body_3!--><!--!torvex_body_1!--><!--!torvex_body_2!-->"), 3);
}

TEST_P(NumberOfBodiesTest, CaseDoesNotMatter) {
    EXPECT_EQ(bodiesIn("<!--!TORVEX_Body_1!-->"), 1);
}

TEST_P(NumberOfBodiesTest, OnlyTheBeginningOfAMarkerIsLookedAt) {
    EXPECT_EQ(bodiesIn("<!--!torvex_body_1_start!-->"), 1);
    EXPECT_EQ(bodiesIn("<!--!torvex_body_10!-->"), 1);
    EXPECT_EQ(bodiesIn("<!-- torvex_body_1 -->"), 0);
}

TEST_P(NumberOfBodiesTest, ATextWithoutPlacesHasNone) {
    EXPECT_EQ(bodiesIn(""), 0);
    EXPECT_EQ(bodiesIn("<p>Text</p>"), 0);
}

TEST_P(NumberOfBodiesTest, ATemplateThatIsNotThereCannotBeRead) {
    for (const int id : {0, -1, 49, 32767}) EXPECT_EQ(manager().getNumberOfBodies(id), -1);
}

TEST_P(NumberOfBodiesTest, ATemplateWithoutAFileCannotBeRead) {
    contentTemplate(40, "aa", "en", "", "<!--!torvex_body_1!-->");
    row("TORVEX_TEMPLATES", {{"tpl_id", 41}, {"tpl_site", "aa"}, {"tpl_lang", "en"}});
    contentTemplate(42, "aa", "en", "gone.htm", "");
    host.files.bytes.erase("/install/contentTemplates/aa/en/gone.htm");
    for (const int id : {40, 41, 42}) EXPECT_EQ(manager().getNumberOfBodies(id), -1);
}

TEST_P(NumberOfBodiesTest, TheFileLiesInTheFolderOfItsWebsite) {
    contentTemplate(40, "bb", "nl", "page.htm", "<!--!torvex_body_1!-->");
    EXPECT_EQ(manager().getNumberOfBodies(40), 1);
    EXPECT_EQ(manager().getNumberOfBodies(2), 2);
}

TEST_P(NumberOfBodiesTest, NobodyNeedsToBeLoggedIn) {
    EXPECT_EQ(actAsNobody().getNumberOfBodies(2), 2);
}

TEST_P(NumberOfBodiesTest, ABrokenDiskIsAnError) {
    host.files.readFailure = "the disk is broken";
    const std::string error = errorOf([this] { manager().getNumberOfBodies(2); });
    EXPECT_TRUE(error.starts_with(chain({"getNumberOfBodies !"}))) << error;
}

}  // namespace
}  // namespace torvex::test
