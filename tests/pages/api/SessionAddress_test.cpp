#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "support/ApiTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using test::ApiReply;
using testing::HasSubstr;
using testing::Not;

class ApiSession : public test::ApiTest {
  protected:
    void SetUp() override {
        ApiTest::SetUp();
        if (!HasFatalFailure()) start();
    }
    static std::string text(const boost::json::value& value) { return boost::json::serialize(value); }
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiSession, test::bothEngines(), test::engineName);

TEST_P(ApiSession, AVisitorIsNobody) {
    const ApiReply reply = ApiClient(running, "127.0.0.1").get("session");
    EXPECT_EQ(reply.status(), 200);
    EXPECT_TRUE(reply.body.as_object().at("login").is_null());
    EXPECT_FALSE(reply.body.as_object().contains("rights"));
    EXPECT_EQ(reply.text("/serverTime"), "2026-06-15T12:00:00");
    EXPECT_EQ(reply.at("/limits/callsPerSecond"), 20);
    EXPECT_EQ(reply.at("/limits/callsInBatch"), 100);
    EXPECT_EQ(reply.text("/interfaceLanguage"), "en");
}

TEST_P(ApiSession, ALoginLearnsWhoItIsAndWhatItMayDo) {
    role(1);
    role(2);
    editRights(1, "aa", "en", {"edit"});
    editRights(2, "aa", "en", {"publish"}, "aa.en.01");
    advancedRight(1, 212, "aa", "en", true, false);
    advancedRight(2, 212, "aa", "en", false, true);
    const ApiReply reply = loggedIn().get("session");
    EXPECT_EQ(text(reply.at("/login")),
              R"({"loginId":7,"username":"anna","name":"Anna Author","isAdministrator":false})");
    EXPECT_EQ(text(reply.at("/rights/pages")), R"([{"site":"aa","lang":"en","may":["publish","edit"]}])");
    EXPECT_EQ(text(reply.at("/rights/entries")),
              R"([{"entry":212,"site":"aa","lang":"en","view":true,"edit":true}])");
    EXPECT_EQ(reply.at("/rights/all"), false);
    EXPECT_THAT(reply.raw.field("Cache-Control"), HasSubstr("no-store"));
}

TEST_P(ApiSession, TheAdministratorMayDoAll) {
    EXPECT_EQ(loggedIn("sa").get("session").at("/rights/all"), true);
}

TEST_P(ApiSession, WhoMustSetUpASecondFactorLearnsItAndCanDoNothingElse) {
    role(1);
    connection().execute("update TORVEX_ROLES set secondFactor = 1 where roleId = 1");
    ApiClient browser = loggedIn();
    EXPECT_EQ(browser.get("session").at("/login/mustEnrol"), true);
    const ApiReply refused = browser.post("desk/getDrafts");
    EXPECT_EQ(refused.status(), 403);
    EXPECT_EQ(refused.kind(), "second-factor-demanded");
    EXPECT_EQ(refused.text("/detail"), "A role of yours demands a second factor. Set it up first.");
    EXPECT_EQ(browser.get("export/users.csv").kind(), "second-factor-demanded");
    EXPECT_EQ(browser.post("desk/getSecondFactor").status(), 200);
}

TEST_P(ApiSession, WhoHasLostTheLoginIsNobody) {
    ApiClient browser = loggedIn();
    connection().execute("update TORVEX_LOGINS set sessionId = 'another' where loginId = 7");
    EXPECT_TRUE(browser.get("session").body.as_object().at("login").is_null());
}

TEST_P(ApiSession, ItDoesNotGiveTheTokenOut) {
    ApiClient browser = loggedIn();
    const ApiReply reply = browser.get("session");
    EXPECT_THAT(reply.raw.head + reply.raw.body, Not(HasSubstr(browser.token)));
}

// ---- Labels ----

TEST_P(ApiSession, WordsAreGivenToAnybodyWithEnglishWhereOneIsMissing) {
    word(9001, "only English");
    const ApiReply reply = ApiClient(running, "127.0.0.1").get("labels?lang=de");
    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(reply.text("/5"), "Speichern");
    EXPECT_EQ(reply.text("/9001"), "only English");
    EXPECT_EQ(ApiClient(running, "127.0.0.1").get("labels?lang=EN").text("/5"), "Save");
}

TEST_P(ApiSession, WordsAreSentAgainWhenOneHasChanged) {
    ApiClient browser = loggedIn();
    const ApiReply first = browser.get("labels?lang=de");
    const std::string tag = first.raw.field("ETag");
    EXPECT_EQ(first.raw.field("Cache-Control"), "private, no-cache");
    const auto again = [&] { return browser.ask("GET", "labels?lang=de", "If-None-Match: " + tag + "\r\n"); };
    EXPECT_EQ(again().status(), 304);
    EXPECT_EQ(again().raw.body, "");
    connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab2 = 'Sichern' where lang_label = 5");
    EXPECT_EQ(again().status(), 200);
    EXPECT_EQ(again().text("/5"), "Sichern");
}

TEST_P(ApiSession, ThereAreNoWordsOfALanguageThatIsNotThere) {
    for (const std::string language : {"xx", "1", "1;drop", "%27"}) {
        const ApiReply reply = ApiClient(running, "127.0.0.1").get("labels?lang=" + language);
        EXPECT_EQ(reply.status(), 404) << language;
        EXPECT_EQ(reply.kind(), "not-there") << language;
    }
}

TEST_P(ApiSession, WordsWithoutALanguageAreInTheCallers) {
    ApiClient nobody(running, "127.0.0.1");
    nobody.language = "de";
    EXPECT_EQ(nobody.get("labels").text("/5"), "Speichern");
}

TEST_P(ApiSession, OtherMethodsAreRefused) {
    for (const std::string path : {"session", "labels"}) {
        const ApiReply reply = visitor().post(path);
        EXPECT_EQ(reply.status(), 405) << path;
        EXPECT_EQ(reply.raw.field("Allow"), "GET, HEAD") << path;
    }
}

}  // namespace
}  // namespace torvex
