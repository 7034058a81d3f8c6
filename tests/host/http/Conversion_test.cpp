// Requests and responses on their way between the network and the pages.

#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/FailureReport.h"
#include "host/http/ErrorPages.h"
#include "host/http/RequestConversion.h"
#include "host/http/ResponseConversion.h"

namespace torvex {

namespace {

using testing::HasSubstr;
using testing::Not;

const std::string& bodyOf(const Answer& answer) {
    return std::get<std::string>(answer.body);
}

Answer answerWith(const std::function<void(Response&)>& fill) {
    Response response;
    fill(response);
    return toAnswer(std::move(response));
}

TEST(ResponseConversion, ExpiresIsCountedInMinutes) {
    const Answer later = answerWith([](Response& response) { response.expires = 10; });
    EXPECT_THAT(later.fields, HasSubstr("Cache-Control: private, max-age=600\r\n"));
    const Answer now = answerWith([](Response& response) { response.expires = 0; });
    EXPECT_THAT(now.fields, HasSubstr("Cache-Control: private, no-cache\r\n"));
    EXPECT_THAT(now.fields, HasSubstr("Expires: "));
}

TEST(ResponseConversion, TheResponsesOwnCachingWins) {
    const Answer set = answerWith([](Response& response) { response.cacheControl = "no-store"; });
    EXPECT_THAT(set.fields, HasSubstr("Cache-Control: no-store\r\n"));
    const Answer added =
        answerWith([](Response& response) { response.addHeader("cache-control", "public"); });
    EXPECT_THAT(added.fields, Not(HasSubstr("private")));
}

TEST(ResponseConversion, BytesAreSentAsTheyStand) {
    const Answer answer = answerWith([](Response& response) {
        response.contentType = "image/gif";
        response.binaryWrite("\xff\x01");
    });
    EXPECT_EQ(bodyOf(answer), "\xff\x01");
    EXPECT_THAT(answer.fields, HasSubstr("Content-Type: image/gif\r\n"));
}

TEST(ResponseConversion, AnUnknownCharsetIsSentAsUtf8) {
    const Answer answer = answerWith([](Response& response) {
        response.charset = "klingon";
        response.write("é");
    });
    EXPECT_THAT(answer.fields, HasSubstr("Content-Type: text/html; charset=utf-8\r\n"));
    EXPECT_EQ(bodyOf(answer), "é");
}

TEST(ResponseConversion, FieldsOfTheServerAndMalformedOnesAreDropped) {
    const Answer answer = answerWith([](Response& response) {
        response.addHeader("Content-Length", "5");
        response.addHeader("transfer-encoding", "chunked");
        response.addHeader("X Y", "1");
        response.addHeader("X:Y", "2");
        response.addHeader("", "3");
        response.addHeader("X-Fine", "a\r\nX-Evil: b");
    });
    EXPECT_THAT(answer.fields, Not(HasSubstr("Content-Length")));
    EXPECT_THAT(answer.fields, Not(HasSubstr("ransfer")));
    EXPECT_THAT(answer.fields, HasSubstr("X-Fine: aX-Evil: b\r\n"));
    EXPECT_EQ(std::count(answer.fields.begin(), answer.fields.end(), '\n'), 3);
}

TEST(ResponseConversion, ANonsensicalStatusIsAnError) {
    EXPECT_EQ(answerWith([](Response& response) { response.status = 0; }).status, 500);
    EXPECT_EQ(answerWith([](Response& response) { response.status = 100; }).status, 500);
    EXPECT_EQ(answerWith([](Response& response) { response.status = 999; }).status, 500);
}

TEST(ResponseConversion, AnAnswerWithoutContentHasNone) {
    const Answer answer = answerWith([](Response& response) {
        response.status = 204;
        response.write("x");
    });
    EXPECT_EQ(bodyOf(answer), "");
    EXPECT_FALSE(answer.hasLength);
}

TEST(ResponseConversion, AnAddressToGoToIsPlainAscii) {
    const Answer answer = answerWith([](Response& response) { response.redirect("/a b?c=é%20\"<"); });
    EXPECT_THAT(answer.fields, HasSubstr("Location: /a%20b?c=%C3%A9%20%22%3C\r\n"));
}

TEST(RequestConversion, FindsCookiesByTheirWholeName) {
    EXPECT_EQ(cookie("a=1; torvex_session=x; b=2", "torvex_session"), "x");
    EXPECT_EQ(cookie("torvex_session=x", "torvex_session"), "x");
    EXPECT_EQ(cookie("xtorvex_session=x; torvex_session2=y", "torvex_session"), "");
    EXPECT_EQ(cookie("torvex_session", "torvex_session"), "");
    EXPECT_EQ(cookie(";;; torvex_session=x;", "torvex_session"), "x");
    EXPECT_EQ(cookie("", "torvex_session"), "");
}

TEST(RequestConversion, KnowsFormsByTheirType) {
    EXPECT_TRUE(isFormType("application/x-www-form-urlencoded"));
    EXPECT_TRUE(isFormType("Application/X-WWW-Form-URLEncoded ; charset=utf-8"));
    EXPECT_FALSE(isFormType("multipart/form-data; boundary=x"));
    EXPECT_FALSE(isFormType("application/x-www-form-urlencodedx"));
    EXPECT_FALSE(isFormType(""));
}

TEST(ErrorPages, EachSaysWhatHappenedAndIsWhole) {
    for (const int status : {400, 403, 404, 405, 408, 413, 414, 431, 500, 501, 503, 418}) {
        const Answer answer = errorPages::page(status);
        EXPECT_EQ(answer.status, status);
        EXPECT_THAT(bodyOf(answer), HasSubstr("<h1>"));
        EXPECT_THAT(bodyOf(answer), HasSubstr("viewport"));
        EXPECT_TRUE(bodyOf(answer).ends_with("</html>\n")) << status;
        EXPECT_THAT(answer.fields, HasSubstr("Cache-Control: no-store\r\n"));
    }
}

TEST(FailureReport, ValuesOfSecretNamesAreLeftOut) {
    EXPECT_EQ(withoutSecrets("id=7&Password=x&oldpwd=y&a"), "id=7&Password=...&oldpwd=...&a");
    EXPECT_EQ(withoutSecrets(""), "");
}

TEST(FailureReport, SecretNamesAreKnownHoweverTheyAreWritten) {
    EXPECT_EQ(withoutSecrets("p%61ssword=x&a=1"), "p%61ssword=...&a=1");
    EXPECT_EQ(withoutSecrets("%50%41%53%53word=x"), "%50%41%53%53word=...");
    EXPECT_EQ(withoutSecrets("pa%C5%BF%C5%BFword=x"), "pa%C5%BF%C5%BFword=...");  // the long s
    EXPECT_EQ(withoutSecrets("to%6ben=x&%73ecret=y&pw%64"), "to%6ben=...&%73ecret=...&pw%64=...");
}

}  // namespace

}  // namespace torvex
