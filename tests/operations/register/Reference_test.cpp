#include "operations/register/Reference.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "support/SourceFolder.h"

namespace torvex::operations {
namespace {

Register small() {
    ClassEntry entry{"Sample", "For tests.", {}, {}, {}, {}};
    entry.operations.push_back({"join",
                                {{"first", ArgumentType::Text, std::nullopt},
                                 {"divider", ArgumentType::Text, Value("|")},
                                 {"times", ArgumentType::Integer, Value(-1)},
                                 {"loud", ArgumentType::Boolean, Value(false)}},
                                "text",
                                "Joins.",
                                {Right::Kind::EditRight, "publish", 0, "first", "", ""},
                                {}});
    entry.properties.push_back(
        {"note", ArgumentType::Text, "A note.", {Right::Kind::AnyLogin, "", 0, "", "", ""}, {}, {}});
    return Register({entry});
}

std::string committed(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

TEST(Reference, ShowsArgumentsWithTypesAndDefaults) {
    const std::string page = referenceMarkdown(small());
    EXPECT_NE(page.find("| `join` | `first` text<br>`divider` text = `\"\\|\"`<br>`times` integer = `-1`<br>"
                        "`loud` boolean = `false` | text | Joins. | edit right \"publish\" for `first` |\n"),
              std::string::npos)
        << page;
}

TEST(Reference, ShowsProperties) {
    EXPECT_NE(referenceMarkdown(small()).find("| `note` | text | A note. | no | any author |\n"),
              std::string::npos);
}

TEST(Reference, HasATableOfContents) {
    EXPECT_NE(referenceMarkdown(small()).find("\n- [`Sample`](#sample): For tests.\n"), std::string::npos);
}

TEST(Reference, TheCommittedPageIsWhatTheRegisterGives) {
    const std::string path = test::sourceFolder() + "/docs/operations.md";
    const std::string page = referenceMarkdown(makeRegister());
    if (std::getenv("TORVEX_ACCEPT")) std::ofstream(path, std::ios::binary) << page;
    EXPECT_TRUE(committed(path) == page) << "docs/operations.md is not what the register gives: run the "
                                            "tests with TORVEX_ACCEPT=1 to rewrite it";
}

}  // namespace
}  // namespace torvex::operations
