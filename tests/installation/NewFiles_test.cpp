#include "installation/NewFiles.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "platform/Errors.h"
#include "support/TestDatabase.h"

namespace torvex {
namespace {

TEST(NewFiles, FileThatIsThereIsNotWrittenOver) {
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder.path() + "/a/b.txt";
    writeNewFile(file, "first");
    EXPECT_THROW(writeNewFile(file, "second"), Error);
    std::string text;
    std::ifstream(file) >> text;
    EXPECT_EQ(text, "first");
}

TEST(NewFiles, WordsArePutIn) {
    EXPECT_EQ(withWords("{{a}} and {{b}}{{a}}", {{"a", "1"}, {"b", "{{a}}"}}), "1 and {{a}}1");
    EXPECT_EQ(withWords("plain { text }", {{"a", "1"}}), "plain { text }");
    EXPECT_EQ(withWords("", {}), "");
}

TEST(NewFiles, UnknownWordIsAnError) {
    EXPECT_THROW(withWords("{{c}}", {{"a", "1"}}), Error);
    EXPECT_THROW(withWords("{{a", {{"a", "1"}}), Error);
    EXPECT_THROW(withWords("{{A}}", {{"a", "1"}}), Error);
}

TEST(NewFiles, WordsAreReadFromLines) {
    const Words expected = {{"a", "one: two"}, {"b", ""}, {"c", "three"}};
    EXPECT_EQ(wordsOfLines("a: one: two\nb:\nc: three\n"), expected);
    EXPECT_EQ(wordsOfLines("c: three"), (Words{{"c", "three"}}));
    EXPECT_EQ(wordsOfLines(""), Words{});
}

TEST(NewFiles, LineWithoutAWordIsAnError) {
    EXPECT_THROW(wordsOfLines("a: one\n\nb: two"), Error);
}

}  // namespace
}  // namespace torvex
