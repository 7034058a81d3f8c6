#include <gmock/gmock.h>

#include "authoring/OwnedRows.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DraftsTest : public DeskTest {
  protected:
    static constexpr int ben = 8;

    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        login(ben, "ben", "Ben Builder", "session-b");
        role(3);
        editRights(3, "aa", "en", {"edit"});
        page("aa.en.01").id(11).title("Walks").insert();
        page("aa.en.02").id(12).title("Seeds").insert();
    }
    std::vector<std::string> drafts(const std::string& pageIdent = "") {
        return linesOf(desk().getDrafts(pageIdent));
    }
    int count() { return std::stoi(cell("select count(*) as number from TORVEX_DRAFTS")); }
};
INSTANTIATE_TEST_SUITE_P(Engines, DraftsTest, bothEngines(), engineName);

TEST_P(DraftsTest, WhatWasTypedIsKept) {
    EXPECT_EQ(desk().saveDraft("aa.en.01", 1, "<p>Ten</p>", "abc"), "0");
    EXPECT_THAT(drafts(), ElementsAre("11|aa|en|aa.en.01|Walks|1|<p>Ten</p>|abc|2026-06-15T12:00:00"));
}

TEST_P(DraftsTest, ALaterOneTakesItsPlace) {
    desk().saveDraft("11", 1, "Ten", "abc");
    host.clock = FixedClock(DateTime{2026, 6, 15, 12, 0, 2});
    EXPECT_EQ(desk().saveDraft("11", 1, "Eleven", "def"), "0");
    EXPECT_THAT(drafts(), ElementsAre("11|aa|en|aa.en.01|Walks|1|Eleven|def|2026-06-15T12:00:02"));
}

TEST_P(DraftsTest, TheLatestStandsFirst) {
    desk().saveDraft("12", 2, "two", "");
    host.clock = FixedClock(DateTime{2026, 6, 15, 12, 1, 0});
    desk().saveDraft("11", 1, "one", "");
    EXPECT_THAT(drafts(), ElementsAre("11|aa|en|aa.en.01|Walks|1|one||2026-06-15T12:01:00",
                                      "12|aa|en|aa.en.02|Seeds|2|two||2026-06-15T12:00:00"));
    EXPECT_THAT(drafts("aa.en.02"), ElementsAre("12|aa|en|aa.en.02|Seeds|2|two||2026-06-15T12:00:00"));
    EXPECT_THAT(drafts("99"), IsEmpty());
}

TEST_P(DraftsTest, EveryCharacterComesBack) {
    const std::string text = "  <p title='x'>caf\xC3\xA9 \xF0\x9F\x8C\xB3</p>\r\n\t\n ";
    desk().saveDraft("11", 1, text, "");
    EXPECT_EQ(desk().getDrafts("").grid().at(6, 0).toText(), text);
    EXPECT_EQ(desk().saveDraft("11", 1, "", ""), "0");
    EXPECT_EQ(desk().getDrafts("").grid().at(6, 0).toText(), "");
}

TEST_P(DraftsTest, ADraftIsNoVersionOfThePage) {
    desk().saveDraft("11", 1, "Ten", "abc");
    EXPECT_THAT(auditTrail(), IsEmpty());
    EXPECT_EQ(statuses(11), statuses(12));
    EXPECT_EQ(manager().getBody("11", 1, 1), "");
    EXPECT_EQ(cell("select count(*) as number from TORVEX_BODIES_DESIGN"), "0");
}

TEST_P(DraftsTest, NobodyElseSeesOrDropsIt) {
    desk().saveDraft("11", 1, "Ten", "abc");
    actAs(ben, "ben", "Ben Builder");
    EXPECT_THAT(drafts(), IsEmpty());
    EXPECT_THAT(drafts("11"), IsEmpty());
    EXPECT_EQ(desk().dropDraft("11", 1), "0");
    EXPECT_EQ(desk().saveDraft("11", 1, "Ben's", ""), "0");
    EXPECT_EQ(count(), 2);
    actAs(anna, "anna", "Anna Author");
    EXPECT_THAT(drafts(), ElementsAre("11|aa|en|aa.en.01|Walks|1|Ten|abc|2026-06-15T12:00:00"));
}

TEST_P(DraftsTest, DroppedIsGone) {
    desk().saveDraft("11", 1, "Ten", "abc");
    desk().saveDraft("11", 2, "Two", "abc");
    EXPECT_EQ(desk().dropDraft("aa.en.01", 1), "0");
    EXPECT_THAT(drafts(), ElementsAre("11|aa|en|aa.en.01|Walks|2|Two|abc|2026-06-15T12:00:00"));
    EXPECT_EQ(desk().dropDraft("11", 1), "0");
}

TEST_P(DraftsTest, NobodyLoggedInHasNone) {
    actAsNobody();
    EXPECT_EQ(desk().saveDraft("11", 1, "Ten", ""), "-10");
    EXPECT_EQ(desk().dropDraft("11", 1), "-10");
    EXPECT_THAT(drafts(), IsEmpty());
    EXPECT_EQ(count(), 0);
}

TEST_P(DraftsTest, APageThatIsNotThereIsRefused) {
    for (const auto* ident : {"99", "", "aa.en.77", "x"})
        EXPECT_EQ(desk().saveDraft(ident, 1, "Ten", ""), "-1") << ident;
    EXPECT_EQ(count(), 0);
}

TEST_P(DraftsTest, OneDraftIsBounded) {
    EXPECT_EQ(desk().saveDraft("11", 1, std::string(1'000'000, 'x'), ""), "0");
    EXPECT_EQ(desk().saveDraft("11", 1, std::string(1'000'001, 'x'), ""), "-2");
    EXPECT_EQ(cell("select bytes from TORVEX_DRAFTS"), "1000000");
    EXPECT_EQ(desk().saveDraft("11", 1, "x", std::string(500, 'b')), "0");
    EXPECT_EQ(cell("select length(base) as number from TORVEX_DRAFTS"), "64");
}

TEST_P(DraftsTest, ThereAreAHundredAtMost) {
    for (int body = 1; body <= 100; ++body) ASSERT_EQ(desk().saveDraft("11", body, "x", ""), "0");
    EXPECT_EQ(desk().saveDraft("12", 1, "x", ""), "-3");
    EXPECT_EQ(desk().saveDraft("11", 100, "y", ""), "0");
    actAs(ben, "ben", "Ben Builder");
    EXPECT_EQ(desk().saveDraft("12", 1, "x", ""), "0");
}

TEST_P(DraftsTest, AllTogetherAreBounded) {
    desk().saveDraft("11", 1, "x", "");
    connection().execute("update TORVEX_DRAFTS set bytes = 19999990");
    EXPECT_EQ(desk().saveDraft("11", 2, std::string(11, 'x'), ""), "-3");
    EXPECT_EQ(desk().saveDraft("11", 2, std::string(10, 'x'), ""), "0");
    EXPECT_EQ(desk().saveDraft("11", 1, std::string(100, 'x'), ""), "0");
}

TEST_P(DraftsTest, ATitleThatIsNotTheAuthorsToReadIsHidden) {
    desk().saveDraft("11", 1, "Ten", "abc");
    connection().execute("delete from TORVEX_EDIT_RIGHTS");
    EXPECT_THAT(drafts(), ElementsAre("11|aa|en|aa.en.01||1|Ten|abc|2026-06-15T12:00:00"));
}

TEST_P(DraftsTest, ADraftGoesWithItsPageAndItsLogin) {
    desk().saveDraft("11", 1, "Ten", "");
    desk().saveDraft("12", 1, "Ten", "");
    removeRowsOfBranch(connection(), "aa.en.01");
    EXPECT_THAT(drafts(), ElementsAre("12|aa|en|aa.en.02|Seeds|1|Ten||2026-06-15T12:00:00"));
    removeRowsOfLogin(connection(), anna);
    EXPECT_EQ(count(), 0);
}

TEST_P(DraftsTest, WhatCannotBeWrittenIsRefused) {
    drop("TORVEX_DRAFTS");
    EXPECT_EQ(desk().saveDraft("11", 1, "Ten", ""), "-99");
    EXPECT_THAT([&] { desk().getDrafts(""); },
                testing::ThrowsMessage<Error>(testing::HasSubstr("getDrafts !")));
    EXPECT_THAT([&] { desk().dropDraft("11", 1); },
                testing::ThrowsMessage<Error>(testing::HasSubstr("dropDraft !")));
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT([&] { desk().saveDraft("11", 1, "Ten", ""); },
                testing::ThrowsMessage<Error>(testing::HasSubstr("saveDraft !")));
}

}  // namespace
}  // namespace torvex::test
