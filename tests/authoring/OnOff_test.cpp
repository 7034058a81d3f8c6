#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Today is 2026-06-15.
class OnOffTest : public PublishTest {
  protected:
    std::string online(PageId pageId) { return live(pageId, "online"); }
};
INSTANTIATE_TEST_SUITE_P(Engines, OnOffTest, bothEngines(), engineName);

TEST_P(OnOffTest, SwitchesALivePageOffAndOn) {
    const PageId pageId = page("aa.en.01").insert();
    EXPECT_TRUE(manager().setOnOff(ident(pageId), "off"));
    EXPECT_EQ(online(pageId), "0");
    EXPECT_TRUE(manager().setOnOff("AA.en.01", "on"));
    EXPECT_EQ(online(pageId), "1");
}

TEST_P(OnOffTest, OnCountsInAnyCaseAndEverythingElseIsOff) {
    for (const auto* word : {"on", "On", "ON", "oN"}) {
        const PageId pageId = page("aa.en.01").offline().insert();
        manager().setOnOff(ident(pageId), word);
        EXPECT_EQ(online(pageId), "1") << word;
        connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {pageId});
        connection().execute("delete from TORVEX_PAGES_LIVE where pageId = ?", {pageId});
    }
    const PageId pageId = page("aa.en.01").insert();
    for (const auto* word : {"off", "", "1", "true", " on", "on ", "onn", "'on'"}) {
        connection().execute("update TORVEX_PAGES_LIVE set online = 1 where pageId = ?", {pageId});
        manager().setOnOff(ident(pageId), word);
        EXPECT_EQ(online(pageId), "0") << word;
    }
}

TEST_P(OnOffTest, TouchesNothingButTheOneColumn) {
    const PageId pageId = approved("aa.en.01").insert();
    const PageId below = page("aa.en.01.01").insert();
    const PageId beside = page("aa.en.02").insert();
    Content expected = content();
    manager().setOnOff(ident(pageId), "off");
    EXPECT_EQ(online(pageId), "0");
    EXPECT_EQ(online(below), "1");
    EXPECT_EQ(online(beside), "1");
    connection().execute("update TORVEX_PAGES_LIVE set online = 1 where pageId = ?", {pageId});
    EXPECT_EQ(content(), expected);
}

TEST_P(OnOffTest, CascadingSwitchesTheBranch) {
    const PageId top = page("aa.en.01").insert();
    const PageId child = page("aa.en.01.01").insert();
    const PageId deep = page("aa.en.01.01.07").insert();
    const PageId beside = page("aa.en.02").insert();
    manager().setOnOff(ident(top), "off", true);
    for (const PageId pageId : {top, child, deep}) EXPECT_EQ(online(pageId), "0");
    EXPECT_EQ(online(beside), "1");
    manager().setOnOff("aa.en.01", "on", true);
    for (const PageId pageId : {top, child, deep}) EXPECT_EQ(online(pageId), "1");
}

TEST_P(OnOffTest, FoldersAndSystemPagesAreNeverOnline) {
    const PageId folder = page("aa.en.01").type("F").online(1).insert();
    const PageId system = page("aa.en.99").type("F").online(1).insert();
    const PageId below = page("aa.en.99.01").online(1).insert();
    const PageId ordinary = page("aa.en.02").offline().insert();
    manager().setOnOff("aa.en", "on", true);
    for (const PageId pageId : {folder, system, below}) EXPECT_EQ(online(pageId), "0");
    EXPECT_EQ(online(ordinary), "1");
}

struct Dates {
    Value from;
    Value to;
    const char* whenOn;
};

TEST_P(OnOffTest, OnlyDatesWithoutADayBetweenThemHoldAPageBack) {
    const std::string past = "20260101";
    const std::string today = "20260615";
    const std::string future = "20270101";
    const std::vector<Dates> cases = {
        {past, past, "1"},       {past, today, "1"},
        {past, future, "1"},     {today, past, "1"},
        {today, today, "1"},     {today, future, "1"},
        {future, past, "0"},     {future, today, "1"},
        {future, future, "1"},   {"", past, "1"},
        {"", today, "1"},        {"", future, "1"},
        {Value(), past, "1"},    {Value(), today, "1"},
        {Value(), future, "1"},  {past, "", "1"},
        {today, "", "1"},        {future, "", "0"},
        {past, Value(), "1"},    {today, Value(), "1"},
        {future, Value(), "1"},  {"", "", "1"},
        {"", Value(), "1"},      {Value(), "", "1"},
        {Value(), Value(), "1"}, {"00000000", "99999999", "1"},
    };
    const PageId pageId = page("aa.en.01").insert();
    for (const bool cascading : {false, true}) {
        for (const auto& [from, to, whenOn] : cases) {
            const auto bound = [](const Value& value) {
                return value.isEmpty() ? db::Parameter(nullptr)
                                       : db::Parameter(std::string_view(value.text()));
            };
            connection().execute(
                "update TORVEX_PAGES_LIVE set online = 5, onlineFrom = ?, onlineTo = ? where pageId = ?",
                {bound(from), bound(to), pageId});
            manager().setOnOff(ident(pageId), "on", cascading);
            EXPECT_EQ(online(pageId), whenOn) << from.toText() << " to " << to.toText();
            manager().setOnOff(ident(pageId), "off", cascading);
            EXPECT_EQ(online(pageId), "0");
        }
    }
}

TEST_P(OnOffTest, LeavesALineForEachOfItsKinds) {
    const PageId pageId = page("aa.en.01").insert();
    manager().setOnOff(ident(pageId), "on");
    manager().setOnOff(ident(pageId), "off");
    manager().setOnOff(ident(pageId), "on", true);
    manager().setOnOff(ident(pageId), "off", true);
    EXPECT_THAT(
        auditTrail(),
        ElementsAre(annasLine(pageId, "aa.en.01", "online"), annasLine(pageId, "aa.en.01", "offline"),
                    annasLine(pageId, "aa.en.01", "online+"), annasLine(pageId, "aa.en.01", "offline+")));
}

TEST_P(OnOffTest, WhatIsNoPageSwitchesNothingAndLeavesNoLine) {
    page("aa.en.01").insert();
    const Content before = content();
    for (const std::string& identifier : badIdentifiers()) {
        if (identifier.empty()) continue;
        EXPECT_TRUE(manager().setOnOff(identifier, "off"));
        EXPECT_TRUE(manager().setOnOff(identifier, "off", true)) << identifier;
    }
    EXPECT_EQ(content(), before);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(OnOffTest, APageThatIsNotLiveHasNothingToSwitch) {
    const PageId pageId = page("aa.en.01").insertInDesignOnly();
    const Content before = content();
    EXPECT_TRUE(manager().setOnOff(ident(pageId), "on"));
    EXPECT_EQ(content(), before);
}

TEST_P(OnOffTest, RaisesWhenTheDatabaseIsBroken) {
    page("aa.en.01").insert();
    drop("TORVEX_PAGES_LIVE");
    EXPECT_THAT(errorOf([&] { manager().setOnOff("aa.en.01", "on"); }),
                ::testing::StartsWith(chain({"setOnOff !"})));
}

}  // namespace
}  // namespace torvex::test
