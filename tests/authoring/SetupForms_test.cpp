// The form into which both operations bring a record.

#include "support/SetupTest.h"

namespace torvex::test {
namespace {

class SetupFormsTest : public SetupTest {};
INSTANTIATE_TEST_SUITE_P(Engines, SetupFormsTest, bothEngines(), engineName);

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

TEST_P(SetupFormsTest, ATitleIsTrimmedAndCutToFiftyCharacters) {
    const std::string fifty = repeated("é", 49);
    filled().setPgTitle("  " + fifty + "ß" + "ü  ");
    EXPECT_EQ(saveNew(), "aa.en.03");
    EXPECT_EQ(manager().pgTitle(), fifty + "ß");
    EXPECT_EQ(column("title", manager().pgPageId()), fifty + "ß");
    filled().setPgTitle(" " + repeated("ñ", 51) + " ");
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(column("title", 12), repeated("ñ", 50));
}

TEST_P(SetupFormsTest, ATitleKeepsQuotesAndMarkup) {
    filled().setPgTitle("It's <b>\"bold\"</b> & 100% \\_");
    EXPECT_EQ(saveNew(), "aa.en.03");
    EXPECT_EQ(column("title", manager().pgPageId()), "It's <b>\"bold\"</b> & 100% \\_");
}

TEST_P(SetupFormsTest, ATypeInASmallLetterIsThatType) {
    for (const auto& [small, stored] : {std::pair{"p", "P"}, {"f", "F"}}) {
        expectSaved([type = small](cManager& record) { record.setPgType(type); },
                    [this, type = stored](PageId pageId) {
                        EXPECT_EQ(column("type", pageId), type);
                        EXPECT_EQ(manager().pgType(), type);
                    });
    }
}

TEST_P(SetupFormsTest, ParametersOfAnApplicationLoseTheirBlanksAndAreCut) {
    expectSaved(
        [](cManager& record) {
            record.setPgType("A");
            record.setPgAppId(4);
            record.setPgAppParamPublic("  a = 1, b=two words ");
            record.setPgAppParamAdmin(" " + repeated("é ", 260));
            record.setPgAppSystemFolder(14);
        },
        [this](PageId pageId) {
            EXPECT_EQ(column("application", pageId), "4");
            EXPECT_EQ(column("app_param_public", pageId), "a=1,b=twowords");
            EXPECT_EQ(column("app_param_admin", pageId), repeated("é", 250));
            EXPECT_EQ(column("app_system_folder", pageId), "14");
            EXPECT_EQ(manager().pgAppParamAdmin(), repeated("é", 250));
        });
}

TEST_P(SetupFormsTest, AnApplicationMayHaveNoSystemFolder) {
    for (const int none : {0, -1, -7}) {
        expectSaved(
            [none](cManager& record) {
                record.setPgType("A");
                record.setPgAppId(4);
                record.setPgAppSystemFolder(none);
            },
            [this, none](PageId pageId) {
                EXPECT_EQ(column("app_system_folder", pageId), std::to_string(none));
            });
    }
}

TEST_P(SetupFormsTest, OtherTypesHaveNoApplication) {
    for (const auto* type : {"P", "F"}) {
        expectSaved(
            [type](cManager& record) {
                record.setPgType(type);
                record.setPgAppId(999);
                record.setPgAppParamPublic("a=1");
                record.setPgAppParamAdmin("b=2");
                record.setPgAppSystemFolder(999);
            },
            [this](PageId pageId) {
                EXPECT_EQ(column("application", pageId), "-1");
                EXPECT_EQ(column("app_param_public", pageId), "");
                EXPECT_EQ(column("app_param_admin", pageId), "");
                EXPECT_EQ(column("app_system_folder", pageId), "-1");
                EXPECT_EQ(manager().pgAppId(), -1);
                EXPECT_EQ(manager().pgAppSystemFolder(), -1);
            });
    }
}

TEST_P(SetupFormsTest, ADesignOfItsOwnIsStored) {
    expectSaved(giveDesign, [this](PageId pageId) {
        EXPECT_EQ(column("baseTemplate", pageId), "1");
        EXPECT_EQ(column("template", pageId), "2");
        EXPECT_EQ(column("stylesheet", pageId), "3");
    });
}

TEST_P(SetupFormsTest, APageBelowTheRootMayInheritItsDesign) {
    expectSaved([](cManager&) {},
                [this](PageId pageId) {
                    EXPECT_EQ(column("baseTemplate", pageId), "0");
                    EXPECT_EQ(column("template", pageId), "0");
                    EXPECT_EQ(column("stylesheet", pageId), "0");
                });
}

TEST_P(SetupFormsTest, AnyNavigationOfAPageButTheAutomaticOneIsManual) {
    for (const auto* navigation : {"", "M", "m", "X", " A"}) {
        expectSaved([navigation](cManager& record) { record.setPgNavigation(navigation); },
                    [this](PageId pageId) {
                        EXPECT_EQ(column("navigation", pageId), "M");
                        EXPECT_EQ(manager().pgNavigation(), "M");
                    });
    }
}

TEST_P(SetupFormsTest, OnlyAContentPageHasANavigation) {
    for (const auto* navigation : {"A", "M", "X"}) {
        expectSaved(
            [navigation](cManager& record) {
                record.setPgType("F");
                record.setPgNavigation(navigation);
                record.setPgPrevious(999);
            },
            [this](PageId pageId) {
                EXPECT_EQ(column("navigation", pageId), "");
                EXPECT_EQ(column("previous", pageId), "-1");
            });
    }
}

TEST_P(SetupFormsTest, NeighboursThatAreComputedAreNotStored) {
    for (const auto* automatic : {"A", "a"}) {
        expectSaved(
            [automatic](cManager& record) {
                record.setPgNavigation(automatic);
                record.setPgPrevious(11);
                record.setPgNext(999);
                record.setPgUp(0);
            },
            [this](PageId pageId) {
                for (const auto* name : {"previous", "next", "up"}) EXPECT_EQ(column(name, pageId), "-1");
                EXPECT_EQ(manager().pgPrevious(), -1);
                EXPECT_EQ(manager().pgNext(), -1);
                EXPECT_EQ(manager().pgUp(), -1);
            });
    }
}

TEST_P(SetupFormsTest, ManualNeighboursAreStored) {
    expectSaved(
        [](cManager& record) {
            record.setPgNavigation("M");
            record.setPgPrevious(11);
            record.setPgNext(12);
            record.setPgUp(10);
        },
        [this](PageId pageId) {
            EXPECT_EQ(column("previous", pageId), "11");
            EXPECT_EQ(column("next", pageId), "12");
            EXPECT_EQ(column("up", pageId), "10");
        });
}

TEST_P(SetupFormsTest, ManualNeighboursThatAreNoNumberOfAPageStayWithoutATest) {
    expectSaved(
        [](cManager& record) {
            record.setPgNavigation("M");
            record.setPgPrevious(0);
            record.setPgNext(-1);
            record.setPgUp(-5);
        },
        [this](PageId pageId) {
            EXPECT_EQ(column("previous", pageId), "0");
            EXPECT_EQ(column("next", pageId), "-1");
            EXPECT_EQ(column("up", pageId), "-5");
        });
}

TEST_P(SetupFormsTest, OnlineDaysAreCutToEightCharacters) {
    expectSaved(
        [](cManager& record) {
            record.setPgOnlineFrom("20240229xyz");
            record.setPgOnlineTo("202612310");
        },
        [this](PageId pageId) {
            EXPECT_EQ(column("onlineFrom", pageId), "20240229");
            EXPECT_EQ(column("onlineTo", pageId), "20261231");
        });
}

TEST_P(SetupFormsTest, BothDaysAreCutBeforeTheFirstIsRefused) {
    filled().setPgOnlineFrom("20260230x");
    manager().setPgOnlineTo("20261231x");
    EXPECT_EQ(saveNew(), "-32");
    EXPECT_EQ(manager().pgOnlineFrom(), "20260230");
    EXPECT_EQ(manager().pgOnlineTo(), "20261231");
}

TEST_P(SetupFormsTest, OnlyAFolderMayBeLeftOutOfTheBreadcrumb) {
    const auto stored = [this](const std::string& type, const std::string& given) {
        std::string result;
        expectSaved(
            [&](cManager& record) {
                record.setPgType(type);
                record.setPgAppId(4);
                record.setPgBreadcrumb(given);
            },
            [&](PageId pageId) { result += column("breadcrumb", pageId); });
        return result;
    };
    EXPECT_EQ(stored("F", "0"), "00");
    EXPECT_EQ(stored("F", "1"), "11");
    EXPECT_EQ(stored("F", "7"), "11");
    EXPECT_EQ(stored("F", "-1"), "11");
    EXPECT_EQ(stored("P", "0"), "11");
    EXPECT_EQ(stored("A", "0"), "11");
}

TEST_P(SetupFormsTest, AnythingButOneLeavesAPageOutOfTheDynamicMenu) {
    for (const auto& [given, stored] : {std::pair{"0", "0"}, {"1", "1"}, {"2", "0"}, {"-1", "0"}}) {
        expectSaved([value = given](cManager& record) { record.setPgDynMenu(value); },
                    [this, value = stored](PageId pageId) {
                        EXPECT_EQ(column("dynMenu", pageId), value);
                        EXPECT_EQ(manager().pgDynMenu(), value);
                    });
    }
}

TEST_P(SetupFormsTest, ALoginPageMakesNoSenseWithoutGroups) {
    for (const auto* groups : {"", "   ", "0", "1", " 0 ", " 1 "}) {
        SCOPED_TRACE(groups);
        expectSaved(
            [groups](cManager& record) {
                record.setPgGroups(groups);
                record.setPgLoginPage(999);
            },
            [this](PageId pageId) {
                EXPECT_EQ(column("loginPage", pageId), "-1");
                EXPECT_EQ(manager().pgLoginPage(), -1);
            });
    }
}

TEST_P(SetupFormsTest, ALoginPageStaysWithGroups) {
    for (const auto* groups : {"5", "Staff", "0,1", "inherited"}) {
        for (const int loginPage : {11, 0, -1, -7}) {
            expectSaved(
                [groups, loginPage](cManager& record) {
                    record.setPgGroups(groups);
                    record.setPgLoginPage(loginPage);
                },
                [this, loginPage](PageId pageId) {
                    EXPECT_EQ(column("loginPage", pageId), std::to_string(loginPage));
                });
        }
    }
}

// ---- Groups ----

TEST_P(SetupFormsTest, GroupsAreNumbersAndNames) {
    for (const auto& [list, stored] : {std::pair{"", ""},
                                       {"5", "5"},
                                       {" 0 ", "0"},
                                       {"5, everybody ,7", "1 5 7"},
                                       {"STAFF", "5"},
                                       {"nobody knows,5", "-1 5"},
                                       {"5,,5", "-1 5 5"},
                                       {"5,", "-1 5"},
                                       {"-3", "-3"},
                                       {"it's, <b>", "-1 -1"},
                                       {"Staff, inherited", "0 5"}}) {
        SCOPED_TRACE(list);
        expectSaved([groups = list](cManager& record) { record.setPgGroups(groups); },
                    [this, groups = stored](PageId pageId) { EXPECT_EQ(groupsOf(pageId), groups); });
    }
}

TEST_P(SetupFormsTest, GroupsReplaceThoseThatThePageHad) {
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 77}});
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 11}, {"groupId", 78}});
    filled().setPgGroups("5");
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(groupsOf(12), "5");
    EXPECT_EQ(groupsOf(11), "78") << "another page's";
    filled();
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(groupsOf(12), "");
}

TEST_P(SetupFormsTest, AGroupThatIsNoNumberOfAGroupFails) {
    expectRefused([](cManager& record) { record.setPgGroups("5,70000"); }, "-99");
}

TEST_P(SetupFormsTest, NumbersOfPagesThatAreNotWholeFail) {
    expectRefused(
        [](cManager& record) {
            record.setPgNavigation("M");
            record.setPgPrevious(-0.5);
        },
        "-99");
    expectRefused(
        [](cManager& record) {
            record.setPgGroups("5");
            record.setPgLoginPage(-1e300);
        },
        "-99");
}

}  // namespace
}  // namespace torvex::test
