#include "operations/register/Register.h"

#include <gtest/gtest.h>
#include <set>

#include "operations/register/Binding.h"
#include "operations/register/Conversion.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex::operations {
namespace {

template <typename Check>
void forEachOperation(Check check) {
    const Register classes = makeRegister();
    for (const auto& entry : classes.classes()) {
        for (const auto& operation : entry.operations) {
            SCOPED_TRACE(entry.name + "." + operation.name);
            check(entry, operation);
        }
    }
}

std::string knownRight(const Right& right) {
    switch (right.kind) {
        case Right::Kind::Nobody:
        case Right::Kind::Visitor:
        case Right::Kind::AnyLogin:
        case Right::Kind::OnlySa:
            return right.detail.empty() ? "stated" : "a detail that says nothing";
        case Right::Kind::EditRight:
        case Right::Kind::AdvancedRight:
        case Right::Kind::OneselfOrAdvancedRight:
            return right.detail.empty() ? "no detail" : "stated";
    }
    return "unknown";
}

TEST(Register, HoldsTheClassesUnderTheirGivenNames) {
    const Register classes = makeRegister();
    std::set<std::string> names;
    for (const auto& entry : classes.classes()) names.insert(entry.name);
    for (const auto* name : {"cServer", "cManager", "HTMLTemplate", "template", "BaseTemplate", "StyleSheet",
                             "application", "Setup"}) {
        EXPECT_TRUE(names.contains(name)) << name;
    }
    EXPECT_EQ(names.size(), classes.classes().size());
}

TEST(Register, FindsNamesIgnoringCase) {
    const Register classes = makeRegister();
    EXPECT_EQ(classes.find("CSERVER").name, "cServer");
    ASSERT_NE(classes.find("template").findOperation("GETTEMPLATE"), nullptr);
    EXPECT_EQ(classes.find("template").findOperation("GETTEMPLATE")->name, "getTemplate");
    ASSERT_NE(classes.find("cserver").findProperty("PGACCESS"), nullptr);
}

TEST(Register, AnUnknownClassIsAnErrorThatNamesTheKnownOnes) {
    const Register classes = makeRegister();
    try {
        classes.find("cSrver");
        FAIL() << "found";
    } catch (const Error& error) {
        EXPECT_TRUE(text::startsWith(error.what(), "there is no class \"cSrver\"; the classes are "))
            << error.what();
        EXPECT_TRUE(text::contains(error.what(), "HTMLTemplate"));
    }
}

TEST(Register, EveryClassThatAsksTheDatabaseTakesAConnection) {
    const Register classes = makeRegister();
    for (const auto& entry : classes.classes()) {
        // The one opens its own, the other only reads files.
        const bool expected = entry.name != "Setup" && entry.name != "Image";
        EXPECT_EQ(static_cast<bool>(entry.connect), expected) << entry.name;
        EXPECT_EQ(entry.findOperation("connect") != nullptr, expected) << entry.name;
    }
}

TEST(Register, EveryOperationSaysWhatItDoesAndGives) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        EXPECT_TRUE(operation.summary.ends_with('.'));
        EXPECT_FALSE(operation.result.empty());
        EXPECT_NE(operation.result, "value") << "a grid's row says what its columns are";
        EXPECT_EQ(operation.result == "grid", !operation.columns.empty());
        EXPECT_TRUE(operation.invoke);
    });
}

TEST(Register, ColumnsAreNamedAndUniqueWithinAGrid) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        std::set<std::string> names;
        for (const auto& column : operation.columns) {
            EXPECT_FALSE(column.name.empty());
            EXPECT_TRUE(names.insert(text::lower(column.name)).second) << column.name;
        }
    });
}

TEST(Register, CodesAreUniqueAndOfTheResultsTypeAndSayWhatTheyMean) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        std::set<std::string> codes;
        for (const auto& one : operation.codes) {
            EXPECT_TRUE(codes.insert(one.code.toText()).second) << one.code.toText();
            EXPECT_TRUE(one.meaning.ends_with('.')) << one.meaning;
            EXPECT_EQ(one.code.isText(), operation.result == "text") << one.code.toText();
            EXPECT_EQ(one.code.isBoolean(), operation.result == "boolean") << one.code.toText();
        }
    });
}

TEST(Register, WhatAsksForALoginOfOnesOwnTakesItAsANumber) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        if (operation.right.kind != Right::Kind::OneselfOrAdvancedRight) return;
        for (const auto& argument : operation.arguments) {
            if (argument.name == operation.right.login) {
                EXPECT_TRUE(argument.type == ArgumentType::Number || argument.type == ArgumentType::Integer);
            }
        }
    });
}

/// The 16 bits of an integer end at 32,767.
TEST(Register, AListGoesOnWithAnyOfItsRows) {
    int lists = 0;
    forEachOperation([&](const ClassEntry&, const Operation& operation) {
        for (const auto& argument : operation.arguments) {
            if (!argument.defaultValue || (argument.name != "from" && argument.name != "start")) continue;
            if (argument.type == ArgumentType::Text) continue;
            EXPECT_EQ(argument.type, ArgumentType::Number) << operation.name;
            ++lists;
        }
    });
    EXPECT_GE(lists, 14);
}

// ---- Rows belong to one class ----

class Apple {
  public:
    explicit Apple(HostContext&) {}
    int seeds() { return 5; }
    std::string colour() const { return "red"; }
};
class Pear {
  public:
    explicit Pear(HostContext&) {}
    std::string stem() { return "short"; }
};

static_assert(std::is_constructible_v<std::vector<Row<Apple>>, std::initializer_list<Row<Apple>>>);
static_assert(!std::is_convertible_v<Row<Pear>, Row<Apple>>);
static_assert(!std::is_convertible_v<PropertyRow<Pear>, PropertyRow<Apple>>);
static_assert(std::is_same_v<decltype(reads("stem", &Pear::stem, {}, "Tells.", nobody())), Row<Pear>>);

TEST(Register, RowsOfSeveralSubjectsAreJoinedInTheirOrder) {
    const std::vector<Row<Apple>> first{reads("seeds", &Apple::seeds, {}, "Counts.", nobody())};
    const std::vector<Row<Apple>> second{reads("colour", &Apple::colour, {}, "Tells.", nobody())};
    const auto entry = describe<Apple>("Apple", "A fruit.", joined({first, second, {}}));
    ASSERT_EQ(entry.operations.size(), 2U);
    EXPECT_EQ(entry.operations[0].name, "seeds");
    EXPECT_EQ(entry.operations[1].name, "colour");
}

TEST(Register, ARowSaysWhatItsOperationLeavesBehind) {
    EXPECT_EQ(reads("seeds", &Apple::seeds, {}, "Counts.", nobody()).operation.effect, Effect::Reads);
    EXPECT_EQ(enters("seeds", &Apple::seeds, {}, "Counts.", nobody()).operation.effect, Effect::Enters);
    EXPECT_EQ(writes("seeds", &Apple::seeds, {}, "Counts.", nobody()).operation.effect, Effect::Writes);
}

TEST(Register, CodesTakeTheTypeOfTheResult) {
    const auto number = reads("seeds", &Apple::seeds, {}, "Counts.", nobody()).codes({refusal(-1, "None.")});
    EXPECT_EQ(number.operation.codes.at(0).code, Value(-1));
    const auto word = reads("stem", &Pear::stem, {}, "Tells.", nobody()).codes({refusal(-1, "None.")});
    EXPECT_EQ(word.operation.codes.at(0).code, Value("-1"));
}

// ---- Rights and names ----

TEST(Register, EveryOperationStatesItsRight) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        EXPECT_EQ(knownRight(operation.right), "stated");
    });
}

TEST(Register, WhatReachesFilesDatabasesOrPasswordsIsOutOfTheNetworksReach) {
    forEachOperation([](const ClassEntry& entry, const Operation& operation) {
        static const std::set<std::string> dangerous{"connect", "sendBinaryFile", "getUserPassword",
                                                     "isUser"};
        const bool kept =
            entry.name == "HTMLTemplate" || entry.name == "Setup" || dangerous.contains(operation.name);
        if (kept) {
            EXPECT_EQ(operation.right.kind, Right::Kind::Nobody);
        }
    });
}

TEST(Register, NamesAreUniqueWithinAClass) {
    const Register classes = makeRegister();
    for (const auto& entry : classes.classes()) {
        std::set<std::string> names;
        for (const auto& operation : entry.operations) {
            EXPECT_TRUE(names.insert(text::lower(operation.name)).second)
                << entry.name << '.' << operation.name;
        }
        for (const auto& property : entry.properties) {
            EXPECT_TRUE(names.insert(text::lower(property.name)).second)
                << entry.name << '.' << property.name;
        }
    }
}

TEST(Register, ArgumentNamesAreUniqueWithinAnOperation) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        std::set<std::string> names;
        for (const auto& argument : operation.arguments) {
            EXPECT_TRUE(names.insert(text::lower(argument.name)).second) << argument.name;
        }
    });
}

TEST(Register, EveryDefaultIsAlreadyOfItsArgumentsType) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        for (const auto& argument : operation.arguments) {
            if (argument.defaultValue) {
                EXPECT_EQ(convert(*argument.defaultValue, argument.type), *argument.defaultValue)
                    << argument.name;
            }
        }
    });
}

TEST(Register, ArgumentsThatMayBeLeftOutStandBehindThoseThatMustNot) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        bool optional = false;
        for (const auto& argument : operation.arguments) {
            EXPECT_FALSE(optional && !argument.defaultValue) << argument.name;
            optional = argument.defaultValue.has_value();
        }
    });
}

TEST(Register, EveryPropertyCanBeReadAndSaysWhatItHolds) {
    const Register classes = makeRegister();
    for (const auto& entry : classes.classes()) {
        for (const auto& property : entry.properties) {
            EXPECT_TRUE(property.get) << entry.name << '.' << property.name;
            EXPECT_TRUE(property.summary.ends_with('.')) << entry.name << '.' << property.name;
            const bool settable = property.name == "strVal" || entry.name == "cManager" ||
                                  (entry.name == "Image" && property.name == "filename");
            EXPECT_TRUE(settable || !property.set) << entry.name << '.' << property.name;
        }
    }
}

}  // namespace
}  // namespace torvex::operations
