#include <gmock/gmock.h>

#include "accounts/LoginAttempt.h"
#include "pages/Pages.h"
#include "support/AuthorsPagesTest.h"
#include "support/SecondFactorTest.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class AuthorsLoginPage : public AuthorsPagesTest {
  protected:
    void open(const std::string& query = "", NamedValues variables = {}) {
        ask(query, std::move(variables));
        authorsLoginPage(host.context(), shared);
    }
    void send(NamedValues form, NamedValues variables = {}) {
        form.emplace_back("token", token());
        post(std::move(form), std::move(variables));
        authorsLoginPage(host.context(), shared);
    }
    void logIn(const std::string& name, const std::string& password) {
        send({{"username", name}, {"password", password}, {"to", "/torvex/page.asp?pageId=12"}});
    }
    void beHeldFrom(const std::string& address) {
        set(anna, "sessionId", "another");
        set(anna, "ipAddress", address);
        set(anna, "date", "20260615");
        set(anna, "time", "09:12");
    }
    bool isLoggedIn() { return kept() == "7|anna|" + stored(anna) + "|Anna Author"; }
};
INSTANTIATE_TEST_SUITE_P(Engines, AuthorsLoginPage, bothEngines(), engineName);

TEST_P(AuthorsLoginPage, ShowsAFormThatNeedsNoScript) {
    open();
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(html(), HasSubstr("<form method=\"post\" action=\"/torvex/login\">"));
    EXPECT_THAT(html(), HasSubstr("name=\"token\" value=\"" + token() + "\""));
    EXPECT_THAT(html(), HasSubstr("<meta name=\"torvex-token\" content=\"" + token() + "\">"));
    EXPECT_THAT(html(), HasSubstr("<button class=\"main\" type=\"submit\">Log&nbsp;in</button>"));
    EXPECT_THAT(html(), Not(HasSubstr("class=\"notice")));
    EXPECT_THAT(html(), Not(HasSubstr("<!--!")));
    EXPECT_THAT(host.response.cacheControl, HasSubstr("no-store"));
}

TEST_P(AuthorsLoginPage, RunsFilesOfThisServerAloneAndStandsInNoFrame) {
    open();
    EXPECT_THAT(policy(), HasSubstr("default-src 'none'; script-src 'self';"));
    EXPECT_THAT(policy(), HasSubstr("frame-ancestors 'none'"));
    EXPECT_THAT(html(), Not(HasSubstr("<script>")));
    EXPECT_THAT(html(), Not(HasSubstr("style=")));
}

TEST_P(AuthorsLoginPage, ARightLoginLeadsWhereTheAuthorWantedToGo) {
    const std::string before = token();
    logIn("Anna", "Secret");
    EXPECT_EQ(host.response.status, 302);
    EXPECT_EQ(location(host), "/torvex/page.asp?pageId=12");
    EXPECT_TRUE(isLoggedIn());
    EXPECT_NE(token(), before);
    EXPECT_TRUE(host.session.takeTokenRequest());
}

TEST_P(AuthorsLoginPage, LeadsNowhereElse) {
    for (const char* to :
         {"https://evil.test/", "//evil.test/", "/tvx.asp?pageId=1", "/torvex/../tvx.asp",
          "/torvex/\\evil.test", "/torvex/logout", "/torvex/login?to=x", "", "javascript:x", "/torvex/a b"}) {
        send({{"username", "anna"}, {"password", "Secret"}, {"to", to}});
        EXPECT_EQ(location(host), "/torvex/") << to;
    }
}

TEST_P(AuthorsLoginPage, WhoIsLoggedInGoesOn) {
    logInAnna();
    open("to=%2Ftorvex%2Fsites.asp");
    EXPECT_EQ(location(host), "/torvex/sites.asp");
    EXPECT_THAT(html(), Not(HasSubstr("torvex-token")));
}

TEST_P(AuthorsLoginPage, AWrongPasswordIsToldAndTheNameStays) {
    logIn("anna", "wrong");
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(html(), HasSubstr("Name or password is wrong, or this login isn’t valid today."));
    EXPECT_THAT(html(), HasSubstr("value=\"anna\""));
    EXPECT_THAT(html(), Not(HasSubstr("wrong\"")));
    EXPECT_FALSE(isLoggedIn());
}

TEST_P(AuthorsLoginPage, NothingTypedIsAWrongPasswordAndNoQuestionAboutTheSession) {
    logInAnna();
    set(anna, "sessionId", "another");
    for (const NamedValues& form : {NamedValues{}, NamedValues{{"username", "anna"}, {"password", " "}},
                                    NamedValues{{"username", " "}, {"password", "Secret"}}}) {
        send(form);
        EXPECT_EQ(host.response.status, 403);
    }
    EXPECT_TRUE(auditTrail().empty());
}

TEST_P(AuthorsLoginPage, AnAddressThatMayNotIsTold) {
    host.application.set("torvex_access_IP_filter", "192.0.2.1");
    logIn("anna", "Secret");
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(html(), HasSubstr("Logging in isn’t allowed from this address."));
    EXPECT_FALSE(isLoggedIn());
}

TEST_P(AuthorsLoginPage, ALoginThatIsHeldElsewhereIsAskedAbout) {
    beHeldFrom("10.0.0.7");
    logIn("anna", "Secret");
    EXPECT_EQ(host.response.status, 409);
    EXPECT_THAT(
        html(),
        HasSubstr("Somebody is logged in as you from 10.0.0.7 since 9:12. End that session and go on here?"));
    EXPECT_THAT(html(), HasSubstr("name=\"takeOver\" value=\"1\""));
    EXPECT_THAT(html(), Not(HasSubstr("Secret")));
    EXPECT_FALSE(isLoggedIn());
}

TEST_P(AuthorsLoginPage, TheHolderIsToldWithItsDayWhenThatWasNotToday) {
    beHeldFrom("010000000007");
    set(anna, "date", "20260613");
    logIn("anna", "Secret");
    EXPECT_THAT(html(), HasSubstr("from 10.0.0.7 since 2026-06-13 9:12."));
}

TEST_P(AuthorsLoginPage, AHolderIsNotToldToWhoLacksThePassword) {
    beHeldFrom("10.0.0.7");
    logIn("anna", "wrong");
    EXPECT_THAT(html(), Not(HasSubstr("10.0.0.7")));
    EXPECT_THAT(html(), Not(HasSubstr("takeOver")));
}

TEST_P(AuthorsLoginPage, NobodyTakesOverWithoutHavingShownThePassword) {
    beHeldFrom("10.0.0.7");
    send({{"takeOver", "1"}, {"to", "/torvex/"}});
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(holder(anna), StartsWith("another|10.0.0.7"));
}

TEST_P(AuthorsLoginPage, OneClickEndsTheOtherSessionAndGoesOnHere) {
    beHeldFrom("10.0.0.7");
    logIn("anna", "Secret");
    send({{"takeOver", "1"}, {"to", "/torvex/page.asp?pageId=12"}});
    EXPECT_EQ(location(host), "/torvex/page.asp?pageId=12");
    EXPECT_TRUE(isLoggedIn());
    EXPECT_THAT(holder(anna), StartsWith(host.session.id() + "|10.0.0.5"));
    EXPECT_TRUE(host.session.takeTokenRequest());
}

TEST_P(AuthorsLoginPage, WhatWasTypedIsForgottenWithTheNextRequest) {
    beHeldFrom("10.0.0.7");
    logIn("anna", "Secret");
    logIn("anna", "wrong");
    send({{"takeOver", "1"}, {"to", "/torvex/"}});
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(holder(anna), StartsWith("another|10.0.0.7"));
}

TEST_P(AuthorsLoginPage, AFormWithoutTheSecretLogsNobodyIn) {
    for (const char* sent : {"", "x", "0123456789012345678901234567890123456789012"}) {
        token();
        post({{"token", sent}, {"username", "anna"}, {"password", "Secret"}});
        authorsLoginPage(host.context(), shared);
        EXPECT_EQ(host.response.status, 403) << sent;
        EXPECT_THAT(html(), HasSubstr("This form was open for too long."));
        EXPECT_THAT(html(), HasSubstr(token()));
    }
    EXPECT_FALSE(isLoggedIn());
}

TEST_P(AuthorsLoginPage, AFormOfAnotherSiteLogsNobodyIn) {
    for (const NamedValues& from : {NamedValues{{"http_origin", "http://evil.test"}},
                                    NamedValues{{"http_sec_fetch_site", "cross-site"}}}) {
        send({{"username", "anna"}, {"password", "Secret"}}, from);
        EXPECT_EQ(host.response.status, 403);
    }
    EXPECT_FALSE(isLoggedIn());
}

TEST_P(AuthorsLoginPage, GuessesAreSlowedDownAndTheWaitIsTold) {
    for (int i = 0; i < 50; ++i)
        LoginAttempt(throttle, LoginAttempt::Kind::Author, "10.0.0.5", "anna").begin();
    logIn("anna", "Secret");
    EXPECT_EQ(host.response.status, 429);
    const std::string seconds = header(host, "Retry-After");
    EXPECT_GT(text::toNumber(seconds), 0);
    EXPECT_THAT(html(), HasSubstr("You can try again in " + seconds + " seconds."));
    EXPECT_THAT(html(), HasSubstr("data-seconds=\"" + seconds + "\""));
    EXPECT_FALSE(isLoggedIn());
}

TEST_P(AuthorsLoginPage, SpeaksTheLanguageOfTheBrowserOrTheOneThatIsChosen) {
    open("", {{"http_accept_language", "fr-FR,de-AT;q=0.8,en;q=0.5"}});
    EXPECT_THAT(html(), HasSubstr("<html lang=\"de\">"));
    EXPECT_THAT(html(), HasSubstr("Anmelden"));
    open("lang=en", {{"http_accept_language", "de"}});
    EXPECT_THAT(html(), HasSubstr("<html lang=\"en\">"));
    EXPECT_THAT(html(), HasSubstr("href=\"/torvex/login?lang=de\" lang=\"de\""));
    open("lang=xx");
    EXPECT_THAT(html(), HasSubstr("<html lang=\"en\">"));
}

TEST_P(AuthorsLoginPage, ALanguageThatIsSwitchedOffIsNotOffered) {
    connection().execute("update TORVEX_INTERFACE_LANGUAGES set lang_enabled = 0 where lang_id = 'de'");
    open("lang=de", {{"http_accept_language", "de"}});
    EXPECT_THAT(html(), HasSubstr("<html lang=\"en\">"));
    EXPECT_THAT(html(), Not(HasSubstr("lang=de")));
}

TEST_P(AuthorsLoginPage, WhoChoseALanguageAtTheDoorWorksInIt) {
    send({{"username", "anna"}, {"password", "Secret"}, {"lang", "de"}});
    EXPECT_EQ(host.session.text("torvex_current_interface"), "de");
    EXPECT_EQ(host.session.text("torvex_adminTemplates_dir"), "/install/torvex/templates/de/");
}

TEST_P(AuthorsLoginPage, WhateverIsSentIsEncoded) {
    send({{"username", "\"><script>x</script>"},
          {"password", "x"},
          {"lang", "\"><b>"},
          {"to", "/torvex/\"<b>"}});
    EXPECT_THAT(html(), Not(HasSubstr("<script>x")));
    EXPECT_THAT(html(), Not(HasSubstr("<b>")));
}

TEST_P(AuthorsLoginPage, AFailureOfTheDatabaseIsAnError) {
    drop("TORVEX_INTERFACE_LANGUAGES");
    ask("");
    EXPECT_THROW(authorsLoginPage(host.context(), shared), db::DatabaseError);
}

TEST_P(AuthorsLoginPage, MissingTemplatesAreNamedWithTheRemedy) {
    host.files.bytes.clear();
    ask("");
    try {
        authorsLoginPage(host.context(), shared);
        FAIL() << "nothing was missed";
    } catch (const Error& error) {
        EXPECT_THAT(error.what(), HasSubstr("templates/en/login.html isn't there"));
        EXPECT_THAT(error.what(), HasSubstr("torvex migrate"));
    }
}

class AuthorsLogoutPage : public AuthorsPagesTest {};
INSTANTIATE_TEST_SUITE_P(Engines, AuthorsLogoutPage, bothEngines(), engineName);

TEST_P(AuthorsLogoutPage, FreesTheLoginAndLeadsToTheDoor) {
    logInAnna();
    ask("");
    authorsLogoutPage(host.context(), shared);
    EXPECT_EQ(location(host), "/torvex/login?out=1");
    EXPECT_THAT(holder(anna), StartsWith("|10.0.0.5"));
    EXPECT_TRUE(host.session.isAbandoned());
    ask("out=1");
    authorsLoginPage(host.context(), shared);
    EXPECT_THAT(html(), HasSubstr("You are logged out."));
}

TEST_P(AuthorsLogoutPage, IsNotCalledByPicturesOrOtherSites) {
    logInAnna();
    for (const NamedValues& from :
         {NamedValues{{"http_sec_fetch_dest", "image"}, {"http_sec_fetch_mode", "no-cors"}},
          NamedValues{{"http_sec_fetch_dest", "iframe"}}, NamedValues{{"http_sec_fetch_site", "cross-site"}},
          NamedValues{{"http_origin", "http://evil.test"}}}) {
        ask("", from);
        authorsLogoutPage(host.context(), shared);
        EXPECT_EQ(host.response.status, 403);
        EXPECT_THAT(holder(anna), StartsWith(host.session.id()));
        EXPECT_FALSE(host.session.isAbandoned());
    }
}

TEST_P(AuthorsLogoutPage, NobodyIsLedToTheDoorAsWell) {
    ask("");
    authorsLogoutPage(host.context(), shared);
    EXPECT_EQ(location(host), "/torvex/login?out=1");
    EXPECT_TRUE(auditTrail().empty());
}

// ---- With a second factor ----

class AuthorsDoorWithCode : public WithSecondFactor<AuthorsPagesTest> {
  protected:
    void SetUp() override {
        WithSecondFactor::SetUp();
        if (!HasFatalFailure()) codes = enrolled(anna);
    }
    void send(NamedValues form) {
        form.emplace_back("token", token());
        form.emplace_back("to", "/torvex/page.asp?pageId=12");
        post(std::move(form));
        authorsLoginPage(host.context(), shared);
    }
    void givePassword() { send({{"username", "anna"}, {"password", "Secret"}}); }
    void giveCode(const std::string& typed) { send({{"code", typed}}); }
    void expectIn() {
        EXPECT_EQ(location(host), "/torvex/page.asp?pageId=12");
        EXPECT_THAT(holder(anna), StartsWith(host.session.id() + "|"));
    }

    std::vector<std::string> codes;
};
INSTANTIATE_TEST_SUITE_P(Engines, AuthorsDoorWithCode, bothEngines(), engineName);

TEST_P(AuthorsDoorWithCode, AsksForTheCodeInAFormThatNeedsNoScript) {
    givePassword();
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(html(), HasSubstr("<label for=\"code\">Code</label>"));
    EXPECT_THAT(html(), HasSubstr("inputmode=\"numeric\" autocomplete=\"one-time-code\""));
    EXPECT_THAT(html(), HasSubstr("enter one of your recovery codes"));
    EXPECT_THAT(html(), HasSubstr("name=\"to\" value=\"/torvex/page.asp?pageId=12\""));
    EXPECT_THAT(html(), Not(HasSubstr("name=\"password\"")));
    EXPECT_THAT(html(), Not(HasSubstr("Secret")));
    EXPECT_THAT(html(), Not(HasSubstr("<!--!")));
}

TEST_P(AuthorsDoorWithCode, TheCodeOrOneOnPaperLeadsOn) {
    const std::string before = token();
    givePassword();
    giveCode(code());
    expectIn();
    EXPECT_NE(token(), before);
    host.session = Session("session-b");
    set(anna, "sessionId", "");
    givePassword();
    giveCode(codes[0]);
    expectIn();
}

TEST_P(AuthorsDoorWithCode, AWrongCodeIsToldAndAskedForAgain) {
    givePassword();
    giveCode(wrongCode());
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(html(), HasSubstr("The code is wrong, or was used before."));
    EXPECT_THAT(html(), HasSubstr("id=\"code\""));
    giveCode(code());
    expectIn();
}

TEST_P(AuthorsDoorWithCode, ACodeWithoutAPasswordBeforeIsTooLate) {
    giveCode(code());
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(html(), HasSubstr("Log in again with name and password."));
    EXPECT_THAT(html(), HasSubstr("name=\"password\""));
}

TEST_P(AuthorsDoorWithCode, ManyWrongCodesHaveToWait) {
    givePassword();
    for (int i = 0; i < 6; ++i) giveCode(wrongCode());
    giveCode(wrongCode());
    EXPECT_EQ(host.response.status, 429);
    EXPECT_THAT(html(), HasSubstr("id=\"code\""));
}

TEST_P(AuthorsDoorWithCode, AHolderElsewhereIsAskedAboutAfterTheCodeAndEndedByOneClick) {
    set(anna, "sessionId", "another");
    set(anna, "ipAddress", "10.0.0.7");
    givePassword();
    EXPECT_THAT(html(), Not(HasSubstr("10.0.0.7")));
    giveCode(code());
    EXPECT_EQ(host.response.status, 409);
    EXPECT_THAT(html(), HasSubstr("name=\"takeOver\""));
    send({{"takeOver", "1"}});
    expectIn();
}

TEST_P(AuthorsDoorWithCode, TheOtherSessionIsNotEndedWithoutACode) {
    set(anna, "sessionId", "another");
    set(anna, "ipAddress", "10.0.0.7");
    givePassword();
    send({{"takeOver", "1"}});
    EXPECT_EQ(host.response.status, 403);
    EXPECT_THAT(holder(anna), StartsWith("another|10.0.0.7"));
}

}  // namespace
}  // namespace torvex::test
