// The program with a certificate, asked by a client that others have made.

#include <curl/curl.h>
#include <gmock/gmock.h>

#include "cli/ProgramFixture.h"
#include "support/Certificate.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;

struct Told {
    long status = 0;
    long version = 0;
    std::string body;
};

std::size_t append(char* bytes, std::size_t size, std::size_t count, void* told) {
    static_cast<Told*>(told)->body.append(bytes, size * count);
    return size * count;
}

class ServeHttp2 : public ProgramTest {
  protected:
    /// An installation with a certificate; `server` are further lines of [server].
    void init(const std::string& server = {}) {
        output({"init", site(), "--demo", "--admin-password", "word"});
        writeCertificate(site() + "/cert.pem", site() + "/key.pem");
        addSettings("tls", "certificate = \"cert.pem\"\nkey = \"key.pem\"");
        addSettings("server", server);
    }
    static Told ask(const RunningProgram& program, const std::string& path) {
        Told told;
        CURL* const handle = curl_easy_init();
        const std::string url = addressOf(program) + path;
        curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
        curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
        curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 0L);
        curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 0L);
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, append);
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, &told);
        EXPECT_EQ(curl_easy_perform(handle), CURLE_OK);
        curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &told.status);
        curl_easy_getinfo(handle, CURLINFO_HTTP_VERSION, &told.version);
        curl_easy_cleanup(handle);
        return told;
    }
};

TEST_F(ServeHttp2, AnswersPagesByIt) {
    init();
    const auto server = serve();
    const Told told = ask(*server, "tvx.asp?pageId=4");
    EXPECT_EQ(told.status, 200);
    EXPECT_EQ(told.version, CURL_HTTP_VERSION_2_0);
    EXPECT_THAT(told.body, HasSubstr("</html>"));
}

TEST_F(ServeHttp2, SpeaksTheOlderOneWhereTheSettingSaysSo) {
    init("http2 = false");
    const auto server = serve();
    const Told told = ask(*server, "tvx.asp?pageId=4");
    EXPECT_EQ(told.status, 200);
    EXPECT_EQ(told.version, CURL_HTTP_VERSION_1_1);
}

}  // namespace
}  // namespace torvex::test
