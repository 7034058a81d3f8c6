#include <gtest/gtest.h>

#include "platform/Errors.h"
#include "support/Certificate.h"
#include "support/RunningServer.h"
#include "support/TlsLine.h"

namespace torvex {

namespace {

class TlsClient {
  public:
    explicit TlsClient(std::uint16_t port, std::string_view protocols = {})
        : line_(test::connectTo(port, "127.0.0.1"), protocols) {}
    bool shakeHands() { return line_.shakeHands(); }
    std::string protocol() const { return line_.protocol(); }
    void allowOnly(int version) { SSL_set_max_proto_version(line_.ssl(), version); }
    /// Of TLS 1.2, by their names.
    void offer(const char* suites) {
        allowOnly(TLS1_2_VERSION);
        SSL_set_cipher_list(line_.ssl(), suites);
    }
    std::string version() { return SSL_get_version(line_.ssl()); }
    bool renegotiate() { return SSL_renegotiate(line_.ssl()) == 1 && SSL_do_handshake(line_.ssl()) == 1; }
    void send(std::string_view bytes) { line_.send(bytes); }
    /// Until the server closes.
    std::string readAll() {
        std::string bytes;
        while (auto more = line_.receive(std::chrono::seconds(10))) {
            if (more->empty()) break;
            bytes += *more;
        }
        return bytes;
    }

  private:
    test::TlsLine line_;
};

class TlsTest : public testing::Test {
  protected:
    TlsTest() {
        running.options.tls = {files.path() + "/server.crt", files.path() + "/server.key"};
        test::writeCertificate(running.options.tls.certificate, running.options.tls.key);
        running.page("/hello.asp", [](HostContext& host) {
            host.response.write("Hello " + host.request.serverVariable("https"));
        });
    }

    std::string ask(std::string_view target, const std::string& lines = {}) {
        TlsClient client(running.server->port());
        EXPECT_TRUE(client.shakeHands());
        client.send("GET " + std::string(target) + " HTTP/1.1\r\nHost: a\r\nConnection: close\r\n" + lines +
                    "\r\n");
        return client.readAll();
    }
    static std::string cookieOf(const std::string& answer) {
        const std::string name = "\r\nSet-Cookie: ";
        const std::size_t begin = answer.find(name);
        if (begin == std::string::npos) return {};
        return answer.substr(begin + name.size(), answer.find('\r', begin + 2) - begin - name.size());
    }
    static void count(HostContext& host) {
        const double count = host.session.number("count") + 1;
        host.session.set("count", count);
        host.response.write("count " + std::to_string(static_cast<int>(count)));
    }

    test::PublicFolder files;
    test::RunningServer running;
};

TEST_F(TlsTest, PagesAreAnswered) {
    running.start();
    const std::string answer = ask("/hello.asp");
    EXPECT_NE(answer.find("HTTP/1.1 200 OK"), std::string::npos);
    EXPECT_TRUE(answer.ends_with("Hello on"));
}

TEST_F(TlsTest, BothSchemesAreServedSideBySideWithTheSameSessions) {
    running.options.tlsPort = 0;
    running.page("/count.asp", count);
    running.start();
    ASSERT_NE(running.server->tlsPort(), 0);
    ASSERT_NE(running.server->tlsPort(), running.server->port());
    const test::RawReply first = running.client().get("/count.asp");
    EXPECT_EQ(first.body, "count 1");
    TlsClient client(running.server->tlsPort());
    ASSERT_TRUE(client.shakeHands());
    client.send("GET /count.asp HTTP/1.1\r\nHost: a\r\nConnection: close\r\nCookie: " +
                first.sessionCookie() + "\r\n\r\n");
    EXPECT_TRUE(client.readAll().ends_with("count 2"));
}

TEST_F(TlsTest, CookiesAreSecureAndOfThisHostAlone) {
    running.page("/kept.asp", [](HostContext& host) { host.session.set("kept", true); });
    running.start();
    const std::string cookie = cookieOf(ask("/kept.asp"));
    EXPECT_TRUE(cookie.starts_with("__Host-torvex_session=")) << cookie;
    EXPECT_TRUE(cookie.ends_with("; Path=/; HttpOnly; SameSite=Lax; Secure")) << cookie;
    EXPECT_EQ(cookie.find("Domain"), std::string::npos);
}

TEST_F(TlsTest, ASessionIsKeptByItsSecureCookie) {
    running.page("/count.asp", count);
    running.start();
    const std::string cookie = cookieOf(ask("/count.asp"));
    EXPECT_TRUE(
        ask("/count.asp", "Cookie: " + cookie.substr(0, cookie.find(';')) + "\r\n").ends_with("count 2"));
}

TEST_F(TlsTest, ASessionFromHttpIsNotTakenOverWhereHttpsIsWhatTheSiteIs) {
    running.options.httpsAlone = true;
    running.page("/count.asp", count);
    running.start();
    const std::string cookie = cookieOf(ask("/count.asp"));
    const std::string token = cookie.substr(cookie.find('='), 33);
    EXPECT_TRUE(ask("/count.asp", "Cookie: __Host-torvex_session" + token + "\r\n").ends_with("count 2"));
    EXPECT_TRUE(ask("/count.asp", "Cookie: torvex_session" + token + "\r\n").ends_with("count 1"));
}

TEST_F(TlsTest, TheCookieOfThisHostGoesBeforeOneThatAnybodyMayHavePlanted) {
    running.page("/count.asp", count);
    running.start();
    const std::string mine = cookieOf(ask("/count.asp"));
    const std::string planted = cookieOf(ask("/count.asp"));
    ask("/count.asp", "Cookie: " + mine.substr(0, mine.find(';')) + "\r\n");
    EXPECT_TRUE(ask("/count.asp", "Cookie: torvex_session" + planted.substr(planted.find('='), 33) + "; " +
                                      mine.substr(0, mine.find(';')) + "\r\n")
                    .ends_with("count 3"));
}

TEST_F(TlsTest, OverHttpEverythingLeadsToHttps) {
    running.options.httpsAlone = true;
    running.options.tlsPort = 0;
    running.form("/form.asp", [](HostContext& host) { host.response.write("written"); });
    running.start();
    const std::string port = std::to_string(running.server->tlsPort());
    const auto leadsTo = [&](const std::string& request) {
        const test::RawReply reply = running.client().ask(request);
        EXPECT_EQ(reply.status, 307) << request;
        EXPECT_EQ(reply.field("Cache-Control"), "no-store");
        EXPECT_EQ(reply.field("Set-Cookie"), "");
        EXPECT_EQ(reply.field("Strict-Transport-Security"), "");
        EXPECT_EQ(reply.body, "");
        return reply.field("Location");
    };
    EXPECT_EQ(leadsTo("GET /hello.asp?a=1&b=%20 HTTP/1.1\r\nHost: a.example:8080\r\n\r\n"),
              "https://a.example:" + port + "/hello.asp?a=1&b=%20");
    EXPECT_EQ(leadsTo("GET /nothing.txt HTTP/1.1\r\nHost: a.example\r\n\r\n"),
              "https://a.example/nothing.txt");
    EXPECT_EQ(leadsTo("GET http://[::1]:80?a=1 HTTP/1.1\r\nHost: b\r\n\r\n"),
              "https://[::1]:" + port + "/?a=1");
    EXPECT_EQ(
        leadsTo("POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
                "Content-Length: 3\r\n\r\na=1"),
        "https://a/form.asp");
    EXPECT_EQ(running.client().ask("GET / HTTP/1.0\r\n\r\n").status, 400);
}

TEST_F(TlsTest, HttpIsAnsweredWhereTheSiteIsOnBoth) {
    running.options.tlsPort = 0;
    running.start();
    const test::RawReply reply = running.client().get("/hello.asp");
    EXPECT_EQ(reply.body, "Hello off");
    EXPECT_EQ(reply.field("Strict-Transport-Security"), "");
    TlsClient client(running.server->tlsPort());
    ASSERT_TRUE(client.shakeHands());
    client.send("GET /hello.asp HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
    EXPECT_EQ(client.readAll().find("Strict-Transport-Security"), std::string::npos);
}

TEST_F(TlsTest, WhoeverOpenedTheSiteGetsNoHoldOfIt) {
    running.start();
    EXPECT_NE(ask("/hello.asp").find("\r\nCross-Origin-Opener-Policy: same-origin-allow-popups\r\n"),
              std::string::npos);
}

TEST_F(TlsTest, BrowsersAreToldToStayOnHttps) {
    running.options.httpsAlone = true;
    running.options.strictTransport = std::chrono::seconds(1000);
    running.start();
    for (const char* target : {"/hello.asp", "/nothing.txt", "/%zz"})
        EXPECT_NE(ask(target).find("\r\nStrict-Transport-Security: max-age=1000\r\n"), std::string::npos)
            << target;
}

TEST_F(TlsTest, BrowsersAreToldNothingWhereTheSettingIsOff) {
    running.options.httpsAlone = true;
    running.options.strictTransport = std::chrono::seconds(0);
    running.start();
    EXPECT_EQ(ask("/hello.asp").find("Strict-Transport-Security"), std::string::npos);
}

TEST_F(TlsTest, OnlySuitesWithPassingKeysAndAuthenticationAreSpoken) {
    running.start();
    for (const char* suites : {"ECDHE-ECDSA-AES128-GCM-SHA256", "ECDHE-ECDSA-AES256-GCM-SHA384",
                               "ECDHE-ECDSA-CHACHA20-POLY1305"}) {
        TlsClient client(running.server->port());
        client.offer(suites);
        EXPECT_TRUE(client.shakeHands()) << suites;
        EXPECT_EQ(client.version(), "TLSv1.2");
    }
    for (const char* suites : {"ECDHE-ECDSA-AES128-SHA", "ECDHE-ECDSA-AES256-SHA384",
                               "ECDHE-ECDSA-AES128-CCM", "AES128-GCM-SHA256", "DHE-RSA-AES128-GCM-SHA256"}) {
        TlsClient client(running.server->port());
        client.offer(suites);
        EXPECT_FALSE(client.shakeHands()) << suites;
    }
}

TEST_F(TlsTest, TheNewestVersionIsSpoken) {
    running.start();
    TlsClient client(running.server->port());
    EXPECT_TRUE(client.shakeHands());
    EXPECT_EQ(client.version(), "TLSv1.3");
}

TEST_F(TlsTest, AConnectionIsNotNegotiatedAnew) {
    running.start();
    TlsClient client(running.server->port());
    client.allowOnly(TLS1_2_VERSION);
    ASSERT_TRUE(client.shakeHands());
    EXPECT_FALSE(client.renegotiate());
}

TEST_F(TlsTest, SmallAndLargeFilesArriveWhole) {
    std::string bytes;
    for (int i = 0; bytes.size() < 1'000'000; ++i) bytes += std::to_string(i);
    files.write("public/big.txt", bytes);
    files.write("public/small.txt", "small");
    running.options.rootFolder = files.path() + "/public";
    running.start();
    EXPECT_TRUE(ask("/big.txt").ends_with("\r\n\r\n" + bytes));
    EXPECT_TRUE(ask("/small.txt").ends_with("\r\n\r\nsmall"));
}

TEST_F(TlsTest, AConnectionServesSeveralRequests) {
    running.start();
    TlsClient client(running.server->port());
    ASSERT_TRUE(client.shakeHands());
    client.send(
        "GET /hello.asp HTTP/1.1\r\nHost: a\r\n\r\nGET /hello.asp HTTP/1.1\r\nHost: a\r\nConnection: "
        "close\r\n\r\n");
    const std::string answers = client.readAll();
    EXPECT_NE(answers.find("Hello on"), answers.rfind("Hello on"));
}

TEST_F(TlsTest, WhatIsSpokenIsAgreedOn) {
    running.start();
    const auto agreed = [&](std::string_view offered) {
        TlsClient client(running.server->port(), offered);
        return client.shakeHands() ? client.protocol() : "refused";
    };
    EXPECT_EQ(agreed("\x08http/1.1\x02h2"), "h2");
    EXPECT_EQ(agreed("\x08http/1.1"), "http/1.1");
    EXPECT_EQ(agreed(""), "");
    EXPECT_EQ(agreed("\x04smtp"), "refused");
}

TEST_F(TlsTest, Http2IsNotOfferedWhereTheSettingIsOff) {
    running.options.http2 = false;
    running.start();
    TlsClient client(running.server->port(), "\x02h2\x08http/1.1");
    ASSERT_TRUE(client.shakeHands());
    EXPECT_EQ(client.protocol(), "http/1.1");
}

TEST_F(TlsTest, Http2IsSpokenOverTheOlderTlsToo) {
    running.start();
    TlsClient client(running.server->port(), "\x02h2");
    client.offer("ECDHE-ECDSA-AES128-GCM-SHA256");
    ASSERT_TRUE(client.shakeHands());
    EXPECT_EQ(client.protocol(), "h2");
}

TEST_F(TlsTest, OldVersionsAreRefused) {
    running.start();
    TlsClient client(running.server->port());
    client.allowOnly(TLS1_1_VERSION);
    EXPECT_FALSE(client.shakeHands());
}

TEST_F(TlsTest, AVisitorWhoNeverShakesHandsIsCutOff) {
    running.options.deadlines.header = std::chrono::milliseconds(200);
    running.start();
    EXPECT_TRUE(running.client().isClosedWithin(std::chrono::seconds(3)));
}

TEST_F(TlsTest, ASlowHeaderIsCutOffByItsTotalTime) {
    running.options.deadlines.header = std::chrono::milliseconds(300);
    running.start();
    TlsClient client(running.server->port());
    ASSERT_TRUE(client.shakeHands());
    client.send("GET /hello.asp HTTP/1.1\r\n");
    EXPECT_NE(client.readAll().find("HTTP/1.1 408 "), std::string::npos);
}

TEST_F(TlsTest, ACertificateThatCannotBeReadIsReported) {
    running.options.tls.certificate = files.path() + "/nothing.crt";
    EXPECT_THROW(running.start(), Error);
}

}  // namespace

}  // namespace torvex
