// The whole register at the gate.

#include <algorithm>
#include <set>

#include "accounts/AdminEntries.h"
#include "operations/calls/GateTest.h"
#include "operations/register/Binding.h"

namespace torvex::operations {
namespace {

using Kind = Verdict::Kind;

const std::vector<std::string> editActions{"onoff", "move", "publish", "approve", "edit"};

/// Who calls, and all that the roles of the caller's login give.
struct Caller {
    std::string name;
    bool ownsLogin = true;
    bool isSa = false;
    std::string action = {};  ///< the one edit right
    std::string site = "aa";
    std::string lang = "en";
    std::string scope = {};
    int advId = 0;  ///< the one advanced right
    std::string flag = {};
};

class GateRegisterTest : public GateTest {
  protected:
    void become(const Caller& caller) {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
        if (!caller.action.empty())
            editRights(3, caller.site, caller.lang, {caller.action.c_str()}, caller.scope);
        if (caller.advId != 0)
            advancedRight(3, caller.advId, caller.site, caller.lang, caller.flag == "view",
                          caller.flag == "edit");
        if (caller.isSa) {
            actAsSa();
        } else if (caller.ownsLogin) {
            actAs(anna, "anna", "Anna Author");
        } else {
            actAsNobody();
        }
    }
    int levelOf(int advId) {
        return std::stoi(cell("select advLevel from TORVEX_ADVANCED where advId = " + std::to_string(advId)));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, GateRegisterTest, test::bothEngines(), test::engineName);

// ---- What is expected, written from the rights themselves ----

bool reaches(const Caller& caller, const Right& right) {
    const bool inPlace = caller.site == "aa" && caller.lang == "en";
    const bool onPage = caller.scope.empty() || caller.scope == "aa.en.01";
    return caller.action == right.detail && inPlace && (right.page.empty() || onPage);
}

bool namesAnEntry(const Right& right) {
    return right.kind == Right::Kind::AdvancedRight || right.kind == Right::Kind::OneselfOrAdvancedRight;
}

bool opens(const Caller& caller, const Right& right, int level) {
    if (caller.advId != right.advId || caller.flag != right.detail) return false;
    const bool atPage = !right.page.empty() || !right.forum.empty();
    const std::string site = level >= 1 && (atPage || !right.site.empty()) ? "aa" : "";
    const std::string lang = level >= 2 && (atPage || !right.lang.empty()) ? "en" : "";
    return (caller.site.empty() || caller.site == site) && (caller.lang.empty() || caller.lang == lang);
}

/// Of page 11, which is in "aa" and "en", or of the trees of both sites.
bool readsDesign(const Caller& caller, const Right::Design& design) {
    const bool edits =
        !design.isOfAllTrees && !caller.action.empty() && caller.site == "aa" && caller.lang == "en";
    const bool isBySite = caller.advId == adminEntry::templates || caller.advId == adminEntry::images;
    return edits || (isBySite && (caller.site.empty() || (!design.isOfAllTrees && caller.site == "aa")));
}

Kind expected(const Caller& caller, const Right& right, int level) {
    if (right.kind == Right::Kind::Nobody) return Kind::OutOfReach;
    if (right.kind == Right::Kind::Visitor) return Kind::Allowed;
    if (!caller.ownsLogin) return Kind::NotLoggedIn;
    if (caller.isSa) return Kind::Allowed;
    if (right.design && !readsDesign(caller, *right.design)) return Kind::NoRight;
    const bool hasOther = !right.orAccess.empty() && caller.advId == right.advId &&
                          caller.flag == right.orAccess && caller.site.empty() && caller.lang.empty();
    const bool has = right.kind == Right::Kind::AnyLogin || hasOther ||
                     (right.kind == Right::Kind::EditRight && reaches(caller, right)) ||
                     (namesAnEntry(right) && opens(caller, right, level));
    return has ? Kind::Allowed : Kind::NoRight;
}

/// Everybody who could be asked about a row of this right, and some who only nearly have it.
std::vector<Caller> callersFor(const Right& right) {
    Caller nobodyAtAll{"nobody"};
    nobodyAtAll.ownsLogin = false;
    Caller administrator{"sa"};
    administrator.isSa = true;
    std::vector<Caller> callers{nobodyAtAll, administrator, Caller{"a login without rights"}};
    for (const auto& action : editActions) {
        for (const auto& [site, lang] : std::vector<std::pair<std::string, std::string>>{
                 {"aa", "en"}, {"bb", "en"}, {"aa", "de"}, {"", ""}}) {
            for (const auto* scope : {"", "aa.en.01", "aa.en.02"}) {
                const bool told = action == right.detail || (site == "aa" && lang == "en");
                if (!told) continue;
                Caller caller{action + " in " + site + "." + lang + " under " + scope};
                caller.action = action;
                caller.site = site;
                caller.lang = lang;
                caller.scope = scope;
                callers.push_back(caller);
            }
        }
    }
    std::vector<int> entries{right.advId,
                             right.advId == adminEntry::sites ? adminEntry::languages : adminEntry::sites};
    if (right.design) entries.insert(entries.end(), {adminEntry::templates, adminEntry::images});
    for (const int advId : entries) {
        if (advId == 0) continue;
        for (const auto* flag : {"view", "edit"}) {
            for (const auto& [site, lang] : std::vector<std::pair<std::string, std::string>>{
                     {"", ""}, {"aa", ""}, {"", "en"}, {"aa", "en"}, {"bb", "en"}, {"aa", "de"}}) {
                Caller caller{std::string(flag) + " " + std::to_string(advId) + " in " + site + "." + lang};
                caller.advId = advId;
                caller.flag = flag;
                caller.site = site;
                caller.lang = lang;
                callers.push_back(caller);
            }
        }
    }
    return callers;
}

std::string signature(const Right::Design& design) {
    return std::string("d") + (design.page.empty() ? "" : "p") + (design.site.empty() ? "" : "s") +
           (design.mode.empty() ? "" : "m") + (design.isOfRecord ? "r" : "") +
           (design.isOfAllTrees ? "a" : "");
}

/// What makes two rights the same to the gate.
std::string signature(const Right& right) {
    return std::to_string(static_cast<int>(right.kind)) + right.detail + std::to_string(right.advId) +
           (right.page.empty() ? "" : "p") + (right.otherPage.empty() ? "" : "o") +
           (right.forum.empty() ? "" : "f") + (right.site.empty() ? "" : "s") +
           (right.lang.empty() ? "" : "l") + (right.orAccess.empty() ? "" : "a") +
           (right.design ? signature(*right.design) : "");
}

TEST_P(GateRegisterTest, EveryKindOfRowIsOpenToThoseWhoHaveItsRightAndToNobodyElse) {
    std::set<std::string> seen;
    forEachRow(classes, [&](const Operation& operation) {
        const Right& right = operation.right;
        if (!seen.insert(signature(right)).second) return;
        const int level = namesAnEntry(right) ? levelOf(right.advId) : 0;
        for (const auto& caller : callersFor(right)) {
            become(caller);
            EXPECT_EQ(callOnPage11(operation), expected(caller, right, level)) << caller.name;
        }
    });
    EXPECT_GE(seen.size(), 5U);
}

/// All rights but the ones asked for.
TEST_P(GateRegisterTest, EveryRowIsClosedToWhoHasAllRightsButItsOwn) {
    forEachRow(classes, [&](const Operation& operation) {
        const Right& right = operation.right;
        if (right.kind != Right::Kind::EditRight && !namesAnEntry(right)) return;
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
        editRights(3, "aa", "en", {"onOff", "move", "publish", "approve", "edit"});
        connection().execute(
            "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) "
            "select 3, advId, '', '', 1, 1 from TORVEX_ADVANCED");
        actAs(anna, "anna", "Anna Author");
        EXPECT_EQ(callOnPage11(operation), Kind::Allowed);
        if (right.kind == Right::Kind::EditRight) {
            connection().execute("update TORVEX_EDIT_RIGHTS set " + right.detail + " = 0");
            if (!right.orAccess.empty()) connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
        } else {
            connection().execute(
                "update TORVEX_ADVANCED_RIGHTS set " + right.detail + "Access = 0 where advId = ?",
                {right.advId});
        }
        EXPECT_EQ(callOnPage11(operation), Kind::NoRight);
    });
}

TEST_P(GateRegisterTest, EveryRowIsOpenToVisitorsOnlyIfItSaysSo) {
    actAsNobody();
    host.session.set("tvx_username", "visitor");
    host.session.set("tvx_loginTrials", 0);
    forEachRow(classes, [&](const Operation& operation) {
        const bool open = operation.right.kind == Right::Kind::Visitor;
        EXPECT_EQ(callOnPage11(operation) == Kind::Allowed, open);
    });
}

TEST_P(GateRegisterTest, EveryRowIsClosedToASessionThatLostItsLogin) {
    editRights(3, "aa", "en", {"onOff", "move", "publish", "approve", "edit"});
    takeOver(anna);
    forEachRow(classes, [&](const Operation& operation) {
        const bool open = operation.right.kind == Right::Kind::Visitor;
        const bool closed = operation.right.kind == Right::Kind::Nobody;
        EXPECT_EQ(callOnPage11(operation), open     ? Kind::Allowed
                                           : closed ? Kind::OutOfReach
                                                    : Kind::NotLoggedIn);
    });
}

// ---- The rows themselves ----

/// What has a mode tells of the design in one of them.
TEST_P(GateRegisterTest, WhoeverIsLoggedInReadsNoDesignByAMode) {
    // Delivery reads what is live, whatever the mode; a number of all pages tells of none of them.
    const std::set<std::string> harmless{"getTemplateFile", "getStylesheetFile", "getBaseTemplateFile",
                                         "buildLinks", "getPageCount"};
    for (const auto& entry : classes.classes()) {
        for (const auto& operation : entry.operations) {
            if (operation.right.kind != Right::Kind::AnyLogin || operation.right.design) continue;
            if (harmless.contains(operation.name) &&
                (entry.name == "cServer" || operation.name == "getPageCount"))
                continue;
            for (const auto& argument : operation.arguments) {
                EXPECT_FALSE(text::startsWith(argument.name, "mode")) << entry.name << '.' << operation.name;
            }
        }
    }
}

TEST_P(GateRegisterTest, EveryRightNamesArgumentsThatTheOperationHas) {
    forEachRow(classes, [](const Operation& operation) {
        const Right& right = operation.right;
        const Right::Design design = right.design.value_or(Right::Design());
        for (const auto& name :
             {right.page, right.otherPage, right.site, right.lang, right.login, right.media, right.forum,
              design.page, design.site, design.lang, design.mode}) {
            const bool there =
                name.empty() ||
                std::any_of(operation.arguments.begin(), operation.arguments.end(),
                            [&name](const Argument& argument) { return argument.name == name; });
            EXPECT_TRUE(there) << name;
        }
    });
}

TEST_P(GateRegisterTest, EveryEditRightIsOneOfTheFiveAndSaysWhere) {
    forEachRow(classes, [](const Operation& operation) {
        const Right& right = operation.right;
        if (right.kind != Right::Kind::EditRight) return;
        EXPECT_NE(std::find(editActions.begin(), editActions.end(), right.detail), editActions.end());
        EXPECT_TRUE(!right.page.empty() || (!right.site.empty() && !right.lang.empty()));
    });
}

/// An argument for a place that the entry doesn't have would look like a limit and be none.
TEST_P(GateRegisterTest, EveryAdvancedRightIsOfferedByItsEntryAndFitsItsLevel) {
    forEachRow(classes, [&](const Operation& operation) {
        const Right& right = operation.right;
        if (right.kind != Right::Kind::AdvancedRight) return;
        ASSERT_TRUE(right.detail == "view" || right.detail == "edit");
        auto rows = connection().query(
            "select advLevel, advView, advEdit from TORVEX_ADVANCED where advId = ?", {right.advId});
        ASSERT_TRUE(rows.next()) << right.advId;
        EXPECT_EQ(rows.number(right.detail == "view" ? "advView" : "advEdit"), 1);
        EXPECT_TRUE(right.site.empty() || rows.number("advLevel") >= 1);
        EXPECT_TRUE(right.lang.empty() || (rows.number("advLevel") >= 2 && !right.site.empty()));
    });
}

TEST_P(GateRegisterTest, APasswordIsOnlyTakenWhereGuessingIsSlowOrNobodyCanOrItIsSet) {
    forEachRow(classes, [](const Operation& operation) {
        for (const auto& argument : operation.arguments) {
            if (!text::contains(argument.name, "password")) continue;
            const bool setsIt =
                operation.right.kind == Right::Kind::AdvancedRight && operation.right.detail == "edit";
            // Its verdict is about a list that everybody can have, and about nobody's login.
            const bool asksTheList = operation.name == "judgePassword";
            EXPECT_TRUE(operation.right.kind == Right::Kind::Nobody || argument.withheld ||
                        operation.passwordTest || setsIt || asksTheList);
        }
    });
}

TEST_P(GateRegisterTest, EveryPasswordTestNamesAnArgumentAndEveryWithheldArgumentHasADefault) {
    forEachRow(classes, [](const Operation& operation) {
        for (const auto& argument : operation.arguments) {
            EXPECT_TRUE(!argument.withheld || argument.defaultValue) << argument.name;
        }
        if (!operation.passwordTest) return;
        EXPECT_TRUE(std::any_of(
            operation.arguments.begin(), operation.arguments.end(),
            [&](const Argument& argument) { return argument.name == operation.passwordTest->name; }));
    });
}

}  // namespace
}  // namespace torvex::operations
