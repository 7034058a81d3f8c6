// Every word that the system shows is there in every language that an installation begins with.

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "administration/LabelTags.h"
#include "support/SourceFolder.h"
#include "support/TestDatabase.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<fs::path> filesBelow(const std::string& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(sourceFolder() + "/" + folder)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    return files;
}

/// Labels, each with a place that uses it.
using Uses = std::map<int, std::string>;

/// Sources name a label by a constant: of their own, "constexpr double untitledLabel", or in the header of
/// all.
void addSources(Uses& uses) {
    static const std::regex ownName(R"(\bconstexpr double \w*[lL]abel = (\d+);)");
    static const std::regex anyName(R"(\bconstexpr double \w+ = (\d+);)");
    for (const fs::path& file : filesBelow("src")) {
        const std::regex& named = file.filename() == "Labels.h" ? anyName : ownName;
        const std::string text = contentOf(file);
        for (std::sregex_iterator found(text.begin(), text.end(), named), end; found != end; ++found) {
            uses.emplace(std::stoi((*found)[1]), file.filename().string());
        }
    }
}

void addMasterTemplates(Uses& uses) {
    for (const fs::path& file : filesBelow("install/files/torvex/templates/gen")) {
        for (const double label : labelsIn(contentOf(file))) {
            uses.emplace(static_cast<int>(label), file.filename().string());
        }
    }
}

/// Those that are counted from a number on, and those of scripts.
void addSeries(Uses& uses) {
    for (int month = 1; month <= 12; ++month) {
        uses.emplace(2800 + month, "the months");
        uses.emplace(2820 + month, "the short months");
    }
    for (const int label : {1190, 2175, 2577, 2578, 2579, 2580}) uses.emplace(label, "the forum's script");
}

class InterfaceWordsTest : public DatabaseTest {
  protected:
    Uses labelsInUse() {
        Uses uses;
        addSources(uses);
        addMasterTemplates(uses);
        addSeries(uses);
        auto rows = connection().query("select advId, advTitle from TORVEX_ADVANCED");
        while (rows.next()) {
            uses.emplace(std::stoi(rows.text("advTitle")), "entry " + rows.text("advId") + " of the menu");
        }
        return uses;
    }
    /// The labels that have a word in a column.
    std::set<int> wordsOf(const std::string& languageId) {
        std::set<int> labels;
        auto rows = connection().query("select lang_label, lang_vocab" + languageId +
                                       " as word from TORVEX_INTERFACE_VOCAB");
        while (rows.next()) {
            if (!rows.text("word").empty()) labels.insert(static_cast<int>(rows.number("lang_label")));
        }
        return labels;
    }
    std::vector<std::string> languages() {
        std::vector<std::string> ids;
        auto rows = connection().query("select id from TORVEX_INTERFACE_LANGUAGES where lang_enabled = 1");
        while (rows.next()) ids.push_back(rows.text("id"));
        return ids;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, InterfaceWordsTest, bothEngines(), engineName);

TEST_P(InterfaceWordsTest, EnglishAndGermanAreSwitchedOnAndEnglishIsTheDefault) {
    auto rows = connection().query(
        "select lang_id, lang_default from TORVEX_INTERFACE_LANGUAGES where lang_enabled = 1");
    std::vector<std::string> found;
    while (rows.next()) found.push_back(rows.text("lang_id") + rows.text("lang_default"));
    EXPECT_THAT(found, UnorderedElementsAre("en1", "de0"));
}

TEST_P(InterfaceWordsTest, NoLanguageLacksALabelThatIsUsed) {
    const Uses uses = labelsInUse();
    for (const std::string& id : languages()) {
        const auto words = wordsOf(id);
        for (const auto& [label, place] : uses) {
            EXPECT_TRUE(words.contains(label)) << label << " of " << place << " in lang_vocab" << id;
        }
    }
}

TEST_P(InterfaceWordsTest, EveryLabelIsThereInAllLanguages) {
    EXPECT_EQ(wordsOf("1"), wordsOf("2"));
}

/// What is there stays: the second of two rows of a label would be passed over without a word.
TEST(InterfaceWords, NoLabelIsGivenTwice) {
    static const std::regex row(R"(\n\s*\((\d+), ')");
    Uses given;
    for (const fs::path& file : filesBelow("install/rows")) {
        if (file.filename().string().find("vocabulary") == std::string::npos &&
            file.filename().string().find("_words_") == std::string::npos)
            continue;
        const std::string text = contentOf(file);
        for (std::sregex_iterator found(text.begin(), text.end(), row), end; found != end; ++found) {
            const auto [first, isNew] = given.emplace(std::stoi((*found)[1]), file.filename().string());
            EXPECT_TRUE(isNew) << first->first << " of " << file.filename() << " is in " << first->second;
        }
    }
    EXPECT_GT(given.size(), 200U);
}

TEST_P(InterfaceWordsTest, TheUsesAreFound) {
    const Uses uses = labelsInUse();
    // A source, a template, the menu, a series: if none of a kind is found, the search is blind.
    for (const int label : {2597, 23, 3010, 2812}) EXPECT_TRUE(uses.contains(label)) << label;
}

TEST_P(InterfaceWordsTest, TheWordForACopyFitsBehindTheLongestTitle) {
    for (const auto* column : {"lang_vocab1", "lang_vocab2"}) {
        auto rows = connection().query("select length(" + std::string(column) +
                                       ") as size from TORVEX_INTERFACE_VOCAB where lang_label = 2581");
        ASSERT_TRUE(rows.next());
        EXPECT_LE(rows.number("size"), 4);
    }
}

}  // namespace
}  // namespace torvex::test
