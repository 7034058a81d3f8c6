#include "records/Vocabulary.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class VocabularyTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        word(9001, " One ");
        word(9002, "Two");
        connection().execute(
            "update TORVEX_INTERFACE_VOCAB set lang_vocab2 = ' Eins ' where lang_label = 9001");
    }
    using Texts = std::map<double, std::string>;
    Texts texts(const std::string& language, const std::vector<double>& labels) {
        return vocabularyTexts(connection(), language, labels);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, VocabularyTest, bothEngines(), engineName);

TEST_P(VocabularyTest, SeveralLabelsComeInTheLanguageOrInEnglish) {
    EXPECT_EQ(texts("DE", {9002, 9001, 9001}), (Texts{{9001, "Eins"}, {9002, "Two"}}));
    EXPECT_EQ(texts("2", {9001, 9002}), (Texts{{9001, "Eins"}, {9002, "Two"}}));
    EXPECT_EQ(texts("en", {9001}), (Texts{{9001, "One"}}));
}

TEST_P(VocabularyTest, ALanguageThatIsNotThereGivesEnglish) {
    EXPECT_EQ(texts("xx", {9001}), (Texts{{9001, "One"}}));
    EXPECT_EQ(texts("", {9001}), (Texts{{9001, "One"}}));
}

TEST_P(VocabularyTest, ALabelThatIsNotThereIsEmpty) {
    EXPECT_EQ(texts("de", {9001, 12345, -1, 0.5}), (Texts{{-1, ""}, {0.5, ""}, {9001, "Eins"}, {12345, ""}}));
    EXPECT_TRUE(texts("de", {}).empty());
}

TEST_P(VocabularyTest, ANumberThatIsNoColumnIsAnError) {
    EXPECT_THROW(texts("-2", {9001}), db::DatabaseError);
    EXPECT_THROW(texts("777", {9001}), db::DatabaseError);
}

}  // namespace
}  // namespace torvex::test
