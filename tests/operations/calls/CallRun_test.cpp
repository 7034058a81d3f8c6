#include "operations/calls/CallRun.h"

#include "accounts/AdminEntries.h"
#include "accounts/GuessThrottle.h"
#include "operations/register/Binding.h"
#include "platform/Errors.h"
#include "support/RightsTest.h"

namespace torvex::operations {
namespace {

using Kind = Verdict::Kind;

/// Keeps what it was given.
class Box {
  public:
    explicit Box(HostContext&) {}

    std::string put(const std::string& content) { return content_ = content; }
    std::string content() { return content_; }
    int count(int number) { return number; }
    void fail() { throw Error("the lid is stuck"); }
    int audited(int advId) { return advId; }
    int keptIn(const std::string&, const std::string&, int advId) { return advId; }
    bool open(const std::string&, const std::string& word) { return word == "sesame"; }

    std::string note() const { return content_; }
    void setNote(const std::string& note) { content_ = note; }
    std::string label() const { return "box"; }

  private:
    std::string content_;
};

ClassEntry boxEntry() {
    return describe<Box>(
        "Box", "For tests.",
        {
            reads("content", &Box::content, {}, "Tells.", visitor()),
            reads("count", &Box::count, {argument("number")}, "Counts.", anyLogin()),
            reads("secretCount", &Box::count, {argument("number")}, "Counts.", nobody()),
            reads("entered", &Box::count, {argument("number")}, "Counts.", viewAccess(adminEntry::sites)),
            reads("open", &Box::open, {argument("name"), argument("word")}, "Opens.", visitor())
                .testsPassword({"name", true, false}),
            writes("put", &Box::put, {argument("content")}, "Keeps.", visitor()),
            writes("fail", &Box::fail, {}, "Fails.", visitor()),
            writes("audited", &Box::audited, {argument("advId", 0)}, "Tells.", editAccess(adminEntry::sites)),
            writes("keptIn", &Box::keptIn, {argument("kind"), argument("site"), argument("advId", 0)},
                   "Tells.", mediaAccess("edit", "kind", "site")),
            writes("changed", &Box::audited, {argument("advId")}, "Tells.", editAccess(adminEntry::sites)),
            reads("named", &Box::audited, {argument("advId")}, "Tells.", editAccess(adminEntry::sites)),
            writes("free", &Box::audited, {argument("advId", 0)}, "Tells.", anyLogin()),
        },
        {
            property("note", &Box::note, &Box::setNote, "A note."),
            property("label", &Box::label, "A label."),
            secret(property("hidden", &Box::label, "A label.")),
        });
}

class CallRunTest : public test::RightsTest {
  protected:
    CallRun fromNetwork() { return {classes, host.context(), Network{throttle}}; }
    CallRun fromCommandLine() { return {classes, host.context(), CommandLine{}}; }
    Kind kindOf(const Call& call) { return fromNetwork().run(call).verdict.kind; }
    /// The argument that an error is about; "" when there is none.
    static std::string argumentAtFault(CallRun calls, const Call& call) {
        try {
            calls.run(call);
        } catch (const ArgumentError& error) {
            return error.argument();
        }
        return {};
    }

    GuessThrottle throttle;
    const Register classes{{boxEntry()}};
};
INSTANTIATE_TEST_SUITE_P(Engines, CallRunTest, test::bothEngines(), test::engineName);

// ---- Both origins ----

TEST_P(CallRunTest, ACallGivesTheResult) {
    for (auto calls : {fromNetwork(), fromCommandLine()}) {
        const Outcome outcome = calls.run(Call{"box", "PUT", {{"Content", "a pear"}}});
        EXPECT_TRUE(outcome.verdict.isAllowed());
        EXPECT_EQ(outcome.result, Value("a pear"));
    }
}

TEST_P(CallRunTest, TheCallsOfARequestShareTheirObjects) {
    for (auto calls : {fromNetwork(), fromCommandLine()}) {
        calls.run(Call{"Box", "put", {{"content", "a pear"}}});
        calls.run(Call{"Box#2", "put", {{"content", "a plum"}}});
        EXPECT_EQ(calls.run(Call{"BOX", "content", {}}).result, Value("a pear"));
        EXPECT_EQ(calls.run(Call{"box#2", "content", {}}).result, Value("a plum"));
    }
}

TEST_P(CallRunTest, WhatAnOperationRaisesPassesThrough) {
    EXPECT_THROW(fromNetwork().run(Call{"Box", "fail", {}}), Error);
    EXPECT_THROW(fromCommandLine().run(Call{"Box", "fail", {}}), Error);
}

TEST_P(CallRunTest, AnArgumentThatDoesNotFitIsNamed) {
    const auto now = [this] { return fromNetwork(); };
    const auto here = [this] { return fromCommandLine(); };
    EXPECT_EQ(argumentAtFault(now(), {"Box", "count", {{"number", "a pear"}}}), "number");
    EXPECT_EQ(argumentAtFault(now(), {"Box", "count", {}}), "number");
    EXPECT_EQ(argumentAtFault(now(), {"Box", "count", {{"number", 1}, {"colour", "red"}}}), "colour");
    EXPECT_EQ(argumentAtFault(here(), {"Box", "count", {{"number", 1}, {"NUMBER", 2}}}), "NUMBER");
}

// ---- The command line ----

TEST_P(CallRunTest, TheCommandLineMayDoEverything) {
    actAsNobody();
    EXPECT_EQ(fromCommandLine().run(Call{"Box", "secretCount", {{"number", 7}}}).result, Value(7));
    EXPECT_EQ(fromCommandLine().run(PropertyRead{"Box", "hidden"}).result, Value("box"));
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(fromCommandLine().run(Call{"Box", "open", {{"name", "anna"}, {"word", "x"}}}).result,
                  Value(false));
    }
}

TEST_P(CallRunTest, TheCommandLineIsToldWhatIsNotThere) {
    EXPECT_THROW(fromCommandLine().run(Call{"Bag", "put", {}}), Error);
    EXPECT_THROW(fromCommandLine().run(Call{"Box", "burn", {}}), Error);
    EXPECT_THROW(fromCommandLine().run(PropertyRead{"Box", "weight"}), Error);
}

// ---- The network: the order of tests ----

TEST_P(CallRunTest, WhatIsNotThereLooksLikeWhatIsOutOfReach) {
    const auto there = fromNetwork().run(Call{"Box", "secretCount", {}}).verdict;
    const auto missing = fromNetwork().run(Call{"Box", "publicCount", {}}).verdict;
    EXPECT_EQ(there.kind, Kind::OutOfReach);
    EXPECT_EQ(missing.kind, Kind::OutOfReach);
    EXPECT_EQ(there.message, "secretCount can't be used over the network.");
    EXPECT_EQ(missing.message, "publicCount can't be used over the network.");
    EXPECT_EQ(kindOf({"Bag", "put", {}}), Kind::OutOfReach);
    EXPECT_EQ(fromNetwork().run(PropertyRead{"Box", "hidden"}).verdict.kind, Kind::OutOfReach);
    EXPECT_EQ(fromNetwork().run(PropertyRead{"Box", "weight"}).verdict.kind, Kind::OutOfReach);
}

TEST_P(CallRunTest, AMissingLoginIsToldBeforeTheArgumentsAreLookedAt) {
    actAsNobody();
    EXPECT_EQ(kindOf({"Box", "count", {{"number", "a pear"}}}), Kind::NotLoggedIn);
    EXPECT_EQ(kindOf({"Box", "entered", {}}), Kind::NotLoggedIn);
}

TEST_P(CallRunTest, ArgumentsAreLookedAtBeforeTheRight) {
    EXPECT_EQ(argumentAtFault(fromNetwork(), {"Box", "entered", {{"number", "a pear"}}}), "number");
    EXPECT_EQ(kindOf({"Box", "entered", {{"number", 1}}}), Kind::NoRight);
}

// ---- The network: passwords ----

TEST_P(CallRunTest, WrongPasswordsAreCountedWithoutTheCallersHelp) {
    actAsNobody();
    host.request.setServerVariable("remote_addr", "10.0.0.1");
    const Call guess{"Box", "open", {{"name", "anna"}, {"word", "x"}}};
    int tries = 0;
    while (tries < 100 && kindOf(guess) == Kind::Allowed) ++tries;
    EXPECT_GT(tries, 0);
    EXPECT_LT(tries, 100);
    const Call right{"Box", "open", {{"name", "anna"}, {"word", "sesame"}}};
    const Outcome outcome = fromNetwork().run(right);
    EXPECT_EQ(outcome.verdict.kind, Kind::Wait);
    EXPECT_TRUE(outcome.result.isEmpty());
}

// ---- The network: what the gate fills ----

TEST_P(CallRunTest, TheEntryOfAChangeIsTheRowsWhateverIsSent) {
    role(3);
    advancedRight(3, adminEntry::sites, "", "", false, true);
    for (const GivenValues& sent : {GivenValues{}, GivenValues{{"advId", 0}}, GivenValues{{"ADVID", 99}},
                                    GivenValues{{"advId", "a pear"}}}) {
        EXPECT_EQ(fromNetwork().run(Call{"Box", "audited", sent}).result, Value(adminEntry::sites));
        EXPECT_EQ(fromNetwork().run(Call{"Box", "changed", sent}).result, Value(adminEntry::sites));
    }
    EXPECT_EQ(fromCommandLine().run(Call{"Box", "audited", {}}).result, Value(0));
    EXPECT_EQ(fromCommandLine().run(Call{"Box", "audited", {{"advId", 99}}}).result, Value(99));
}

TEST_P(CallRunTest, TheEntryOfAChangeToMediaIsThatOfTheirKind) {
    role(3);
    for (const int entry : {adminEntry::images, adminEntry::documents})
        advancedRight(3, entry, "", "", false, true);
    const auto entryOf = [this](const char* kind) {
        const Call call{"Box", "keptIn", {{"kind", kind}, {"site", "aa"}, {"advId", 99}}};
        return fromNetwork().run(call).result;
    };
    EXPECT_EQ(entryOf("images"), Value(adminEntry::images));
    EXPECT_EQ(entryOf("documents"), Value(adminEntry::documents));
}

TEST_P(CallRunTest, AnEntryThatIsAskedAboutIsTheCallersToName) {
    role(3);
    advancedRight(3, adminEntry::sites, "", "", false, true);
    EXPECT_EQ(fromNetwork().run(Call{"Box", "named", {{"advId", 99}}}).result, Value(99));
    EXPECT_EQ(fromNetwork().run(Call{"Box", "free", {{"advId", 99}}}).result, Value(99));
}

// ---- Properties ----

TEST_P(CallRunTest, APropertyIsReadAndSetByWhoIsLoggedIn) {
    auto calls = fromNetwork();
    EXPECT_TRUE(calls.run(PropertyWrite{"Box", "note", "new"}).verdict.isAllowed());
    EXPECT_EQ(calls.run(PropertyRead{"Box", "note"}).result, Value("new"));
}

TEST_P(CallRunTest, APropertyIsNeitherReadNorSetByWhoIsNot) {
    auto calls = fromNetwork();
    calls.run(PropertyWrite{"Box", "note", "old"});
    actAsNobody();
    EXPECT_EQ(calls.run(PropertyRead{"Box", "note"}).verdict.kind, Kind::NotLoggedIn);
    EXPECT_EQ(calls.run(PropertyWrite{"Box", "note", "new"}).verdict.kind, Kind::NotLoggedIn);
    EXPECT_EQ(calls.run(Call{"Box", "content", {}}).result, Value("old"));
}

TEST_P(CallRunTest, AReadOnlyPropertyIsNotSet) {
    EXPECT_THROW(fromNetwork().run(PropertyWrite{"Box", "label", "bag"}), ArgumentError);
}

}  // namespace
}  // namespace torvex::operations
