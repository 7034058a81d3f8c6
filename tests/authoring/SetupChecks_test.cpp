// What both operations refuse, and in which order.

#include "authoring/SetupChecks.h"

#include "support/SetupTest.h"

namespace torvex::test {
namespace {

class SetupChecksTest : public SetupTest {
  protected:
    struct Defect {
        std::string code;
        Record make;
    };

    /// Of a record with all these defects the first one shows; without it the second one; and so on.
    void expectInOrder(const std::vector<Defect>& defects) {
        for (std::size_t first = 0; first < defects.size(); ++first) {
            SCOPED_TRACE(defects[first].code);
            const auto allFromHere = [&](cManager& record) {
                for (std::size_t i = first; i < defects.size(); ++i) defects[i].make(record);
            };
            expectRefused(allFromHere, defects[first].code);
        }
    }

    static void makeApplication(cManager& record) {
        record.setPgType("A");
        record.setPgAppId(4);
    }
    static void makeManual(cManager& record) { record.setPgNavigation("M"); }

    const Defect takenTitle{"-21", [](cManager& record) { record.setPgTitle("Eleven"); }};
    const Defect badType{"-22", [](cManager& record) { record.setPgType("X"); }};
    const Defect badBase{"-25", [](cManager& record) { record.setPgBaseTemplateId(9); }};
    const Defect badTemplate{"-23", [](cManager& record) { record.setPgTemplateId(9); }};
    const Defect badStylesheet{"-26", [](cManager& record) { record.setPgStylesheetId(9); }};
    const Defect badFrom{"-32", [](cManager& record) { record.setPgOnlineFrom("20260230"); }};
    const Defect badTo{"-33", [](cManager& record) { record.setPgOnlineTo("20260230"); }};
    const Defect badLoginPage{"-30", [](cManager& record) {
                                  record.setPgGroups("5");
                                  record.setPgLoginPage(999);
                              }};
};
INSTANTIATE_TEST_SUITE_P(Engines, SetupChecksTest, bothEngines(), engineName);

TEST_P(SetupChecksTest, AContentPageIsTestedInThisOrder) {
    const auto noPage = [](void (cManager::*set)(PageId)) {
        return [set](cManager& record) {
            makeManual(record);
            (record.*set)(999);
        };
    };
    expectInOrder({takenTitle,
                   badType,
                   badBase,
                   badTemplate,
                   badStylesheet,
                   {"-27", noPage(&cManager::setPgPrevious)},
                   {"-28", noPage(&cManager::setPgNext)},
                   {"-29", noPage(&cManager::setPgUp)},
                   badFrom,
                   badTo,
                   badLoginPage});
}

TEST_P(SetupChecksTest, AnApplicationIsTestedInThisOrder) {
    const auto asApplication = [](int appId, const Record& make) {
        return [appId, make](cManager& record) {
            record.setPgType("A");
            record.setPgAppId(appId);
            make(record);
        };
    };
    const auto badFolder = [](cManager& record) { record.setPgAppSystemFolder(11); };
    const std::vector<Defect> later{badBase, badTemplate, badStylesheet, badFrom, badTo, badLoginPage};
    const auto allOfThem = [&](cManager& record) {
        for (const auto& defect : later) defect.make(record);
    };
    const auto all = [&](cManager& record) {
        badFolder(record);
        allOfThem(record);
    };
    expectRefused(asApplication(9, all), "-24");
    expectRefused(asApplication(4, all), "-35");
    expectRefused(asApplication(4, allOfThem), "-25");
    for (const auto& defect : later) expectRefused(asApplication(4, defect.make), defect.code);
}

TEST_P(SetupChecksTest, AFolderMustHaveADesignThatExistsToo) {
    const auto folder = [](const Defect& defect) {
        return [&defect](cManager& record) {
            record.setPgType("F");
            defect.make(record);
        };
    };
    for (const auto& defect : {badBase, badTemplate, badStylesheet, badFrom, badTo, badLoginPage}) {
        expectRefused(folder(defect), defect.code);
    }
}

TEST_P(SetupChecksTest, ARecordThatWasNeverFilledHasNoBaseTemplate) {
    nextRequest().setPgType("P");
    EXPECT_EQ(saveNew(), "-25");
    nextRequest().setPgType("P");
    EXPECT_EQ(saveTwelve(), "-25");
}

// ---- Title ----

TEST_P(SetupChecksTest, ATitleIsTakenWhateverItsCaseBeyondAscii) {
    page("aa.en.03").id(15).title("Straße ÉTÉ").insertInDesignOnly();
    expectRefused([](cManager& record) { record.setPgTitle("straße été"); }, "-21");
}

TEST_P(SetupChecksTest, ATitleThatOnlyTheLiveSiblingHasIsTaken) {
    connection().execute("update TORVEX_PAGES_DESIGN set title = 'Renamed' where pageId = 11");
    expectRefused([](cManager& record) { record.setPgTitle(" eleven "); }, "-21");
    expectRefused([](cManager& record) { record.setPgTitle("Renamed"); }, "-21");
}

TEST_P(SetupChecksTest, ATitleIsComparedAsItWouldBeStored) {
    const std::string fifty(50, 'x');
    page("aa.en.03").id(15).title(fifty).insertInDesignOnly();
    expectRefused([&](cManager& record) { record.setPgTitle(fifty + "y"); }, "-21");
}

TEST_P(SetupChecksTest, ATitleUnderAnotherParentIsFree) {
    page("aa.en.01.01").id(15).title("Below").insert();
    page("aa.en.01.02").id(16).title("Beneath").insert();
    filled().setPgTitle("Below");
    EXPECT_EQ(saveNew(), "aa.en.03");
    filled().setPgTitle("Beneath");
    EXPECT_EQ(saveTwelve(), "0");
}

TEST_P(SetupChecksTest, APageKeepsItsOwnTitle) {
    filled().setPgTitle("twelve");
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(column("title", 12), "twelve");
}

TEST_P(SetupChecksTest, AnUntitledSiblingTakesTheEmptyTitle) {
    page("aa.en.03").id(15).title("").insertInDesignOnly();
    expectRefused([](cManager& record) { record.setPgTitle("   "); }, "-21");
}

// ---- Type ----

TEST_P(SetupChecksTest, OnlyTheLettersOfTypesAreTypes) {
    for (const auto* type : {"", " ", " P", "PP", "PA", "X", "É", "'", "FAPS"}) {
        SCOPED_TRACE(type);
        expectRefused([type](cManager& record) { record.setPgType(type); }, "-22");
    }
}

// ---- Application ----

TEST_P(SetupChecksTest, AnApplicationMustExist) {
    for (const int id : {0, -1, 9}) {
        expectRefused(
            [id](cManager& record) {
                record.setPgType("A");
                record.setPgAppId(id);
            },
            "-24");
    }
}

TEST_P(SetupChecksTest, ASystemFolderStandsDirectlyInTheSystemBranchOfTheWebsite) {
    page("aa.en.99.02").id(20).type("P").insert();
    page("aa.en.99.01.01").id(21).type("F").insert();
    page("aa.nl.99.01").id(22).type("F").insert();
    page("bb.en.99.01").id(23).type("F").insert();
    page("aa.en.01.99").id(24).type("F").insert();
    page("aa.en.99.03").id(25).type("P").insertInDesignOnly();
    page("aa.en.99.03").id(25).type("F").insertInLiveOnly();
    for (const double folder : {13., 20., 21., 22., 23., 24., 25., 999., 14.5}) {
        SCOPED_TRACE(folder);
        expectRefused(
            [folder](cManager& record) {
                makeApplication(record);
                record.setPgAppSystemFolder(folder);
            },
            "-35");
    }
}

// ---- Neighbours ----

TEST_P(SetupChecksTest, ANeighbourMustBeInTheDesign) {
    page("aa.en.07").id(20).insertInLiveOnly();
    for (const double neighbour : {20., 999., 12.5, 1e18}) {
        SCOPED_TRACE(neighbour);
        const auto withNeighbour = [neighbour](void (cManager::*set)(PageId)) {
            return [neighbour, set](cManager& record) {
                makeManual(record);
                (record.*set)(neighbour);
            };
        };
        expectRefused(withNeighbour(&cManager::setPgPrevious), "-27");
        expectRefused(withNeighbour(&cManager::setPgNext), "-28");
        expectRefused(withNeighbour(&cManager::setPgUp), "-29");
    }
}

// ---- Days ----

TEST_P(SetupChecksTest, AnOnlineDayIsADayOfTheCalendar) {
    for (const auto* day :
         {"20260230", "20230229", "20261301", "20260100", "2026010", " ", "        ", "2026-1-1", "abcdefgh",
          "00000000", "00000101", "99999999", "2026 101", "é0260101", "'0260101"}) {
        SCOPED_TRACE(day);
        expectRefused([day](cManager& record) { record.setPgOnlineFrom(day); }, "-32");
        expectRefused([day](cManager& record) { record.setPgOnlineTo(day); }, "-33");
    }
}

// ---- Login page ----

TEST_P(SetupChecksTest, ALoginPageMustBeInTheDesign) {
    page("aa.en.07").id(20).insertInLiveOnly();
    for (const double loginPage : {20., 999., 12.5}) {
        SCOPED_TRACE(loginPage);
        expectRefused(
            [loginPage](cManager& record) {
                record.setPgGroups("Staff");
                record.setPgLoginPage(loginPage);
            },
            "-30");
    }
}

}  // namespace
}  // namespace torvex::test
