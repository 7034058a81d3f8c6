#include "operations/register/Register.h"

#include <gtest/gtest.h>
#include <set>

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

TEST(Register, EveryClassButSetupTakesAConnection) {
    const Register classes = makeRegister();
    for (const auto& entry : classes.classes()) {
        const bool expected = entry.name != "Setup";
        EXPECT_EQ(static_cast<bool>(entry.connect), expected) << entry.name;
        EXPECT_EQ(entry.findOperation("connect") != nullptr, expected) << entry.name;
    }
}

TEST(Register, EveryOperationSaysWhatItDoesAndGives) {
    forEachOperation([](const ClassEntry&, const Operation& operation) {
        EXPECT_TRUE(operation.summary.ends_with('.'));
        EXPECT_FALSE(operation.result.empty());
        EXPECT_NE(operation.result, "value") << "a grid's row says what its columns are";
        EXPECT_TRUE(operation.invoke);
    });
}

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
            const bool settable = property.name == "strVal" || entry.name == "cManager";
            EXPECT_TRUE(settable || !property.set) << entry.name << '.' << property.name;
        }
    }
}

}  // namespace
}  // namespace torvex::operations
