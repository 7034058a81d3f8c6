#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class Audit : public ManagerTest {
  protected:
    void add(const std::string& pageIdent, const std::string& advIdent, int loginId = 0) {
        manager().addAuditTrail(pageIdent, advIdent, "save", "something", loginId);
    }
    std::string lineCell(const std::string& column) {
        return cell("select " + column + " from TORVEX_AUDIT_TRAIL");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, Audit, bothEngines(), engineName);

// ---- Who ----

TEST_P(Audit, ALineStandsInTheNameOfTheObjectsLogin) {
    add("", "");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||0|save|something"));
}

TEST_P(Audit, TheObjectsNameIsTheSessionsAndNotTheRows) {
    connection().execute("update TORVEX_LOGINS set name = 'Changed'");
    add("", "");
    EXPECT_EQ(lineCell("loginName"), "Anna Author");
}

TEST_P(Audit, AnotherLoginsNameComesFromItsRow) {
    login(9, "bob", "Bob Builder");
    add("", "", 9);
    EXPECT_THAT(auditTrail(), ElementsAre("9|Bob Builder|0||0|save|something"));
}

TEST_P(Audit, ALoginThatIsGoneHasTheWordForIt) {
    word(2560, "gone");
    add("", "", 99);
    EXPECT_THAT(auditTrail(), ElementsAre("99|[gone]|0||0|save|something"));
}

TEST_P(Audit, NobodysLineHasNoLoginAndNoPage) {
    manager().addAuditTrail("", "", "login", "something", -99);
    EXPECT_THAT(auditTrail(), ElementsAre("||0||0|login|something"));
}

TEST_P(Audit, WithoutALoginTheLineIsNobodys) {
    actAsNobody();
    add("", "");
    EXPECT_THAT(auditTrail(), ElementsAre("||0||0|save|something"));
}

TEST_P(Audit, OtherNegativeLoginsWriteNothing) {
    for (const int loginId : {-1, -98, -100, -32768}) add("", "", loginId);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

// ---- The page ----

TEST_P(Audit, APageIsNotedWithBothNamesAndItsDesignTitle) {
    page("aa.en.01").id(12).title("Live").insertInLiveOnly();
    page("aa.en.01").id(12).title("Design").insertInDesignOnly();
    for (const auto* ident : {"12", " 12 ", "aa.en.01", " AA.EN.01 "}) {
        connection().execute("delete from TORVEX_AUDIT_TRAIL");
        add(ident, "");
        EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|12|aa.en.01|0|save|something")) << ident;
        EXPECT_EQ(lineCell("pageTitle"), "Design");
    }
}

TEST_P(Audit, AnUntitledPageHasTheWordForIt) {
    word(2597, "untitled");
    page("aa.en.01").id(12).title("").insert();
    add("12", "");
    EXPECT_EQ(lineCell("pageTitle"), "[untitled]");
}

TEST_P(Audit, ThePageGoesBeforeTheEntry) {
    page("aa.en.01").id(12).insert();
    add("12", "11");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|12|aa.en.01|0|save|something"));
}

TEST_P(Audit, WhatIsNoPageWritesNothing) {
    page("aa.en.01").id(12).insertInLiveOnly();
    page("aa").id(13).insert();
    for (const auto* ident : {"12", "13", "14", "-12", "0", "1.5", "aa", "aa.en.02", "nonsense", "  "}) {
        add(ident, "11");
    }
    for (const std::string& ident : badIdentifiers()) {
        if (!ident.empty()) add(ident, "11");
    }
    EXPECT_THAT(auditTrail(), IsEmpty());
}

// ---- The entry ----

TEST_P(Audit, AnEntryIsFoundByItsReference) {
    add("", "g1.01");
    add("", "G1.02");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||11|save|something", "7|Anna Author|0||12|save|something"));
}

TEST_P(Audit, ANumberIsTheEntryAsItStands) {
    for (const auto* ident : {"11", "0", "999", "-5", " 12 "}) add("", ident);
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||11|save|something", "7|Anna Author|0||0|save|something",
                            "7|Anna Author|0||999|save|something", "7|Anna Author|0||-5|save|something",
                            "7|Anna Author|0||12|save|something"));
}

TEST_P(Audit, WhatIsNoEntryWritesNothing) {
    for (const auto* ident : {"nonsense", " ", "g1.01 or 1=1", "g1'", "1.5", "99999999999999999999"}) {
        add("", ident);
    }
    for (const std::string& ident : badIdentifiers()) {
        if (!ident.empty() && ident != "-5" && ident != "0") add("", ident);
    }
    EXPECT_THAT(auditTrail(), IsEmpty());
}

// ---- The texts and the time ----

TEST_P(Audit, TextsAreTrimmedAndCutByCharacters) {
    std::string action;
    std::string description;
    for (int i = 0; i < 60; ++i) action += "é";
    for (int i = 0; i < 3000; ++i) description += "ß";
    manager().addAuditTrail("", "", "  " + action + "  ", "   " + description, 0);
    EXPECT_EQ(lineCell("action"), action.substr(0, 100));
    EXPECT_EQ(lineCell("description"), description.substr(0, 4000));
    EXPECT_EQ(lineCell("length(action)"), "50");
    EXPECT_EQ(lineCell("length(description)"), "2000");
}

TEST_P(Audit, TextsThatFitStayWhole) {
    const std::string action(50, 'a');
    const std::string description(2000, 'd');
    manager().addAuditTrail("", "", action, description);
    EXPECT_EQ(lineCell("action"), action);
    EXPECT_EQ(lineCell("description"), description);
}

TEST_P(Audit, QuotesAndMarkupAreKept) {
    manager().addAuditTrail("", "", "new", "Login \"O'Neil <b>\" has been removed");
    EXPECT_EQ(lineCell("description"), "Login \"O'Neil <b>\" has been removed");
}

TEST_P(Audit, BytesThatAreNoTextDontFail) {
    manager().addAuditTrail("", "", "save", std::string("a\0b\xff", 4));
    EXPECT_EQ(auditTrail().size(), 1U);
}

TEST_P(Audit, DayAndTimeHaveLeadingZeros) {
    host.clock = FixedClock({2026, 1, 2, 3, 4, 5});
    add("", "");
    EXPECT_EQ(lineCell("Date"), "20260102");
    EXPECT_EQ(lineCell("time"), "03:04:05");
}

// ---- Transactions and failures ----

TEST_P(Audit, ALineSurvivesTheRollbackOfTheTransactionAroundIt) {
    page("aa.en.01").id(12).title("Kept").insert();
    {
        const auto own = db::openOwn(host.context());
        const db::Transaction publishing(*own);
        own->execute("delete from TORVEX_PAGES_LIVE where pageId = 12");
        add("12", "");
    }
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|12|aa.en.01|0|save|something"));
    EXPECT_EQ(lineCell("pageTitle"), "Kept");
    EXPECT_EQ(cell("select count(*) from TORVEX_PAGES_LIVE"), "1");
}

TEST_P(Audit, ALineSurvivesTheRollbackOfItsOwnConnectionsTransaction) {
    {
        const auto own = db::openOwn(host.context());
        const db::Transaction publishing(*own);
        own->execute("update TORVEX_LOGINS set name = 'x'");
        cManager helper(host.context());
        helper.connect(*own);
        helper.addAuditTrail("", "g1.01", "publish", "", 0);
    }
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||11|publish|"));
    EXPECT_EQ(cell("select name from TORVEX_LOGINS where loginId = 7"), "Anna Author");
}

TEST_P(Audit, ALineAloneNeedsNoConnectionOfTheObject) {
    cManager unconnected(host.context());
    unconnected.addAuditTrail("", "", "save", "");
    EXPECT_EQ(auditTrail().size(), 1U);
}

TEST_P(Audit, AConnectionThatCantBeOpenedIsReported) {
    host.application.set("torvex_odbc", "nonsense");
    EXPECT_THAT(errorOf([&] { add("", ""); }), StartsWith(chain({"addAuditTrail !"})));
}

TEST_P(Audit, ALookupThatFailsIsReportedAndWritesNothing) {
    drop("TORVEX_ADVANCED");
    EXPECT_THAT(errorOf([&] { add("", "g1"); }), StartsWith(chain({"addAuditTrail !"})));
    EXPECT_THAT(auditTrail(), IsEmpty());
}

}  // namespace
}  // namespace torvex::test
