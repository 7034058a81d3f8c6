#include <array>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

#include "platform/Errors.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

template <auto Free>
struct Freed {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
template <class T, auto Free>
using Held = std::unique_ptr<T, Freed<Free>>;

/// A key and a certificate for it, signed by itself.
void writeCertificate(const std::string& certificateFile, const std::string& keyFile) {
    const Held<EVP_PKEY, EVP_PKEY_free> key(EVP_EC_gen("P-256"));
    const Held<X509, X509_free> certificate(X509_new());
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -60);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
    X509_set_pubkey(certificate.get(), key.get());
    X509_sign(certificate.get(), key.get(), EVP_sha256());
    const Held<FILE, std::fclose> out(std::fopen(certificateFile.c_str(), "w"));
    PEM_write_X509(out.get(), certificate.get());
    const Held<FILE, std::fclose> keyOut(std::fopen(keyFile.c_str(), "w"));
    PEM_write_PrivateKey(keyOut.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr);
}

class TlsClient {
  public:
    explicit TlsClient(test::RawHttpClient connection)
        : connection_(std::move(connection)),
          context_(SSL_CTX_new(TLS_client_method())),
          ssl_(SSL_new(context_.get())) {
        SSL_set_fd(ssl_.get(), connection_.descriptor());
    }
    bool shakeHands() { return SSL_connect(ssl_.get()) == 1; }
    void allowOnly(int version) { SSL_set_max_proto_version(ssl_.get(), version); }
    void send(std::string_view bytes) { SSL_write(ssl_.get(), bytes.data(), static_cast<int>(bytes.size())); }
    /// Until as much has come or the server closes.
    std::string read(std::size_t size) {
        std::string bytes;
        std::array<char, 16384> space;
        while (bytes.size() < size) {
            const int count = SSL_read(ssl_.get(), space.data(), static_cast<int>(space.size()));
            if (count <= 0) break;
            bytes.append(space.data(), static_cast<std::size_t>(count));
        }
        return bytes;
    }
    std::string readAll() { return read(std::string::npos); }

  private:
    test::RawHttpClient connection_;
    Held<SSL_CTX, SSL_CTX_free> context_;
    Held<SSL, SSL_free> ssl_;
};

class TlsTest : public testing::Test {
  protected:
    TlsTest() {
        std::signal(SIGPIPE,
                    SIG_IGN);  // the client's library writes to connections that the server has closed
        running.options.tls = {files.path() + "/server.crt", files.path() + "/server.key"};
        writeCertificate(running.options.tls.certificate, running.options.tls.key);
        running.page("/hello.asp", [](HostContext& host) {
            host.response.write("Hello " + host.request.serverVariable("https"));
        });
    }

    std::string ask(std::string_view target) {
        TlsClient client(running.client());
        EXPECT_TRUE(client.shakeHands());
        client.send("GET " + std::string(target) + " HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
        return client.readAll();
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
    running.page("/count.asp", [](HostContext& host) {
        const double count = host.session.number("count") + 1;
        host.session.set("count", count);
        host.response.write("count " + std::to_string(static_cast<int>(count)));
    });
    running.start();
    ASSERT_NE(running.server->tlsPort(), 0);
    ASSERT_NE(running.server->tlsPort(), running.server->port());
    const test::RawReply first = running.client().get("/count.asp");
    EXPECT_EQ(first.body, "count 1");
    TlsClient client{test::RawHttpClient(running.server->tlsPort())};
    ASSERT_TRUE(client.shakeHands());
    client.send("GET /count.asp HTTP/1.1\r\nHost: a\r\nConnection: close\r\nCookie: " +
                first.sessionCookie() + "\r\n\r\n");
    EXPECT_TRUE(client.readAll().ends_with("count 2"));
}

TEST_F(TlsTest, CookiesAreMarkedSecure) {
    running.start();
    EXPECT_NE(ask("/hello.asp").find("; SameSite=Lax; Secure\r\n"), std::string::npos);
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
    TlsClient client(running.client());
    ASSERT_TRUE(client.shakeHands());
    client.send(
        "GET /hello.asp HTTP/1.1\r\nHost: a\r\n\r\nGET /hello.asp HTTP/1.1\r\nHost: a\r\nConnection: "
        "close\r\n\r\n");
    const std::string answers = client.readAll();
    EXPECT_NE(answers.find("Hello on"), answers.rfind("Hello on"));
}

TEST_F(TlsTest, OldVersionsAreRefused) {
    running.start();
    TlsClient client(running.client());
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
    TlsClient client(running.client());
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
