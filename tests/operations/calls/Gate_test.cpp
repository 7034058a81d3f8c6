#include "accounts/AdminEntries.h"
#include "operations/calls/GateTest.h"
#include "operations/register/Binding.h"

namespace torvex::operations {
namespace {

using Kind = Verdict::Kind;

INSTANTIATE_TEST_SUITE_P(Engines, GateTest, test::bothEngines(), test::engineName);

TEST_P(GateTest, TheAdministratorMayBeInSeveralSessions) {
    actAsSa();
    takeOver(sa);
    EXPECT_EQ(callOnPage11(sample({}, onlySa())), Kind::Allowed);
}

TEST_P(GateTest, ALoginThatIsGoneOrEndedCountsForNothing) {
    const Operation any = sample({}, anyLogin());
    EXPECT_EQ(callOnPage11(any), Kind::Allowed);
    connection().execute("update TORVEX_LOGINS set sessionId = '' where loginId = ?", {anna});
    EXPECT_EQ(callOnPage11(any), Kind::NotLoggedIn);
    connection().execute("delete from TORVEX_LOGINS where loginId = ?", {anna});
    EXPECT_EQ(callOnPage11(any), Kind::NotLoggedIn);
}

TEST_P(GateTest, OnlyTheAdministratorPassesWhereOnlySaMay) {
    const Operation operation = sample({}, onlySa());
    EXPECT_EQ(callOnPage11(operation), Kind::NoRight);
    EXPECT_EQ((actAsSa(), callOnPage11(operation)), Kind::Allowed);
    EXPECT_EQ((actAsNobody(), callOnPage11(operation)), Kind::NotLoggedIn);
}

TEST_P(GateTest, ARightOfAKindThatIsNotKnownIsRefused) {
    Right unknown = anyLogin();
    unknown.kind = static_cast<Right::Kind>(99);
    actAsSa();
    EXPECT_EQ(callOnPage11(sample({}, unknown)), Kind::OutOfReach);
}

// ---- Pages ----

TEST_P(GateTest, EachPageOfAListMustPass) {
    editRights(3, "aa", "en", {"publish"}, "aa.en.01,aa.en.02");
    const Operation publish = sample({"pageList"}, editRight("publish", "pageList"));
    for (const auto* list : {"11", "11,12", "11-12", " 11 - 12 ,", "aa.en.01,12", "1 1", "AA.EN.01"}) {
        EXPECT_EQ(call(publish, {list}), Kind::Allowed) << list;
    }
    for (const auto* list : {"10", "11,10", "10-11", "11,12,21", "bb.en.01-11", "aa.en,11"}) {
        EXPECT_EQ(call(publish, {list}), Kind::NoRight) << list;
    }
}

TEST_P(GateTest, APageThatDoesNotExistIsRefused) {
    editRights(3, "aa", "en", {"edit"});
    const Operation edit = sample({"pageIdent"}, editRight("edit", "pageIdent"));
    EXPECT_EQ(call(edit, {"11"}), Kind::Allowed);
    for (const auto* ident : {"99", "0", "aa.en.77", "aa", "11.5", "11,99", "' or 1=1", "aa.en.01' --"}) {
        EXPECT_EQ(call(edit, {ident}), Kind::NoRight) << ident;
    }
    EXPECT_EQ(call(edit, {"aa.en" + std::string(100'000, '1')}), Kind::NoRight);
    for (const std::string& bad : test::badIdentifiers()) {
        EXPECT_EQ(call(edit, {bad}), Kind::NoRight) << bad.substr(0, 40);
    }
}

TEST_P(GateTest, BothPagesMustPassWhereTwoAreNamed) {
    editRights(3, "aa", "en", {"move"}, "aa.en.01");
    const Operation move = sample({"from", "to"}, editRight("move", "from", "to"));
    EXPECT_EQ(call(move, {"11", "aa.en.01"}), Kind::Allowed);
    for (const auto* other : {"12", "10", "21", "99", "", ","}) {
        EXPECT_EQ(call(move, {"11", other}), Kind::NoRight) << other;
        EXPECT_EQ(call(move, {other, "11"}), Kind::NoRight) << other;
    }
}

TEST_P(GateTest, AnEntryAtAPageIsThatOfThePagesSiteAndLanguage) {
    advancedRight(3, adminEntry::statistics, "aa", "en", true, false);
    const Operation look = sample({"page"}, viewAccessAt(adminEntry::statistics, "page"));
    for (const auto* ident : {"11", " AA.EN.02 ", "10"})
        EXPECT_EQ(call(look, {ident}), Kind::Allowed) << ident;
    for (const auto* ident : {"21", "99", "", "aa.de"})
        EXPECT_EQ(call(look, {ident}), Kind::NoRight) << ident;
}

TEST_P(GateTest, NoPageAtAllIsRefused) {
    editRights(3, "aa", "en", {"edit"});
    const Operation edit = sample({"pageIdent"}, editRight("edit", "pageIdent"));
    for (const auto* ident : {"", " ", ",", "-", " , - "}) EXPECT_EQ(call(edit, {ident}), Kind::NoRight);
}

TEST_P(GateTest, APageGivenAsANumberIsThatPage) {
    editRights(3, "aa", "en", {"edit"}, "aa.en.01");
    Operation edit = sample({"pageId"}, editRight("edit", "pageId"));
    edit.arguments[0].type = ArgumentType::Number;
    EXPECT_EQ(call(edit, {11}), Kind::Allowed);
    EXPECT_EQ(call(edit, {12}), Kind::NoRight);
    EXPECT_EQ(call(edit, {1e300}), Kind::NoRight);
}

TEST_P(GateTest, ThePagesOwnSiteAndLanguageCountNotTheOnesThatTheCallerNames) {
    editRights(3, "aa", "en", {"edit"});
    const Operation edit =
        sample({"site", "lang", "pageIdent"}, editRight("edit", "pageIdent", "site", "lang"));
    EXPECT_EQ(call(edit, {"bb", "de", "11"}), Kind::Allowed);
    EXPECT_EQ(call(edit, {"aa", "en", "21"}), Kind::NoRight);
}

TEST_P(GateTest, WhereAPageMayBeGivenNoPageIsTheWholeTree) {
    const Operation edit =
        sample({"site", "lang", "pageIdent"}, editRight("edit", "pageIdent", "site", "lang"));
    editRights(3, "aa", "en", {"edit"}, "aa.en.01");
    EXPECT_EQ(call(edit, {"aa", "en", "11"}), Kind::Allowed);
    for (const auto* none : {"", " ", ",", "-"}) EXPECT_EQ(call(edit, {"aa", "en", none}), Kind::NoRight);
    editRights(3, "aa", "en", {"edit"});
    EXPECT_EQ(call(edit, {"aa", "en", ""}), Kind::Allowed);
    EXPECT_EQ(call(edit, {"bb", "en", ""}), Kind::NoRight);
    EXPECT_EQ(call(edit, {"", "", ""}), Kind::NoRight);
}

TEST_P(GateTest, SomewhereInASiteAndLanguageIsUnderAnyScope) {
    editRights(3, "aa", "en", {"move"}, "aa.en.02");
    const Operation move = sample({"site", "lang"}, editRightIn("move", "site", "lang"));
    EXPECT_EQ(call(move, {"aa", "en"}), Kind::Allowed);
    for (const auto& [site, lang] : std::vector<std::pair<const char*, const char*>>{
             {"bb", "en"}, {"aa", "de"}, {"", ""}, {"aa", ""}, {"", "en"}, {"zz", "en"}, {"%", "%"}}) {
        EXPECT_EQ(call(move, {site, lang}), Kind::NoRight) << site << '.' << lang;
    }
}

// ---- Entries of the menu ----

TEST_P(GateTest, AnEntryOfASiteIsOpenWhereTheArgumentsSay) {
    advancedRight(3, adminEntry::templates, "aa", "en", true, false);
    const Operation view = sample({"site", "lang"}, viewAccess(adminEntry::templates, "site", "lang"));
    EXPECT_EQ(call(view, {"aa", "en"}), Kind::Allowed);
    EXPECT_EQ(call(view, {"aa", "de"}), Kind::NoRight);
    EXPECT_EQ(call(view, {"", ""}), Kind::NoRight);
    EXPECT_EQ(call(sample({}, viewAccess(adminEntry::templates)), {}), Kind::NoRight);
    EXPECT_EQ(call(sample({"site", "lang"}, editAccess(adminEntry::templates, "site", "lang")), {"aa", "en"}),
              Kind::NoRight);
}

TEST_P(GateTest, AnEntryThatIsNotInTheMenuIsClosed) {
    advancedRight(3, 9999, "", "", true, true);
    EXPECT_EQ(call(sample({}, viewAccess(9999)), {}), Kind::NoRight);
}

TEST_P(GateTest, ImagesAndDocumentsHaveEntriesOfTheirOwn) {
    const Operation add = sample({"kind", "site"}, mediaAccess("edit", "kind", "site"));
    advancedRight(3, adminEntry::documents, "aa", "", false, true);
    EXPECT_EQ(call(add, {"documents", "aa"}), Kind::Allowed);
    EXPECT_EQ(call(add, {"documents", "bb"}), Kind::NoRight);
    EXPECT_EQ(call(add, {"images", "aa"}), Kind::NoRight);
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
    advancedRight(3, adminEntry::images, "aa", "", false, true);
    EXPECT_EQ(call(add, {"images", "aa"}), Kind::Allowed);
    EXPECT_EQ(call(add, {"documents", "aa"}), Kind::NoRight);
}

TEST_P(GateTest, WhatIsDoneToTheCallersOwnLoginIsHersToDo) {
    Operation update = sample({"loginId"}, oneselfOrEditAccess("loginId", adminEntry::settings));
    update.arguments[0].type = ArgumentType::Integer;
    EXPECT_EQ(call(update, {anna}), Kind::Allowed);
    for (const int other : {sa, 0, -anna, 9999}) EXPECT_EQ(call(update, {other}), Kind::NoRight) << other;
    advancedRight(3, adminEntry::settings, "", "", true, false);
    EXPECT_EQ(call(update, {sa}), Kind::NoRight);
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
    advancedRight(3, adminEntry::settings, "", "", false, true);
    EXPECT_EQ(call(update, {sa}), Kind::Allowed);
}

TEST_P(GateTest, NobodyIsNobodysOwnLogin) {
    actAsNobody();
    Operation update = sample({"loginId"}, oneselfOrEditAccess("loginId", adminEntry::settings));
    update.arguments[0].type = ArgumentType::Integer;
    for (const int login : {0, anna}) EXPECT_EQ(call(update, {login}), Kind::NotLoggedIn) << login;
}

// ---- Properties ----

TEST_P(GateTest, PropertiesAreForLogins) {
    for (const bool loggedIn : {true, false}) {
        if (!loggedIn) actAsNobody();
        for (const auto& entry : classes.classes()) {
            for (const auto& property : entry.properties) {
                const bool isSecret = property.right.kind == Right::Kind::Nobody;
                const Kind wanted =
                    isSecret ? Kind::OutOfReach : (loggedIn ? Kind::Allowed : Kind::NotLoggedIn);
                EXPECT_EQ(ask(property).kind, wanted) << entry.name << '.' << property.name;
            }
        }
    }
}

// ---- Passwords ----

TEST_P(GateTest, WhatGivesAPasswordIsOutOfReachEvenForTheAdministrator) {
    actAsSa();
    const auto* password = classes.find("cManager").findProperty("password");
    ASSERT_NE(password, nullptr);
    EXPECT_EQ(ask(*password).kind, Kind::OutOfReach);
    for (const auto* name : {"getUserPassword", "isUser", "getUserId", "connect"}) {
        const auto* operation = classes.find("cServer").findOperation(name);
        ASSERT_NE(operation, nullptr) << name;
        EXPECT_EQ(callOnPage11(*operation), Kind::OutOfReach) << name;
    }
    for (const auto& entry : classes.classes()) {
        for (const auto& property : entry.properties) {
            if (!text::contains(property.name, "password")) continue;
            EXPECT_EQ(ask(property).kind, Kind::OutOfReach) << entry.name << '.' << property.name;
        }
        for (const auto& operation : entry.operations) {
            // One that tries the caller's own gives none, nor does one that judges what it is given.
            const bool givesNone = operation.passwordTest || operation.name == "judgePassword";
            if (!text::contains(operation.name, "password") || givesNone) continue;
            EXPECT_EQ(callOnPage11(operation), Kind::OutOfReach) << entry.name << '.' << operation.name;
        }
    }
}

TEST_P(GateTest, AWithheldArgumentKeepsItsDefault) {
    const auto* getPage = classes.find("cServer").findOperation("getPage");
    ASSERT_NE(getPage, nullptr);
    EXPECT_EQ(call(*getPage, {"11", "", ""}), Kind::Allowed);
    EXPECT_EQ(call(*getPage, {"11", "eva", ""}), Kind::Withheld);
    EXPECT_EQ(call(*getPage, {"11", "", "guess"}), Kind::Withheld);
    EXPECT_EQ(ask(*getPage, {"11", "eva", ""}).message,
              "The argument username can't be given over the network.");
}

// ---- Messages ----

TEST_P(GateTest, ARefusalSaysWhy) {
    EXPECT_EQ(ask(sample({}, nobody()), {}).message, "sample can't be used over the network.");
    EXPECT_EQ(ask(sample({}, onlySa()), {}).message, "You do not have the right to do this.");
    const Verdict allowed = ask(sample({}, visitor()), {});
    EXPECT_TRUE(allowed.isAllowed());
    EXPECT_EQ(allowed.message, "");
    actAsNobody();
    EXPECT_EQ(ask(sample({}, anyLogin()), {}).message, "You are not logged in.");
}

// ---- Forums ----

TEST_P(GateTest, AForumIsWhereItIsAndNotWhereTheCallerSays) {
    advancedRight(3, adminEntry::forum, "aa", "en", false, true);
    const Operation publish =
        sample({"forumId", "site", "lang"}, accessAtForum("edit", "forumId", "site", "lang"));
    EXPECT_EQ(call(publish, {"4", "aa", "en"}), Kind::Allowed);
    EXPECT_EQ(call(publish, {"4", "bb", "en"}), Kind::Allowed);
    EXPECT_EQ(call(publish, {"5", "aa", "en"}), Kind::NoRight);
}

TEST_P(GateTest, ForAllForumsItIsWhereTheCallerSays) {
    advancedRight(3, adminEntry::forum, "aa", "en", false, true);
    const Operation publish =
        sample({"forumId", "site", "lang"}, accessAtForum("edit", "forumId", "site", "lang"));
    EXPECT_EQ(call(publish, {"0", "aa", "en"}), Kind::Allowed);
    EXPECT_EQ(call(publish, {"0", "bb", "en"}), Kind::NoRight);
    EXPECT_EQ(call(publish, {"0", "", ""}), Kind::NoRight);
}

TEST_P(GateTest, AForumThatIsNotThereIsOpenToThoseOfTheWholeInstallation) {
    const Operation view = sample({"forumId"}, accessAtForum("view", "forumId"));
    advancedRight(3, adminEntry::forum, "aa", "en", true, false);
    for (const auto* id : {"4711", "0", "-4"}) EXPECT_EQ(call(view, {id}), Kind::NoRight) << id;
    advancedRight(3, adminEntry::forum, "", "", true, false);
    EXPECT_EQ(call(view, {"4711"}), Kind::Allowed);
}

// ---- Failures ----

TEST_P(GateTest, ABrokenDatabaseOpensNothing) {
    drop("TORVEX_ADVANCED");
    const Operation view = sample({}, viewAccess(adminEntry::sites));
    EXPECT_THROW(ask(view, {}), Error);
    drop("TORVEX_LOGINS");
    EXPECT_EQ(callOnPage11(view), Kind::NotLoggedIn);
}

TEST_P(GateTest, ARightThatNamesAnArgumentThatIsNotThereIsAnError) {
    EXPECT_THROW(ask(sample({"page"}, editRight("edit", "pageIdent")), {"11"}), Error);
}

}  // namespace
}  // namespace torvex::operations
