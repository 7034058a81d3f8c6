#pragma once

#include <string>
#include <vector>

#include "accounts/GuessThrottle.h"
#include "operations/calls/CallRun.h"
#include "operations/register/Binding.h"
#include "operations/register/Conversion.h"
#include "platform/text/Text.h"
#include "support/RightsTest.h"

namespace torvex::operations {

/// An operation with a right and text arguments, for what no row of the register has at the moment.
inline Operation sample(const std::vector<std::string>& arguments, const Right& right) {
    Operation made{"sample", Effect::Reads, {}, "empty", "For tests.", right};
    for (const auto& name : arguments) made.arguments.push_back({name, ArgumentType::Text, "", false});
    return made;
}

/// The base of tests of the gate. "anna" holds role 3, which gives nothing yet. Pages: 10 "aa.en", 11
/// "aa.en.01", 12 "aa.en.02", 20 "bb.en", 21 "bb.en.01". Forums: 4 of "aa", 5 of "bb".
class GateTest : public test::RightsTest {
  protected:
    void SetUp() override {
        RightsTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        language("de");
        page("aa.en").id(10).insertInDesignOnly();
        page("aa.en.01").id(11).insertInDesignOnly();
        page("aa.en.02").id(12).insertInDesignOnly();
        page("bb.en").id(20).insertInDesignOnly();
        page("bb.en.01").id(21).insertInDesignOnly();
        row("TORVEX_FORUM_DESIGN", {{"forum_id", 4}, {"forum_site", "aa"}, {"forum_lang", "en"}});
        row("TORVEX_FORUM_DESIGN", {{"forum_id", 5}, {"forum_site", "bb"}, {"forum_lang", "en"}});
        role(3);
    }

    /// Calls the row from the network, by the one way that there is. In place of the deed it gives `answer`,
    /// so that every row can be asked about; tells whether the deed was done, which must be so if it is
    /// allowed.
    Verdict ask(const Operation& operation, const std::vector<Value>& values, const Value& answer = {}) {
        bool wasDone = false;
        Operation row = operation;
        row.invoke = [&](void*, const std::vector<Value>&) {
            wasDone = true;
            return answer;
        };
        Call call{"Sample", row.name, {}};
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Argument& argument = row.arguments.at(i);
            if (!argument.withheld || argument.defaultValue != values[i])
                call.arguments.emplace_back(argument.name, values[i]);
        }
        const Register sampleAlone({sampleClass({row}, record())});
        const Verdict verdict = CallRun(sampleAlone, host.context(), Network{throttle}).run(call).verdict;
        EXPECT_EQ(wasDone, verdict.isAllowed());
        return verdict;
    }
    /// Reads the property from the network.
    Verdict ask(const Property& property) {
        Property row = property;
        row.get = [](const void*) { return Value(); };
        const Register sampleAlone({sampleClass({}, {row})});
        return CallRun(sampleAlone, host.context(), Network{throttle})
            .run(PropertyRead{"Sample", row.name})
            .verdict;
    }
    Verdict::Kind call(const Operation& operation, const std::vector<Value>& values) {
        return ask(operation, values).kind;
    }
    /// With the arguments that the right names set to page 11, forum 4, site "aa" and language "en", the mode
    /// to "D".
    Verdict::Kind callOnPage11(const Operation& operation) {
        std::vector<Value> values;
        for (const auto& argument : operation.arguments) values.push_back(valueFor(operation, argument));
        return call(operation, values);
    }

    void takeOver(int loginId) {
        connection().execute("update TORVEX_LOGINS set sessionId = 'another-session' where loginId = ?",
                             {loginId});
    }

    GuessThrottle throttle;
    const Register classes = makeRegister();
    /// What the record of each object holds.
    PageId recordId = 11;
    std::string recordNode = "aa.en.01";

  private:
    static ClassEntry sampleClass(std::vector<Operation> operations, std::vector<Property> properties) {
        const auto create = [](HostContext&) -> std::shared_ptr<void> { return std::make_shared<int>(0); };
        return {"Sample", "For tests.", create, {}, std::move(operations), std::move(properties)};
    }
    std::vector<Property> record() const {
        const auto holding = [](const char* name, const Value& value) {
            return Property{
                name, ArgumentType::Text, "For tests.", anyLogin(), [value](const void*) { return value; },
                {}};
        };
        return {holding("pgPageId", recordId), holding("pgNodeId", recordNode)};
    }
    static Value valueFor(const Operation& operation, const Argument& argument) {
        const auto& right = operation.right;
        if (right.design) {
            const auto& design = *right.design;
            if (text::equals(argument.name, design.page)) return "11";
            if (text::equals(argument.name, design.site)) return "aa";
            if (text::equals(argument.name, design.lang)) return "en";
            if (text::equals(argument.name, design.mode)) return "D";
        }
        if (text::equals(argument.name, right.page) || text::equals(argument.name, right.otherPage)) {
            return argument.type == ArgumentType::Text ? Value("11") : Value(11);
        }
        if (text::equals(argument.name, right.forum)) return 4;
        if (text::equals(argument.name, operation.right.site)) return "aa";
        if (text::equals(argument.name, operation.right.media)) return "images";
        if (text::equals(argument.name, operation.right.lang)) return "en";
        return argument.defaultValue ? *argument.defaultValue : convert({}, argument.type);
    }
};

/// `check(operation)` for each operation of the register.
template <typename Check>
void forEachRow(const Register& classes, Check check) {
    for (const auto& entry : classes.classes()) {
        for (const auto& operation : entry.operations) {
            SCOPED_TRACE(entry.name + "." + operation.name);
            check(operation);
        }
    }
}

}  // namespace torvex::operations
