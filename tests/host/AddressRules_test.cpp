// What an address says of itself: its reach, its methods, its bodies, its refusals.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/HttpServer.h"
#include "platform/Errors.h"
#include "platform/Request.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using test::RawHttpClient;
using test::RawReply;
using test::RunningServer;
using testing::HasSubstr;

PageHandler says(std::string text) {
    return [text = std::move(text)](HostContext& host) { host.response.write(text); };
}

Response inItsForm(const Refused& refused) {
    Response response;
    response.status = refused.status;
    response.contentType = "application/problem+json";
    response.addHeader("X-Form", "own");
    response.write(std::to_string(refused.status) + " " + std::string(refused.languages) + " " +
                   (refused.reference.empty() ? "-" : "logged") + " " +
                   (refused.failure ? refused.failure->what() : "-"));
    return response;
}

std::string request(const std::string& method, const std::string& target, const std::string& type = {},
                    const std::string& body = {}) {
    std::string text = method + " " + target + " HTTP/1.1\r\nHost: a\r\nAccept-Language: de\r\n";
    if (!type.empty())
        text += "Content-Type: " + type + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n";
    return text + "\r\n" + body;
}

class AddressRules : public testing::Test {
  protected:
    void route(PageRoute made) { running.pages.push_back(std::move(made)); }
    void start() { running.start(); }
    RawReply ask(const std::string& text) { return running.client().ask(text); }
    std::string body(const std::string& target) { return ask(request("GET", target)).body; }

    RunningServer running;
};

/// What holds whatever is spoken.
class AddressRulesOfEveryProtocol : public AddressRules, public testing::WithParamInterface<test::Protocol> {
  protected:
    AddressRulesOfEveryProtocol() { running.protocol = GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Protocols, AddressRulesOfEveryProtocol, test::everyProtocol, test::nameOf);

TEST_P(AddressRulesOfEveryProtocol, AFolderTakesWhatIsBelowItAndTheLongestOneWins) {
    route({.path = "/api/", .handler = says("all"), .reach = PageRoute::Reach::Below});
    route({.path = "/api/uploads/", .handler = says("uploads"), .reach = PageRoute::Reach::Below});
    route({.path = "/api/uploads/new", .handler = says("exact")});
    start();
    EXPECT_EQ(body("/api/x/y"), "all");
    EXPECT_EQ(body("/API/"), "all");
    EXPECT_EQ(body("/api/uploads"), "all");
    EXPECT_EQ(body("/api/Uploads/12"), "uploads");
    EXPECT_EQ(body("/api/uploads/new"), "exact");
    EXPECT_EQ(body("/api/uploads/newer"), "uploads");
    EXPECT_EQ(ask(request("GET", "/api")).status, 404);
}

TEST_P(AddressRulesOfEveryProtocol, EachAddressTakesItsOwnMethodsAndSaysWhich) {
    route({.path = "/a",
           .handler = says("a"),
           .methods = {Method::Head, Method::Patch, Method::Delete, Method::Options}});
    start();
    for (const std::string method : {"PATCH", "DELETE", "OPTIONS"})
        EXPECT_EQ(ask(request(method, "/a")).status, 200) << method;
    for (const std::string method : {"GET", "POST", "PUT", "TRACE"}) {
        const RawReply reply = ask(request(method, "/a"));
        EXPECT_EQ(reply.status, 405) << method;
        EXPECT_EQ(reply.field("Allow"), "HEAD, PATCH, DELETE, OPTIONS") << method;
    }
}

TEST_P(AddressRulesOfEveryProtocol, AnAddressThatSortsItsMethodsItselfIsAskedForEach) {
    route({.path = "/a", .handler = says("a"), .methods = methods::any});
    start();
    for (const std::string method : {"GET", "POST", "PUT", "TRACE", "PROPFIND"})
        EXPECT_EQ(ask(request(method, "/a")).status, 200) << method;
}

TEST_P(AddressRulesOfEveryProtocol, EachMethodThatWritesMayBringABodyOfTheTypesThatTheAddressTakes) {
    const auto echo = [](HostContext& host) {
        host.response.write(host.request.body() + "|" + host.request.formField("a"));
    };
    route({.path = "/a",
           .handler = echo,
           .methods = {Method::Post, Method::Patch},
           .bodyLimit = 10,
           .bodyTypes = {"application/json", "application/offset+octet-stream"}});
    start();
    EXPECT_EQ(ask(request("PATCH", "/a", "application/offset+octet-stream", "a=1")).body, "a=1|");
    EXPECT_EQ(ask(request("POST", "/a", "Application/JSON; charset=utf-8", "a=1")).body, "a=1|");
    EXPECT_EQ(ask(request("PATCH", "/a", "application/x-www-form-urlencoded", "a=1")).status, 415);
    EXPECT_EQ(ask(request("PATCH", "/a", "application/json", "12345678901")).status, 413);
}

TEST_P(AddressRulesOfEveryProtocol, WhatLooksLikeManyFieldsIsNoFormWhereNoFormsAreTaken) {
    running.options.limits.formFields = 3;
    route({.path = "/a",
           .handler = [](HostContext& host) { host.response.write(host.request.body()); },
           .methods = {Method::Post},
           .bodyTypes = {"application/json"}});
    start();
    EXPECT_EQ(ask(request("POST", "/a", "application/json", "\"&&&&&&\"")).body, "\"&&&&&&\"");
}

TEST_P(AddressRulesOfEveryProtocol, RefusalsOfTheHostHaveTheFormOfTheAddress) {
    running.options.hosts = {"a"};
    route({.path = "/a/",
           .handler = says("a"),
           .methods = methods::form,
           .bodyLimit = 3,
           .bodyTypes = {"application/json"},
           .reach = PageRoute::Reach::Below,
           .refusal = inItsForm});
    start();
    const auto refusal = [&](const std::string& text) {
        const RawReply reply = ask(text);
        EXPECT_EQ(reply.field("Content-Type").substr(0, 24), "application/problem+json") << text;
        EXPECT_EQ(reply.field("X-Form"), "own") << text;
        EXPECT_EQ(reply.body.substr(0, 3), std::to_string(reply.status)) << text;
        return reply.body.substr(0, 6);
    };
    EXPECT_EQ(refusal(request("PUT", "/a/x")), "405 de");
    EXPECT_EQ(refusal(request("BREW", "/a/x")), "501 de");
    EXPECT_EQ(refusal(request("POST", "/a/x", "text/plain", "1")), "415 de");
    EXPECT_EQ(refusal(request("POST", "/a/x", "application/json", "1234")), "413 de");
    if (GetParam() != test::Protocol::Http2) {
        EXPECT_EQ(refusal("POST /a/x HTTP/1.1\r\nHost: a\r\nAccept-Language: de\r\nContent-Type: "
                          "application/json\r\nTransfer-Encoding: chunked\r\n\r\nx\r\n"),
                  "400 de");
    }
    EXPECT_EQ(refusal("GET /a/x HTTP/1.1\r\nHost: stranger\r\nAccept-Language: de\r\n\r\n"), "421 de");
    EXPECT_EQ(refusal("GET /a/x HTTP/1.1\r\nHost: a\r\nAccept-Language: de\r\nExpect: gold\r\n\r\n"),
              "417 de");
    EXPECT_EQ(ask(request("PUT", "/a/x")).field("Allow"), "GET, HEAD, POST");
}

TEST_F(AddressRules, ARefusalBehindAnswersOfAnotherAddressHasNotItsForm) {
    route({.path = "/a/", .handler = says("a"), .reach = PageRoute::Reach::Below, .refusal = inItsForm});
    start();
    RawHttpClient connection = running.client();
    EXPECT_EQ(connection.ask(request("GET", "/a/x")).body, "a");
    const RawReply reply = connection.ask("GET /b HTTP/1.1\r\nHost: a\nbroken\r\n\r\n");
    EXPECT_EQ(reply.status, 400);
    EXPECT_EQ(reply.field("X-Form"), "");
}

TEST_P(AddressRulesOfEveryProtocol, AFailureHasTheFormOfTheAddressAndItsReferenceStandsInTheLog) {
    route({.path = "/a",
           .handler = [](HostContext&) { throw Error("the disk is full"); },
           .refusal = inItsForm});
    start();
    const RawReply reply = ask(request("GET", "/a"));
    EXPECT_EQ(reply.status, 500);
    EXPECT_EQ(reply.body, "500 de logged the disk is full");
    EXPECT_THAT(running.logged(), testing::Contains(HasSubstr("the disk is full")));
}

TEST_P(AddressRulesOfEveryProtocol, AFieldThatAnAddressSetsStandsInPlaceOfTheServers) {
    route({.path = "/a", .handler = [](HostContext& host) {
               host.response.addHeader("X-Frame-Options", "DENY");
               host.response.addHeader("Torvex-Api", "1");
           }});
    start();
    const RawReply reply = ask(request("GET", "/a"));
    EXPECT_THAT(reply.fields("X-Frame-Options"), testing::ElementsAre("DENY"));
    EXPECT_THAT(reply.fields("X-Content-Type-Options"), testing::ElementsAre("nosniff"));
    EXPECT_EQ(reply.field("Torvex-Api"), "1");
}

}  // namespace
}  // namespace torvex
