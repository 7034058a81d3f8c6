// Every row of the register over HTTP, for every kind of caller. In place of the deeds the rows only say that they
// were reached.

#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "accounts/ProgramTokens.h"
#include "operations/register/Conversion.h"
#include "platform/text/Text.h"
#include "support/ApiTest.h"

namespace torvex {
namespace {

namespace json = boost::json;
using operations::Argument;
using operations::ClassEntry;
using operations::Operation;
using operations::Right;
using test::ApiClient;
using test::ApiReply;

class ApiWalk : public test::ApiTest {
  protected:
    void SetUp() override {
        ApiTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        language("de");
        page("aa.en").id(10).insertInDesignOnly();
        page("aa.en.01").id(11).insertInDesignOnly();
        page("aa.en.02").id(12).insertInDesignOnly();
        row("TORVEX_FORUM_DESIGN", {{"forum_id", 4}, {"forum_site", "aa"}, {"forum_lang", "en"}});
        role(3);
        api = std::make_shared<api::Api>(throttle, onlyReachedOnPage11());
        api->ofSessions = {1e9, 1e9};
        api->ofTokens = {1e9, 1e9};
    }

    /// Their objects hold page 11.
    operations::Register onlyReachedOnPage11() {
        std::vector<ClassEntry> classes = onlyReached();
        for (auto& entry : classes) {
            for (auto& property : entry.properties) {
                if (property.name == "pgPageId") property.get = [](const void*) { return Value(11); };
                if (property.name == "pgNodeId") property.get = [](const void*) { return Value("aa.en.01"); };
            }
        }
        return operations::Register(std::move(classes));
    }

    static json::value valueFor(const Operation& operation, const Argument& argument) {
        const auto is = [&](const std::string& name) {
            return !name.empty() && text::equals(argument.name, name);
        };
        const Right& right = operation.right;
        const Right::Design design = right.design.value_or(Right::Design());
        if (is(design.mode)) return "D";
        if (is(right.page) || is(right.otherPage) || is(design.page)) return 11;
        if (is(right.forum)) return 4;
        if (is(right.media)) return "images";
        if (is(right.site) || is(design.site)) return "aa";
        if (is(right.lang) || is(design.lang)) return "en";
        return json::string(argument.type == operations::ArgumentType::Date   ? "2026-06-15"
                            : argument.type == operations::ArgumentType::Text ? ""
                                                                              : "0");
    }

    /// That all rows of the register answer a caller so, and that only what is allowed was reached.
    template <typename Expected>
    void expectAll(ApiClient& caller, Expected expected) {
        for (const auto& entry : api->classes.classes()) {
            for (const auto& operation : entry.operations) {
                if (operation.passwordTest || operation.name == "logout") continue;
                SCOPED_TRACE(entry.name + '.' + operation.name);
                expectOne(caller, entry, operation, expected(entry, operation));
            }
        }
    }
    void expectOne(ApiClient& caller, const ClassEntry& entry, const Operation& operation, int status) {
        json::object body;
        for (const auto& argument : operation.arguments)
            if (!argument.withheld && !operation.isFilledByGate(argument))
                body[argument.name] = valueFor(operation, argument);
        reached = 0;
        const ApiReply reply = caller.post(entry.name + '/' + operation.name, json::serialize(body));
        ASSERT_EQ(reply.status(), status) << reply.raw.body;
        EXPECT_EQ(reached > 0, status == 200);
    }

    static int open(const Operation& operation, int otherwise) {
        if (operation.right.kind == Right::Kind::Nobody) return 404;
        return operation.right.kind == Right::Kind::Visitor ? 200 : otherwise;
    }
    static bool isForAnyLogin(const Right& right) {
        return right.kind == Right::Kind::AnyLogin && !right.design;
    }

    void giveAll(const std::string& site, const std::string& lang, const std::string& scope = "") {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
        editRights(3, site, lang, {"onOff", "move", "publish", "approve", "edit"}, scope);
        connection().execute(
            "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) "
            "select 3, advId, '" +
            site + "', '" + lang + "', 1, 1 from TORVEX_ADVANCED");
    }
    /// Everything everywhere.
    void giveAll() {
        giveAll("aa", "en");
        connection().execute("update TORVEX_ADVANCED_RIGHTS set site = '', lang = ''");
    }
    std::string programToken(const std::string& operations) {
        row("TORVEX_LOGINS", {{"loginId", 9},
                              {"username", "robot"},
                              {"name", "Robot"},
                              {"password", ""},
                              {"kind", "program"}});
        hold(3, 9);
        return makeToken(connection(), {9, "walk", operations, "", ""});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiWalk, test::bothEngines(), test::engineName);

TEST_P(ApiWalk, NobodyReachesWhatIsOpenToVisitorsOnly) {
    start();
    ApiClient nobody = visitor();
    expectAll(nobody, [](const ClassEntry&, const Operation& operation) { return open(operation, 401); });
}

TEST_P(ApiWalk, WithoutTheTokenNothingIsReached) {
    start();
    ApiClient stranger(running, "127.0.0.1");
    expectAll(stranger, [](const ClassEntry&, const Operation& operation) {
        return open(operation, 401) == 200 ? 403 : open(operation, 401);
    });
    giveAll();
    ApiClient author = loggedIn();
    author.token = "forged";
    expectAll(author, [](const ClassEntry&, const Operation& operation) {
        return operation.right.kind == Right::Kind::Nobody ? 404 : 403;
    });
}

TEST_P(ApiWalk, TheAdministratorReachesAllThatIsInReach) {
    start();
    ApiClient administrator = loggedIn("sa");
    expectAll(administrator,
              [](const ClassEntry&, const Operation& operation) { return open(operation, 200); });
}

TEST_P(ApiWalk, AnAuthorWithoutRightsReachesWhatAnyLoginMay) {
    start();
    ApiClient author = loggedIn();
    expectAll(author, [](const ClassEntry&, const Operation& operation) {
        return open(operation, isForAnyLogin(operation.right) ? 200 : 403);
    });
}

TEST_P(ApiWalk, AnAuthorWithAllRightsReachesAllButWhatIsTheAdministrators) {
    giveAll();
    start();
    ApiClient author = loggedIn();
    expectAll(author, [](const ClassEntry&, const Operation& operation) {
        return open(operation, operation.right.kind == Right::Kind::OnlySa ? 403 : 200);
    });
}

TEST_P(ApiWalk, RightsOfAnotherSiteReachNothingHere) {
    giveAll("bb", "en");
    start();
    ApiClient author = loggedIn();
    expectAll(author, [](const ClassEntry&, const Operation& operation) {
        return open(operation, isForAnyLogin(operation.right) ? 200 : 403);
    });
}

TEST_P(ApiWalk, RightsOfAnotherLanguageOpenNothingThatIsOfALanguage) {
    giveAll("aa", "de");
    start();
    ApiClient author = loggedIn();
    for (const auto& entry : api->classes.classes()) {
        for (const auto& operation : entry.operations) {
            if (operation.right.kind != Right::Kind::EditRight) continue;
            SCOPED_TRACE(entry.name + '.' + operation.name);
            expectOne(author, entry, operation, 403);
        }
    }
}

TEST_P(ApiWalk, RightsUnderAnotherBranchReachNoPageHere) {
    giveAll("aa", "en", "aa.en.02");
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
    start();
    ApiClient author = loggedIn();
    for (const auto& entry : api->classes.classes()) {
        for (const auto& operation : entry.operations) {
            if (operation.right.kind != Right::Kind::EditRight || operation.right.page.empty()) continue;
            SCOPED_TRACE(entry.name + '.' + operation.name);
            expectOne(author, entry, operation, 403);
        }
    }
}

TEST_P(ApiWalk, EachRowIsClosedToWhoHasAllRightsButItsOwn) {
    start();
    ApiClient author = loggedIn();
    for (const auto& entry : api->classes.classes()) {
        for (const auto& operation : entry.operations) {
            const Right& right = operation.right;
            const bool isEdit = right.kind == Right::Kind::EditRight;
            if (!isEdit && right.kind != Right::Kind::AdvancedRight &&
                right.kind != Right::Kind::OneselfOrAdvancedRight)
                continue;
            SCOPED_TRACE(entry.name + '.' + operation.name);
            giveAll();
            if (isEdit) {
                connection().execute("update TORVEX_EDIT_RIGHTS set " + right.detail + " = 0");
                if (!right.orAccess.empty()) connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
            } else {
                connection().execute(
                    "update TORVEX_ADVANCED_RIGHTS set " + right.detail + "Access = 0 where advId = ?",
                    {right.advId});
            }
            expectOne(author, entry, operation, 403);
        }
    }
}

TEST_P(ApiWalk, ASessionThatLostItsLoginReachesWhatVisitorsDo) {
    giveAll();
    start();
    ApiClient author = loggedIn();
    connection().execute("update TORVEX_LOGINS set sessionId = 'another' where loginId = 7");
    expectAll(author, [](const ClassEntry&, const Operation& operation) { return open(operation, 401); });
}

TEST_P(ApiWalk, AProgramReachesWhatItsLoginMayAndItsTokenCovers) {
    giveAll();
    start();
    ApiClient program(running, "127.0.0.1");
    program.bearer = programToken("reads");
    expectAll(program, [](const ClassEntry&, const Operation& operation) {
        if (operation.right.kind == Right::Kind::Nobody) return 404;
        const bool may = operation.right.kind != Right::Kind::OnlySa;
        return may && operation.effect == operations::Effect::Reads ? 200 : 403;
    });
}

TEST_P(ApiWalk, AProgramWithoutRightsReachesNoMoreThanAnyLogin) {
    start();
    ApiClient program(running, "127.0.0.1");
    program.bearer = programToken("reads");
    expectAll(program, [](const ClassEntry&, const Operation& operation) {
        if (operation.effect != operations::Effect::Reads) return open(operation, 403) == 404 ? 404 : 403;
        return open(operation, isForAnyLogin(operation.right) ? 200 : 403);
    });
}

}  // namespace
}  // namespace torvex
