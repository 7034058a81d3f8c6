#include "operations/register/Reference.h"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "accounts/AdminEntries.h"
#include "operations/register/Conversion.h"
#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

constexpr std::string_view introduction = R"(# Operations

The public classes and what each can do. `torvex call CLASS.OPERATION name=value` runs one operation and
`torvex call --batch` a list of them (see [call.md](call.md)); names ignore case. This page is generated
from the program's own register: the tests rewrite it when `TORVEX_ACCEPT=1` is set.

Arguments are converted to the type that stands behind their name. A *number* is a plain decimal number;
an *integer* is rounded to a whole one and goes from -32768 to 32767; a *boolean* is `true`, `false` or
a number; a *text format* is -2 (the system's encoding), -1 (Unicode) or 0 (ANSI). An argument with a
value behind "=" may be left out. *Empty* results are null, and so is a grid without rows. A grid may have
columns behind those that are named here; they are always empty.

Codes, answers that stand for something else than themselves, are told below what the operation does. After
a *refusal* the caller hasn't got what she asked for. An operation that *reads* leaves nothing behind; one
that *enters* notes where the caller works, and nothing that others read; one that *writes* may change all else.

The right is what a caller over the network needs (see [rights.md](rights.md)); the command line asks for
none. *Any author* is whoever is logged in, in a session that still holds the login. *Edit right* and
*access* name what a role of the login must give, and for what: a page (each one of a list), a site and
language, or the whole installation where nothing is named. Who *works at* pages or *in* a site and language
has some edit right in their tree, or access to some entry of their site: designs are for nobody else to read.
*Oneself* is the login whose number is given, if it is the caller's own. *sa* has every right. What is *not over the network* is nobody's there, nor is an
argument that says so: it keeps its default. One that is *filled* gets the right's entry, whatever is sent.
)";

/// What the right must cover.
std::string coverage(const Right& right) {
    const std::string other = right.otherPage.empty() ? "" : " and `" + right.otherPage + '`';
    const std::string& one = right.page.empty() ? right.forum : right.page;
    const std::string page = one.empty() ? "" : " for `" + one + '`' + other;
    if (right.site.empty()) return page;
    return page + (page.empty() ? " in `" : ", without one for all of `") + right.site + '`' +
           (right.lang.empty() ? "" : ", `" + right.lang + '`');
}

std::string entryText(const Right& right) {
    const std::string entry = std::to_string(right.advId);
    if (right.media.empty()) return entry;
    return entry + " or " + std::to_string(adminEntry::documents) + ", as `" + right.media + "` says,";
}

/// The trees whose designs are read.
std::string treesText(const Right::Design& design) {
    if (design.isOfAllTrees) return " in all sites and languages";
    if (design.isOfRecord) return " at the page of the record";
    const std::string page = design.page.empty() ? "" : " at `" + design.page + '`';
    if (design.site.empty()) return page;
    return " in `" + design.site + "`, `" + design.lang + '`' + (page.empty() ? "" : " and" + page);
}

std::string designText(const Right::Design& design) {
    return "who works" + treesText(design) +
           (design.mode.empty() ? "" : " where `" + design.mode + "` isn't \"L\"");
}

std::string otherAccess(const Right& right) {
    if (right.orAccess.empty()) return {};
    return ", or " + right.orAccess + " access to entry " + std::to_string(right.advId);
}

std::string kindText(const Right& right) {
    switch (right.kind) {
        case Right::Kind::Nobody:
            return "not over the network";
        case Right::Kind::Visitor:
            return "any visitor";
        case Right::Kind::AnyLogin:
            return "any author";
        case Right::Kind::EditRight:
            return "edit right \"" + right.detail + '"' + coverage(right) + otherAccess(right);
        case Right::Kind::AdvancedRight:
            return right.detail + " access to entry " + entryText(right) + coverage(right);
        case Right::Kind::OneselfOrAdvancedRight:
            return "oneself, or " + right.detail + " access to entry " + std::to_string(right.advId);
        case Right::Kind::OnlySa:
            return "only sa";
    }
    return "";
}

std::string rightText(const Right& right) {
    return kindText(right) + (right.design ? ", " + designText(*right.design) : "");
}

/// Texts in quotation marks, everything else as it is written in a call.
std::string literal(const Value& value) {
    if (value.isText()) return boost::json::serialize(boost::json::value(value.text()));
    return text::lower(value.toText());
}

/// A "|" would end the cell.
std::string cell(std::string_view content) {
    return text::replaceAll(content, "|", "\\|");
}

std::string argumentText(const Operation& operation, const Argument& argument) {
    std::string line = '`' + argument.name + "` " + std::string(typeName(argument.type));
    if (argument.defaultValue) line += " = `" + literal(*argument.defaultValue) + '`';
    if (operation.isFilledByGate(argument)) line += " (filled over the network)";
    return argument.withheld ? line + " (not over the network)" : line;
}

std::string argumentsText(const Operation& operation) {
    std::string lines;
    for (const auto& argument : operation.arguments) {
        lines += (lines.empty() ? "" : "<br>") + argumentText(operation, argument);
    }
    return lines;
}

std::string resultText(const Operation& operation) {
    std::string names;
    for (const auto& column : operation.columns) {
        names += (names.empty() ? ": `" : ", `") + column.name + "` " + std::string(typeName(column.type));
    }
    return operation.result + names;
}

/// What it does, and below it a line for each code.
std::string meaningText(const Operation& operation) {
    std::string lines = operation.summary;
    for (const auto& one : operation.codes) {
        lines += "<br>`" + literal(one.code) + "` " + (one.isRefusal ? "*refusal:* " : "") + one.meaning;
    }
    return lines;
}

std::string operationsTable(const ClassEntry& entry) {
    std::string table =
        "\n| Operation | Arguments | Result | What it does | Effect | Right |\n"
        "| --- | --- | --- | --- | --- | --- |\n";
    for (const auto& operation : entry.operations) {
        table += "| `" + operation.name + "` | " + cell(argumentsText(operation)) + " | " +
                 cell(resultText(operation)) + " | " + cell(meaningText(operation)) + " | " +
                 std::string(effectName(operation.effect)) + " | " + cell(rightText(operation.right)) +
                 (operation.passwordTest ? "; guesses are slowed down" : "") + " |\n";
    }
    return table;
}

std::string propertiesTable(const ClassEntry& entry) {
    if (entry.properties.empty()) return {};
    std::string table =
        "\n| Property | Type | What it holds | Set | Right |\n| --- | --- | --- | --- | --- |\n";
    for (const auto& property : entry.properties) {
        table += "| `" + property.name + "` | " + std::string(typeName(property.type)) + " | " +
                 cell(property.summary) + " | " + (property.set ? "yes" : "no") + " | " +
                 rightText(property.right) + " |\n";
    }
    return table;
}

}  // namespace

std::string referenceMarkdown(const Register& classes) {
    std::string page(introduction);
    page += '\n';
    for (const auto& entry : classes.classes()) {
        page += "- [`" + entry.name + "`](#" + text::lower(entry.name) + "): " + entry.summary + '\n';
    }
    for (const auto& entry : classes.classes()) {
        page += "\n## " + entry.name + "\n\n" + entry.summary + '\n' + operationsTable(entry) +
                propertiesTable(entry);
    }
    return page;
}

}  // namespace torvex::operations
