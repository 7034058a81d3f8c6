#include "operations/register/PublicObject.h"

#include <gtest/gtest.h>

#include "operations/register/Binding.h"
#include "platform/Errors.h"
#include "support/TestHost.h"

namespace torvex::operations {
namespace {

/// A class with one operation of every kind.
class Sample {
  public:
    explicit Sample(HostContext&) {}

    void connect(db::ConnectionSource) { ++connected; }

    std::string join(const std::string& first, std::string_view second, int times) {
        std::string joined;
        for (int i = 0; i < times; ++i) joined.append(first).append(second);
        return joined;
    }
    double half(double number) const { return number / 2; }
    int format(TextFormat format) { return static_cast<int>(format); }
    bool invert(bool flag) { return !flag; }
    void clear() { note_.clear(); }
    Value list() { return ResultGridValue(); }
    void fail() try { throw std::runtime_error("the disk is full"); } catch (...) {
        raiseFrom("fail !");
    }

    const std::string& note() const { return note_; }
    void setNote(std::string note) { note_ = std::move(note); }
    int connections() const { return connected; }

  private:
    static Value ResultGridValue() {
        ResultGrid grid(2);
        grid.add({1, "one"});
        return gridOrEmpty(std::move(grid));
    }

    int connected = 0;
    std::string note_ = "new";
};

ClassEntry sampleEntry() {
    return describe<Sample>(
        "Sample", "For tests.",
        {
            reads("join", &Sample::join, {argument("first"), argument("second", "-"), argument("times", 1)},
                  "Joins.", visitor()),
            reads("half", &Sample::half, {argument("number")}, "Halves.", visitor()),
            reads("format", &Sample::format, {argument("format", -2)}, "Tells.", visitor()),
            reads("invert", &Sample::invert, {argument("flag")}, "Inverts.", visitor()),
            reads("clear", &Sample::clear, {}, "Clears.", visitor()),
            reads("list", &Sample::list, {}, "Lists.", visitor()).lists({{"number", Number}, {"word", Text}}),
            reads("fail", &Sample::fail, {}, "Fails.", visitor()),
        },
        {
            property("note", &Sample::note, &Sample::setNote, "A note."),
            property("connections", &Sample::connections, "How often it was connected."),
        });
}

class PublicObjectTest : public ::testing::Test {
  protected:
    std::string refusalOf(const std::string& operation, const GivenValues& given) {
        try {
            sample_.call(operation, given);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 40000);
            return error.what();
        }
        return "accepted";
    }

    test::TestHost host_;
    ClassEntry entry_ = sampleEntry();
    PublicObject sample_{entry_, host_.context()};
};

TEST_F(PublicObjectTest, TypesComeFromTheFunction) {
    const auto* join = entry_.findOperation("join");
    ASSERT_NE(join, nullptr);
    ASSERT_EQ(join->arguments.size(), 3U);
    EXPECT_EQ(join->arguments[0].type, ArgumentType::Text);
    EXPECT_EQ(join->arguments[1].type, ArgumentType::Text);
    EXPECT_EQ(join->arguments[2].type, ArgumentType::Integer);
    EXPECT_EQ(join->result, "text");
    EXPECT_EQ(entry_.findOperation("half")->arguments[0].type, ArgumentType::Number);
    EXPECT_EQ(entry_.findOperation("format")->arguments[0].type, ArgumentType::TextFormat);
    EXPECT_EQ(entry_.findOperation("clear")->result, "empty");
    const auto* list = entry_.findOperation("list");
    EXPECT_EQ(list->result, "grid");
    ASSERT_EQ(list->columns.size(), 2U);
    EXPECT_EQ(list->columns[0].name, "number");
    EXPECT_EQ(list->columns[0].type, ColumnType::Number);
    EXPECT_EQ(list->columns[1].type, ColumnType::Text);
}

TEST_F(PublicObjectTest, ArgumentsGoByNameInAnyOrderAndCase) {
    EXPECT_EQ(sample_.call("JOIN", {{"times", 2}, {"Second", "b"}, {"FIRST", "a"}}), Value("abab"));
}

TEST_F(PublicObjectTest, ArgumentsLeftOutTakeTheirDefaults) {
    EXPECT_EQ(sample_.call("join", {{"first", "a"}}), Value("a-"));
    EXPECT_EQ(sample_.call("format", {}), Value(-2));
}

TEST_F(PublicObjectTest, EveryKindOfResultIsAValue) {
    EXPECT_EQ(sample_.call("half", {{"number", "5"}}), Value(2.5));
    EXPECT_EQ(sample_.call("invert", {{"flag", "false"}}), Value(true));
    EXPECT_TRUE(sample_.call("clear", {}).isEmpty());
    EXPECT_EQ(sample_.call("list", {}).grid().at(1, 0), Value("one"));
}

TEST_F(PublicObjectTest, AMissingArgumentIsAnError) {
    EXPECT_EQ(refusalOf("join", {}), "join: argument \"first\" is missing");
}

TEST_F(PublicObjectTest, AnUnknownArgumentIsAnErrorThatNamesTheKnownOnes) {
    EXPECT_EQ(refusalOf("join", {{"frist", "a"}}),
              "join: there is no argument \"frist\"; the arguments are first, second, times");
    EXPECT_EQ(refusalOf("clear", {{"all", true}}),
              "clear: there is no argument \"all\"; the arguments are none");
}

TEST_F(PublicObjectTest, AnArgumentGivenTwiceIsAnError) {
    EXPECT_EQ(refusalOf("join", {{"first", "a"}, {"First", "b"}}), "join: argument \"First\" is given twice");
}

TEST_F(PublicObjectTest, AValueThatDoesNotConvertIsAnError) {
    EXPECT_EQ(refusalOf("join", {{"first", "a"}, {"times", "often"}}),
              "join: argument \"times\" must be a whole number from -32768 to 32767, not \"often\"");
}

TEST_F(PublicObjectTest, AnUnknownOperationIsAnError) {
    EXPECT_EQ(refusalOf("split", {}), "Sample has no operation \"split\"");
}

TEST_F(PublicObjectTest, WhatAnOperationRaisesPassesThrough) {
    EXPECT_EQ(refusalOf("fail", {}), "Error in function fail !\r\nthe disk is full");
}

TEST_F(PublicObjectTest, APropertyIsReadAndSet) {
    EXPECT_EQ(sample_.get("Note"), Value("new"));
    sample_.set("note", 12);
    EXPECT_EQ(sample_.get("note"), Value("12"));
}

TEST_F(PublicObjectTest, AReadOnlyPropertyIsNotSet) {
    EXPECT_THROW(sample_.set("connections", 7), Error);
    EXPECT_EQ(sample_.get("connections"), Value(0));
}

TEST_F(PublicObjectTest, AnUnknownPropertyIsAnError) {
    EXPECT_THROW(sample_.get("notes"), Error);
    EXPECT_THROW(sample_.set("notes", 1), Error);
}

TEST_F(PublicObjectTest, ConnectIsAnOperationOfEveryClassThatHasIt) {
    ASSERT_TRUE(sample_.takesConnection());
    sample_.connect(db::ConnectionSource());
    EXPECT_TRUE(sample_.call("connect", {{"conn", "sqlite:elsewhere"}}).isEmpty());
    EXPECT_EQ(sample_.get("connections"), Value(2));
}

}  // namespace
}  // namespace torvex::operations
