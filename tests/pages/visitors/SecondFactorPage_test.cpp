#include <gmock/gmock.h>
#include <regex>

#include "accounts/LoginAttempt.h"
#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "support/PageAnswer.h"
#include "support/VisitorFactorTest.h"

namespace torvex::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SecondFactorPage : public VisitorFactorTest {
  protected:
    /// The answer to the address, with its words as their numbers.
    const std::string& show(const std::string& query = "pageId=11&from=18") {
        return answer(query, {}, {{"request_method", "GET"}});
    }
    /// Posts a form that the page has shown.
    const std::string& send(NamedValues form, NamedValues variables = {}) {
        form.emplace_back("factor_token", tokenOf(show()));
        return sendAs(std::move(form), std::move(variables));
    }
    const std::string& sendAs(NamedValues form, NamedValues variables = {}) {
        variables.emplace_back("request_method", "POST");
        variables.emplace_back("remote_addr", "192.0.2.1");
        return answer("pageId=11&from=18", std::move(form), std::move(variables));
    }
    static std::string tokenOf(const std::string& html) {
        return part(html, "name=\"factor_token\" value=\"([^\"]+)\"");
    }
    /// The secret as it is to be typed.
    static std::string secretOf(const std::string& html) {
        std::string groups = part(html, "<code class=\"factor-secret\">([^<]+)</code>");
        std::erase(groups, ' ');
        return groups;
    }
    static std::vector<std::string> codesOf(const std::string& html) {
        static const std::regex code("<li><code>([A-Z2-7-]+)</code></li>");
        std::vector<std::string> codes;
        for (std::sregex_iterator at(html.begin(), html.end(), code); at != std::sregex_iterator(); ++at)
            codes.push_back((*at)[1]);
        return codes;
    }
    void expectNeverKept() { EXPECT_EQ(host.response.cacheControl, "no-store"); }
    bool mayTry() {
        return LoginAttempt(throttle, LoginAttempt::Kind::Visitor, "192.0.2.1", "ben")
                   .waitAfterwards()
                   .count() == 0;
    }
    /// A session that was logged in by a code.
    std::vector<std::string> logInWithFactor() {
        auto paper = enrolled();
        post();
        showVisitorCode(host.context(), paper[9]);
        EXPECT_TRUE(isIn());
        return paper;
    }

    PolicyReports reports;
    GuessThrottle throttle;

  private:
    static std::string part(const std::string& html, const std::string& pattern) {
        std::smatch found;
        return std::regex_search(html, found, std::regex(pattern)) ? found[1].str() : std::string();
    }
    const std::string& answer(const std::string& query, NamedValues form, NamedValues variables) {
        host.response = {};
        ask(query, std::move(form), std::move(variables));
        secondFactorPage(host.context(), reports, throttle);
        expectNeverKept();
        return host.response.body();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SecondFactorPage, bothEngines(), engineName);

TEST_P(SecondFactorPage, IsNotThereWithoutFactors) {
    logInWithFactor();
    factors("off");
    EXPECT_THAT(show(), Not(HasSubstr("<form")));
    EXPECT_EQ(host.response.status, 404);
    factors("offered");
    host.application.set("torvex_extranet", false);
    show();
    EXPECT_EQ(host.response.status, 404);
}

TEST_P(SecondFactorPage, LeadsWhoIsNotLoggedInToTheLogin) {
    EXPECT_THAT(show(), AllOf(Not(HasSubstr("<form")), HasSubstr("href=\"/tvx.asp?pageId=18\"")));
    EXPECT_THAT(show("pageId=11&from=javascript:x"), HasSubstr("href=\"/\""));
    sendAs({{"factor_code", "123456"}});
    EXPECT_EQ(host.response.status, 403);
}

TEST_P(SecondFactorPage, AsksForTheCodeAndLeadsOn) {
    enrolled();
    post("ben", "12");
    EXPECT_THAT(show(), AllOf(HasSubstr("autocomplete=\"one-time-code\""), Not(HasSubstr(secret))));
    send({{"factor_code", code()}});
    EXPECT_EQ(location(host), "/tvx.asp?pageId=12");
    EXPECT_TRUE(isIn());
}

TEST_P(SecondFactorPage, RunsNoScriptAndSendsItsFormsHereAlone) {
    post();
    show();
    EXPECT_THAT(
        header(host, "Content-Security-Policy"),
        AllOf(StartsWith("default-src 'none'"), HasSubstr("form-action 'self'"), Not(HasSubstr("script"))));
}

TEST_P(SecondFactorPage, AWrongCodeIsCountedAndLogged) {
    enrolled();
    post();
    EXPECT_THAT(send({{"factor_code", wrongCode()}}), HasSubstr("role=\"alert\""));
    EXPECT_FALSE(isIn());
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_EQ(host.log.lines[0], "failed login from 192.0.2.1 (wrong code): visitor \"ben\"");
}

TEST_P(SecondFactorPage, WrongCodesCountWithWrongPasswords) {
    enrolled();
    post();
    for (int i = 0; i < 5; ++i)
        LoginAttempt(throttle, LoginAttempt::Kind::Visitor, "192.0.2.1", "ben").begin();
    send({{"factor_code", wrongCode()}});
    EXPECT_FALSE(mayTry());
    send({{"factor_code", code()}});
    EXPECT_EQ(host.response.status, 429);
    EXPECT_NE(header(host, "Retry-After"), "");
    EXPECT_FALSE(isIn());
}

TEST_P(SecondFactorPage, ARightPasswordForgivesNoWrongCode) {
    enrolled();
    for (int i = 0; i < 5; ++i)
        LoginAttempt(throttle, LoginAttempt::Kind::Visitor, "192.0.2.1", "ben").begin();
    host.response = {};
    ask("", {{"torvex_pageId", "11"}, {"torvex_username", "ben"}, {"torvex_password", "benpw"}},
        {{"HTTP_Referer", ownPage}, {"request_method", "POST"}, {"remote_addr", "192.0.2.1"}});
    loginPage(host.context(), throttle);
    EXPECT_EQ(location(host), "/torvex_secondFactor/?pageId=11&from=11");
    send({{"factor_code", wrongCode()}});
    EXPECT_FALSE(mayTry());
}

TEST_P(SecondFactorPage, AfterTheFifthWrongCodeItLeadsToTheLogin) {
    enrolled();
    post();
    for (int i = 0; i < 4; ++i) send({{"factor_code", wrongCode()}});
    EXPECT_THAT(send({{"factor_code", wrongCode()}}),
                AllOf(Not(HasSubstr("<form")), HasSubstr("href=\"/tvx.asp?pageId=18\"")));
    EXPECT_EQ(host.response.status, 403);
}

TEST_P(SecondFactorPage, TakesNoFormWithoutItsTokenOrOfAnotherSite) {
    enrolled();
    post();
    sendAs({{"factor_code", code()}});
    EXPECT_EQ(host.response.status, 403);
    sendAs({{"factor_code", code()}, {"factor_token", "guessed"}});
    EXPECT_EQ(host.response.status, 403);
    send({{"factor_code", code()}}, {{"http_sec_fetch_site", "cross-site"}});
    EXPECT_EQ(host.response.status, 403);
    EXPECT_FALSE(isIn());
    send({{"factor_code", code()}});
    EXPECT_TRUE(isIn());
}

TEST_P(SecondFactorPage, SetsOneUpByACodeOfTheSecretThatItShows) {
    post();
    const std::string html = show();
    secret = secretOf(html);
    EXPECT_EQ(secret.size(), 32U);
    EXPECT_THAT(html, HasSubstr("<svg class=\"qr-picture\""));
    EXPECT_EQ(secretOf(show()), secret);
    EXPECT_THAT(send({{"factor_code", wrongCode()}}), HasSubstr("role=\"alert\""));
    EXPECT_EQ(factorsAndCodes(), "0|0");
    const auto codes = codesOf(send({{"factor_code", code()}}));
    EXPECT_EQ(codes.size(), 10U);
    EXPECT_EQ(factorsAndCodes(), "1|10");
    EXPECT_THAT(show(), AllOf(Not(HasSubstr(codes[0])), Not(HasSubstr(secret)), HasSubstr("value=\"drop\"")));
    for (const std::string& line : host.log.lines) EXPECT_THAT(line, Not(HasSubstr(codes[0])));
}

TEST_P(SecondFactorPage, WhereOneIsDemandedItIsSetUpOnTheWayIn) {
    factors("demanded");
    post("ben", "12");
    secret = secretOf(show());
    EXPECT_FALSE(server().hasAccess("12"));
    const std::string html = send({{"factor_code", code()}});
    EXPECT_EQ(codesOf(html).size(), 10U);
    EXPECT_THAT(html, HasSubstr("href=\"/tvx.asp?pageId=12\""));
    EXPECT_TRUE(isIn());
    EXPECT_TRUE(server().hasAccess("12"));
    EXPECT_THAT(show(), Not(HasSubstr("value=\"drop\"")));
}

TEST_P(SecondFactorPage, GivesNewCodesByOneOfTheTelephone) {
    const auto paper = logInWithFactor();
    EXPECT_EQ(codesOf(send({{"factor_do", "renew"}, {"factor_code", paper[0]}})).size(), 0U);
    EXPECT_EQ(factorsAndCodes(), "1|9");
    const auto codes = codesOf(send({{"factor_do", "renew"}, {"factor_code", code()}}));
    EXPECT_EQ(codes.size(), 10U);
    EXPECT_NE(codes[0], paper[0]);
}

TEST_P(SecondFactorPage, DropsItByThePasswordAndShowsTheNextSecret) {
    logInWithFactor();
    EXPECT_THAT(send({{"factor_do", "drop"}, {"factor_proof", "wrong"}}), HasSubstr("role=\"alert\""));
    EXPECT_EQ(factorsAndCodes(), "1|9");
    EXPECT_NE(secretOf(send({{"factor_do", "drop"}, {"factor_proof", "benpw"}})), "");
    EXPECT_EQ(factorsAndCodes(), "0|0");
    EXPECT_TRUE(isIn());
}

TEST_P(SecondFactorPage, IsDrawnIntoTheApplicationPageOfTheSite) {
    externalApplication(7, "/torvex_secondFactor/");
    contentTemplate(1, "aa", "bb", "factor.html",
                    "<!--!torvex_content_start!-->[<!--!torvex_secondFactor!-->]<!--!torvex_content_end!-->");
    baseTemplate(
        1, "aa", "bb", "base.html",
        "<html><head></head><body><a href=\"page(11)\">one</a><!--!torvex_content!--></body></html>");
    page("aa.bb.09").id(20).type("A").application(7).contentTemplate(1).baseTemplate(1).insert();
    pageGroup(20, 1);
    enrolled();
    EXPECT_EQ(post(), "/torvex_secondFactor/?pageId=20&from=11");
    EXPECT_THAT(
        show("pageId=20&from=11"),
        AllOf(StartsWith("<html><head>"), HasSubstr("[<div class=\"factor\">"),
              HasSubstr("action=\"/torvex_secondFactor/?pageId=20&amp;from=11\""), Not(HasSubstr("<!--!"))));
}

TEST_P(SecondFactorPage, AFailureOfTheDatabaseLetsNobodyIn) {
    enrolled();
    post();
    const std::string token = tokenOf(show());
    drop("TORVEX_USER_RECOVERY_CODES");
    EXPECT_ANY_THROW(sendAs({{"factor_token", token}, {"factor_code", wrongCode()}}));
    EXPECT_FALSE(isIn());
}

}  // namespace
}  // namespace torvex::test
