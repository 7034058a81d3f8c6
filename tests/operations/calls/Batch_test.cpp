#include "operations/calls/Batch.h"

#include <sstream>
#include <thread>

#include "operations/calls/BatchFixture.h"
#include "operations/register/Conversion.h"
#include "platform/text/Text.h"

namespace torvex::operations {
namespace {

class BatchTest : public BatchFixture {
  protected:
    void addLogin(const std::string& username, const std::string& sessionId) {
        connection().execute(
            "insert into TORVEX_LOGINS (username, password, name, sessionId, currentSite, siteLock, "
            "ipAddress) "
            "values (?, '123', 'Full Name', ?, 'ab.en', 'ab.en', '10.0.0.9')",
            {std::string_view(username), std::string_view(sessionId)});
    }
    std::string loginText(const std::string& username, std::string_view column) {
        auto rows = connection().query("select * from TORVEX_LOGINS where username = ?",
                                       {std::string_view(username)});
        return rows.next() ? rows.text(column) : "no row";
    }
    void addSite(db::Connection& where, const std::string& title) {
        where.execute("insert into TORVEX_SITES_LANGUAGES (site, lang, title) values ('ab', 'en', ?)",
                      {std::string_view(title)});
    }
};

INSTANTIATE_TEST_SUITE_P(Engines, BatchTest, test::bothEngines(), test::engineName);

constexpr auto titleOfSite = R"({"on":"cServer","do":"getWebsiteTitle","with":{"site":"AB","lang":"en"}})";

// ---- Calls ----

TEST_P(BatchTest, ResultsComeInTheOrderOfTheCalls) {
    EXPECT_EQ(resultsOf(R"({"calls":[
        {"on":"HTMLTemplate","set":"strVal","to":"<!--!a!-->, <!--!A!-->"},
        {"on":"HTMLTemplate","do":"tagExists","with":{"tag":"a"}},
        {"on":"HTMLTemplate","do":"replaceTag","with":{"tag":"a","text":"x","count":1}},
        {"on":"HTMLTemplate","get":"strVal"},
        {"on":"cServer","get":"pgPageId"}]})"),
              json(R"([null,true,null,"x, <!--!A!-->",-1])"));
}

TEST_P(BatchTest, ClassesOperationsAndArgumentsIgnoreCase) {
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"htmltemplate","do":"JSENCODE","with":{"STR":"it's"}}]})"),
              json(R"(["it\\'s"])"));
}

TEST_P(BatchTest, ObjectsKeepTheirStateWithinALine) {
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"HTMLTemplate","set":"strVal","to":"one"},
        {"on":"HTMLTemplate#2","set":"strVal","to":"two"},{"on":"HTMLTemplate","get":"strVal"},
        {"on":"htmltemplate#2","get":"strVal"}]})"),
              json(R"([null,null,"one","two"])"));
}

TEST_P(BatchTest, ObjectsLiveForOneLine) {
    ask(R"({"calls":[{"on":"HTMLTemplate","set":"strVal","to":"one"}]})");
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"HTMLTemplate","get":"strVal"}]})"), json(R"([""])"));
}

TEST_P(BatchTest, ATextKeepsItsNul) {
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"HTMLTemplate","do":"jsEncode","with":{"str":"a\u0000'b"}}]})"),
              json(R"(["a\u0000\\'b"])"));
}

TEST_P(BatchTest, ObjectsWorkOnTheInstallationsDatabase) {
    addSite(connection(), "The garden");
    EXPECT_EQ(resultsOf(R"({"calls":[)" + std::string(titleOfSite) + "]}"), json(R"(["The garden"])"));
}

TEST_P(BatchTest, ConnectWithATextReplacesTheConnection) {
    const auto other = test::makeTestDatabase(GetParam());
    addSite(connection(), "here");
    addSite(*database().open(other->connectionText()), "there");
    const std::string connect =
        R"({"on":"cServer","do":"connect","with":{"conn":")" + other->connectionText() + "\"}},";
    EXPECT_EQ(resultsOf(R"({"calls":[)" + connect + titleOfSite + "]}"), json(R"([null,"there"])"));
    EXPECT_EQ(resultsOf(R"({"calls":[)" + std::string(titleOfSite) + "]}"), json(R"(["here"])"));
}

TEST_P(BatchTest, AGridShowsColumnsAndRows) {
    connection().execute(
        "insert into TORVEX_METADATA (metaData_site, metaData_name) values ('ab', 'author')");
    const auto grid = resultsOf(R"({"calls":[{"on":"cServer","do":"getMetaTags","with":{"site":"ab"}}]})")
                          .at(0)
                          .as_object();
    EXPECT_EQ(grid.at("columns").as_int64(), 3);
    ASSERT_EQ(grid.at("rows").as_array().size(), 1U);
    EXPECT_EQ(grid.at("rows").at(0).at(1), json("\"author\""));
    EXPECT_TRUE(grid.at("rows").at(0).at(2).is_null());
}

TEST_P(BatchTest, AGridWithoutRowsIsNull) {
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"cServer","do":"getMetaTags","with":{"site":"zz"}}]})"),
              json("[null]"));
}

TEST_P(BatchTest, EveryOperationTakesValuesOfItsOwnTypes) {
    const auto classes = operations::makeRegister();
    for (const auto& entry : classes.classes()) {
        for (const auto& operation : entry.operations) {
            BatchRequest request;
            Call step{entry.name, operation.name, {}};
            for (const auto& argument : operation.arguments) {
                if (!argument.defaultValue) step.arguments.emplace_back(argument.name, "1");
            }
            if (operation.name == "connect") step.arguments = {{"conn", connectionText()}};
            request.steps.emplace_back(step);
            const auto answer = engine_->run(request);
            const std::string error = answer.failure ? answer.failure->description : "";
            EXPECT_EQ(error, "") << entry.name << '.' << operation.name;
        }
    }
}

TEST_P(BatchTest, EveryPropertyCanBeRead) {
    const auto classes = operations::makeRegister();
    for (const auto& entry : classes.classes()) {
        for (const auto& property : entry.properties) {
            BatchRequest request;
            request.steps.emplace_back(PropertyRead{entry.name, property.name});
            const auto answer = engine_->run(request);
            ASSERT_EQ(answer.results.size(), 1U) << entry.name << '.' << property.name;
            EXPECT_EQ(operations::convert(answer.results[0], property.type), answer.results[0])
                << property.name;
        }
    }
}

// ---- The state a request finds ----

TEST_P(BatchTest, ANewVisitorsSessionIsSetUpFromTheRequest) {
    EXPECT_EQ(resultsOf(R"({"now":"2025-02-03T04:05:06","request":{"server":{"HTTP_HOST":"garden.example"}},
        "calls":[{"session":"torvex_dns"},{"session":"tvx_url"},{"session":"torvex_audit_from"},
                 {"session":"tvx_loginTrials"},{"session":"tvx_loginError"},{"session":"never_written"}]})"),
              json(R"(["garden.example","http://garden.example","20250203",0,false,null])"));
}

TEST_P(BatchTest, ASessionLastsForItsVisitorAlone) {
    ask(R"({"visitor":"anna","session":{"a":1},"calls":[]})");
    EXPECT_EQ(resultsOf(R"({"visitor":"anna","calls":[{"session":"A"}]})"), json("[1]"));
    EXPECT_EQ(resultsOf(R"({"visitor":"ben","calls":[{"session":"a"}]})"), json("[null]"));
    EXPECT_EQ(resultsOf(R"({"calls":[{"session":"a"}]})"), json("[null]"));
}

TEST_P(BatchTest, ASessionIsSetUpOnlyOnce) {
    ask(R"({"request":{"server":{"HTTP_HOST":"first"}}})");
    EXPECT_EQ(
        resultsOf(R"({"request":{"server":{"HTTP_HOST":"second"}},"calls":[{"session":"torvex_dns"}]})"),
        json(R"(["first"])"));
}

TEST_P(BatchTest, TheVisitorWithoutANameIsTheFirst) {
    ask(R"({"session":{"a":"x"}})");
    EXPECT_EQ(resultsOf(R"({"visitor":"1","calls":[{"session":"a"}]})"), json(R"(["x"])"));
}

TEST_P(BatchTest, StoredValuesAreThereBeforeTheCalls) {
    EXPECT_EQ(resultsOf(R"({"session":{"a":true,"b":null,"torvex_dns":"mine"},"application":{"c":"x","d":2.5},
        "calls":[{"session":"a"},{"session":"b"},{"session":"torvex_dns"},{"application":"c"},{"application":"D"}]})"),
              json(R"([true,null,"mine","x",2.5])"));
}

TEST_P(BatchTest, ApplicationValuesAreSharedByAllVisitors) {
    ask(R"({"application":{"torvex_charset":"utf-8"}})");
    EXPECT_EQ(resultsOf(R"({"visitor":"2","calls":[{"application":"torvex_charset"}]})"),
              json(R"(["utf-8"])"));
}

TEST_P(BatchTest, TheClockIsTheLinesOwn) {
    EXPECT_EQ(resultsOf(R"({"now":"2031-12-31T23:59:59","calls":[{"on":"Probe","do":"now"}]})"),
              json(R"(["2031-12-31T23:59:59"])"));
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"Probe","do":"now"}]})"), json(R"(["2026-06-15T12:00:00"])"));
}

TEST_P(BatchTest, TheRequestReachesTheObjects) {
    EXPECT_EQ(
        resultsOf(R"({"request":{"query":"a=1%202","form":{"b":"x"},"server":{"SCRIPT_NAME":"/tvx.asp"}},
        "calls":[{"on":"Probe","do":"item","with":{"name":"A"}},{"on":"Probe","do":"item","with":{"name":"b"}},
                 {"on":"Probe","do":"item","with":{"name":"script_name"}}]})"),
        json(R"(["1 2","x","/tvx.asp"])"));
}

// ---- Login ----

TEST_P(BatchTest, ALoginHasTheSessionsKeys) {
    addLogin("Anna", "");
    const auto results = resultsOf(R"({"login":"anna","application":{"torvex_ssl":true},"calls":[
        {"session":"torvex_username"},{"session":"torvex_password"},{"session":"torvex_fullname"}]})");
    EXPECT_EQ(results, json(R"(["Anna","123","Full Name"])"));
    EXPECT_EQ(resultsOf(R"({"calls":[{"session":"torvex_loginId"}]})").at(0).to_number<double>(),
              text::toNumber(loginText("Anna", "loginId")));
}

TEST_P(BatchTest, ALoginTakesTheApplicationsSsl) {
    addLogin("anna", "");
    ask(R"({"application":{"torvex_ssl":true}})");
    EXPECT_EQ(resultsOf(R"({"login":"anna","calls":[{"session":"torvex_ssl"}]})"), json("[true]"));
}

TEST_P(BatchTest, ALoginsRowHasTheSession) {
    addLogin("anna", "another session");
    const auto results = resultsOf(R"({"now":"2026-03-04T05:06:07","login":"anna",
        "request":{"server":{"remote_addr":"10.0.0.7"}},"calls":[{"on":"Probe","do":"sessionId"}]})");
    EXPECT_EQ(loginText("anna", "sessionId"), std::string(results.at(0).as_string()));
    EXPECT_EQ(loginText("anna", "ipAddress"), "10.0.0.7");
    EXPECT_EQ(loginText("anna", "currentSite"), "");
    EXPECT_EQ(loginText("anna", "siteLock"), "");
    EXPECT_EQ(loginText("anna", "date"), "20260304");
    EXPECT_EQ(loginText("anna", "time"), "05:06");
}

TEST_P(BatchTest, ANewLoginFreesTheOneThatTheSessionHeld) {
    addLogin("anna", "");
    addLogin("ben", "");
    addLogin("carl", "elsewhere");
    ask(R"({"login":"anna"})");
    connection().execute(
        "update TORVEX_LOGINS set currentSite = 'ab.en', siteLock = 'ab.en' where username = 'anna'");
    ask(R"({"login":"ben"})");
    EXPECT_EQ(loginText("anna", "sessionId"), "");
    EXPECT_EQ(loginText("anna", "currentSite"), "");
    EXPECT_EQ(loginText("anna", "siteLock"), "");
    EXPECT_NE(loginText("ben", "sessionId"), "");
    EXPECT_EQ(loginText("carl", "sessionId"), "elsewhere");
    EXPECT_EQ(loginText("carl", "siteLock"), "ab.en");
}

TEST_P(BatchTest, ALoginLeavesNoAuditLine) {
    addLogin("anna", "");
    ask(R"({"login":"anna"})");
    auto rows = connection().query("select count(*) as lines from TORVEX_AUDIT_TRAIL");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("lines"), 0);
}

TEST_P(BatchTest, AnUnknownLoginIsAnErrorAndNothingRuns) {
    addLogin("anna", "");
    ask(R"({"login":"anna"})");
    const std::string holder = loginText("anna", "sessionId");
    const auto answer = ask(R"({"login":"nobody","session":{"a":1},"calls":[{"session":"a"}]})");
    EXPECT_EQ(answer.at("error").at("description"), json(R"("there is no login \"nobody\"")"));
    EXPECT_FALSE(answer.at("error").as_object().contains("call"));
    EXPECT_EQ(answer.at("results"), json("[]"));
    EXPECT_EQ(loginText("anna", "sessionId"), holder);
    EXPECT_EQ(resultsOf(R"({"calls":[{"session":"a"},{"session":"torvex_username"}]})"),
              json(R"([null,"anna"])"));
}

// ---- Errors ----

TEST_P(BatchTest, AFailingCallStopsTheLineAndKeepsTheResultsSoFar) {
    const auto answer = ask(R"({"calls":[{"on":"HTMLTemplate","set":"strVal","to":"x"},
        {"on":"HTMLTemplate","get":"strVal"},{"on":"Probe","do":"fail"},{"on":"Probe","do":"abandon"}]})");
    EXPECT_EQ(answer.at("results"), json(R"([null,"x"])"));
    EXPECT_EQ(answer.at("error").at("call").as_int64(), 2);
    EXPECT_EQ(answer.at("error").at("number").as_int64(), 40000);
    EXPECT_TRUE(answer.at("error").at("description").as_string().starts_with("Error in function fail !\r\n"));
    EXPECT_FALSE(answer.contains("abandoned"));
}

TEST_P(BatchTest, NamesThatAreNotThereAreErrors) {
    EXPECT_TRUE(text::startsWith(errorOf(R"({"calls":[{"on":"cManger","do":"x"}]})"),
                                 "there is no class \"cManger\""));
    EXPECT_EQ(errorOf(R"({"calls":[{"on":"cServer","do":"getPages"}]})"),
              "cServer has no operation \"getPages\"");
    EXPECT_EQ(errorOf(R"({"calls":[{"on":"cServer","get":"pgPages"}]})"),
              "cServer has no property \"pgPages\"");
    EXPECT_EQ(errorOf(R"({"calls":[{"on":"cServer","set":"pgAccess","to":1}]})"),
              "the property \"pgAccess\" of cServer is read-only");
    EXPECT_EQ(errorOf(R"({"calls":[{"on":"cServer","do":"getPage"}]})"),
              "getPage: argument \"pageIdent\" is missing");
}

TEST_P(BatchTest, ALineThatIsNoRequestGetsAnErrorAndTheNextLineRuns) {
    for (const auto* line :
         {"", "no json", "[]", R"({"calls":7})", R"({"calls":[7]})", R"({"now":"soon"})"}) {
        EXPECT_NE(errorOf(line), "no error") << line;
    }
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"HTMLTemplate","get":"strVal"}]})"), json(R"([""])"));
}

TEST_P(BatchTest, AMalformedCallKeepsTheOnesBeforeItFromRunning) {
    ask(R"({"session":{"a":1},"calls":[{"on":"Probe","do":"abandon"},{"nothing":1}]})");
    EXPECT_EQ(resultsOf(R"({"calls":[{"session":"a"}]})"), json("[null]"));
}

TEST_P(BatchTest, ADatabaseThatIsNotThereIsAnErrorAndTheVisitorStaysNew) {
    const std::string real = connectionText();
    host_.application.set("torvex_odbc", "nothing:");
    EXPECT_NE(errorOf(R"({"visitor":"late"})"), "no error");
    host_.application.set("torvex_odbc", real);
    EXPECT_EQ(resultsOf(R"({"visitor":"late","calls":[{"session":"tvx_counter"}]})"), json("[0]"));
}

// ---- Response and session ends ----

TEST_P(BatchTest, AnUntouchedResponseIsNotShown) {
    EXPECT_FALSE(ask(R"({"calls":[{"on":"Probe","do":"now"}]})").contains("response"));
}

TEST_P(BatchTest, WhatACallWritesIsShown) {
    const auto answer = ask(R"({"calls":[{"on":"Probe","do":"write","with":{"text":"<b>"}}]})");
    EXPECT_EQ(answer.at("response").at("body"), json(R"("<b>")"));
    EXPECT_FALSE(answer.contains("ended"));
}

TEST_P(BatchTest, AfterTheEndOfTheResponseNothingRuns) {
    const auto answer = ask(R"({"calls":[{"on":"Probe","do":"now"},{"on":"HTMLTemplate","do":"extractBlock",
        "with":{"tag":"missing"}},{"on":"Probe","do":"abandon"}]})");
    EXPECT_EQ(answer.at("results").as_array().size(), 1U);
    EXPECT_EQ(answer.at("ended"), json("true"));
    EXPECT_FALSE(answer.contains("error"));
    EXPECT_FALSE(answer.contains("abandoned"));
    EXPECT_TRUE(answer.at("response").at("body").as_string().find("missing") != std::string::npos);
}

TEST_P(BatchTest, AnAbandonedSessionIsGoneForTheNextLine) {
    const auto answer = ask(R"({"session":{"a":1},"calls":[{"on":"Probe","do":"abandon"},{"session":"a"}]})");
    EXPECT_EQ(answer.at("results"), json("[null,1]"));
    EXPECT_EQ(answer.at("abandoned"), json("true"));
    const auto next = ask(R"({"calls":[{"session":"a"},{"session":"tvx_counter"}]})");
    EXPECT_EQ(next.at("results"), json("[null,0]"));
    EXPECT_FALSE(next.contains("abandoned"));
}

TEST_P(BatchTest, ASessionThatIsAbandonedBeforeAnErrorIsGoneToo) {
    ask(R"({"session":{"a":1},"calls":[{"on":"Probe","do":"abandon"},{"on":"Probe","do":"fail"}]})");
    EXPECT_EQ(resultsOf(R"({"calls":[{"session":"a"}]})"), json("[null]"));
}

TEST_P(BatchTest, EverySessionHasAnIdOfItsOwn) {
    const auto first =
        resultsOf(R"({"calls":[{"on":"Probe","do":"sessionId"},{"on":"Probe","do":"abandon"}]})").at(0);
    const auto again = resultsOf(R"({"calls":[{"on":"Probe","do":"sessionId"}]})").at(0);
    const auto other = resultsOf(R"({"visitor":"2","calls":[{"on":"Probe","do":"sessionId"}]})").at(0);
    EXPECT_NE(first, again);
    EXPECT_NE(again, other);
    EXPECT_EQ(resultsOf(R"({"calls":[{"on":"Probe","do":"sessionId"}]})").at(0), again);
}

// ---- Streams and threads ----

TEST_P(BatchTest, EveryLineGetsOneLineInOrder) {
    std::istringstream in("{\"session\":{\"a\":1}}\n\nnonsense\n{\"calls\":[{\"session\":\"a\"}]}");
    std::ostringstream out;
    runBatch(*engine_, in, out);
    std::istringstream answers(out.str());
    std::string line;
    std::vector<std::string> lines;
    while (std::getline(answers, line)) lines.push_back(line);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], R"({"results":[]})");
    EXPECT_TRUE(json(lines[1]).as_object().contains("error"));
    EXPECT_TRUE(json(lines[2]).as_object().contains("error"));
    EXPECT_EQ(lines[3], R"({"results":[1]})");
}

TEST_P(BatchTest, TheRequestsOfOneVisitorRunOneAtATime) {
    constexpr int threads = 4;
    constexpr int lines = 20;
    std::vector<std::jthread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([this] {
            for (int n = 0; n < lines; ++n) engine_->run(R"({"calls":[{"on":"Probe","do":"count"}]})");
        });
    }
    running.clear();
    EXPECT_EQ(resultsOf(R"({"calls":[{"session":"tvx_counter"}]})"), json("[80]"));
}

TEST_P(BatchTest, VisitorsRunBesideEachOther) {
    std::vector<std::jthread> running;
    for (int i = 0; i < 4; ++i) {
        running.emplace_back([this, visitor = std::to_string(i)] {
            const std::string line =
                R"({"visitor":")" + visitor + R"(","calls":[{"on":"Probe","do":"count"}]})";
            for (int n = 0; n < 20; ++n) engine_->run(line);
        });
    }
    running.clear();
    for (const auto* visitor : {"0", "1", "2", "3"}) {
        const std::string line =
            std::string(R"({"visitor":")") + visitor + R"(","calls":[{"session":"tvx_counter"}]})";
        EXPECT_EQ(resultsOf(line), json("[20]")) << visitor;
    }
}

}  // namespace
}  // namespace torvex::operations
