#include "operations/register/Reference.h"

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "operations/register/Binding.h"
#include "support/SourceFolder.h"

namespace torvex::operations {
namespace {

Register small() {
    ClassEntry entry{"Sample", "For tests.", {}, {}, {}, {}};
    entry.operations.push_back({"join",
                                Effect::Writes,
                                {{"first", ArgumentType::Text, std::nullopt},
                                 {"divider", ArgumentType::Text, Value("|")},
                                 {"times", ArgumentType::Integer, Value(-1)},
                                 {"loud", ArgumentType::Boolean, Value(false)}},
                                "text",
                                "Joins.",
                                {Right::Kind::EditRight, "publish", 0, "first"}});
    entry.operations.back().codes = {{"0", "Done.", false}, {"-1", "Held | locked.", true}};
    entry.operations.push_back(
        {"list", Effect::Reads, {}, "grid", "Lists.", {Right::Kind::Visitor}, {{"id", ColumnType::Number}}});
    entry.properties.push_back({"note", ArgumentType::Text, "A note.", {Right::Kind::AnyLogin}, {}, {}});
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
    EXPECT_NE(
        page.find("| `join` | `first` text<br>`divider` text = `\"\\|\"`<br>`times` integer = `-1`<br>"
                  "`loud` boolean = `false` | text | Joins.<br>`\"0\"` Done.<br>`\"-1\"` *refusal:* Held "
                  "\\| locked. | writes | edit right \"publish\" for `first` |\n"),
        std::string::npos)
        << page;
}

TEST(Reference, ShowsTheColumnsOfAGrid) {
    EXPECT_NE(
        referenceMarkdown(small()).find("| `list` |  | grid: `id` number | Lists. | reads | any visitor |\n"),
        std::string::npos);
}

TEST(Reference, TellsWhoseLoginItIs) {
    ClassEntry entry{"Sample", "For tests.", {}, {}, {}, {}};
    entry.operations.push_back(
        {"set", Effect::Writes, {}, "empty", "Sets.", oneselfOrEditAccess("loginId", 61)});
    EXPECT_NE(referenceMarkdown(Register({entry})).find("| oneself, or edit access to entry 61 |\n"),
              std::string::npos);
}

TEST(Reference, ShowsProperties) {
    EXPECT_NE(referenceMarkdown(small()).find("| `note` | text | A note. | no | any author |\n"),
              std::string::npos);
}

TEST(Reference, HasATableOfContents) {
    EXPECT_NE(referenceMarkdown(small()).find("\n- [`Sample`](#sample): For tests.\n"), std::string::npos);
}

// ---- For programs ----

boost::json::object sampleJson(const Register& classes) {
    return boost::json::parse(referenceJson(classes)).at("classes").at(0).as_object();
}

TEST(Reference, IsJsonForPrograms) {
    const auto entry = sampleJson(small());
    EXPECT_EQ(entry.at("name"), "Sample");
    EXPECT_EQ(entry.at("summary"), "For tests.");
    EXPECT_EQ(entry.at("operations").at(0), boost::json::parse(R"({
        "name": "join", "summary": "Joins.", "effect": "writes",
        "right": {"kind": "edit right", "action": "publish", "page": "first"},
        "arguments": [{"name": "first", "type": "text"},
                      {"name": "divider", "type": "text", "default": "|"},
                      {"name": "times", "type": "integer", "default": -1},
                      {"name": "loud", "type": "boolean", "default": false}],
        "result": {"type": "text"},
        "codes": [{"code": "0", "meaning": "Done.", "refusal": false},
                  {"code": "-1", "meaning": "Held | locked.", "refusal": true}]})"));
    EXPECT_EQ(entry.at("operations").at(1), boost::json::parse(R"({
        "name": "list", "summary": "Lists.", "effect": "reads", "right": {"kind": "visitor"},
        "arguments": [], "result": {"type": "grid", "columns": [{"name": "id", "type": "number"}]}})"));
    EXPECT_EQ(entry.at("properties").at(0), boost::json::parse(R"({
        "name": "note", "summary": "A note.", "type": "text", "settable": false,
        "right": {"kind": "any login"}})"));
}

TEST(Reference, SaysInJsonWhatARightCovers) {
    ClassEntry entry{"Sample", "For tests.", {}, {}, {}, {}};
    const auto add = [&entry](const Right& right) {
        entry.operations.push_back({"some", Effect::Reads, {}, "empty", "Does.", right});
    };
    add(viewAccess(212, "site", "lang"));
    add(oneselfOrEditAccess("loginId", 61));
    add(editRightIn("move", "site", "lang"));
    const auto operations = sampleJson(Register({entry})).at("operations").as_array();
    EXPECT_EQ(operations[0].at("right"),
              boost::json::parse(R"({"kind": "access", "access": "view", "entry": 212, "site": "site",
                                     "lang": "lang"})"));
    EXPECT_EQ(operations[1].at("right"),
              boost::json::parse(
                  R"({"kind": "oneself or access", "access": "edit", "entry": 61, "login": "loginId"})"));
    EXPECT_EQ(
        operations[2].at("right"),
        boost::json::parse(R"({"kind": "edit right", "action": "move", "site": "site", "lang": "lang"})"));
}

TEST(Reference, SaysInJsonWhatIsHeldBack) {
    ClassEntry entry{"Sample", "For tests.", {}, {}, {}, {}};
    entry.operations.push_back({"login",
                                Effect::Writes,
                                {{"password", ArgumentType::Text, Value(""), true}},
                                "number",
                                "Logs in.",
                                visitor()});
    entry.operations.back().passwordTest = PasswordTest{"password", 0, 1};
    const auto operation = sampleJson(Register({entry})).at("operations").at(0);
    EXPECT_EQ(operation.at("throttled"), true);
    EXPECT_EQ(operation.at("arguments").at(0).at("withheld"), true);
}

// ---- What is committed ----

void expectCommitted(const std::string& name, const std::string& content) {
    const std::string path = test::sourceFolder() + "/docs/" + name;
    if (std::getenv("TORVEX_ACCEPT")) std::ofstream(path, std::ios::binary) << content;
    EXPECT_TRUE(committed(path) == content) << "docs/" << name << " is not what the register gives: run the "
                                            << "tests with TORVEX_ACCEPT=1 to rewrite it";
}

TEST(Reference, TheCommittedPageIsWhatTheRegisterGives) {
    expectCommitted("operations.md", referenceMarkdown(makeRegister()));
}

TEST(Reference, TheCommittedObjectIsWhatTheRegisterGives) {
    expectCommitted("operations.json", referenceJson(makeRegister()));
}

}  // namespace
}  // namespace torvex::operations
