#include "installation/Settings.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/Errors.h"

namespace torvex {
namespace {

using testing::HasSubstr;
using namespace std::chrono_literals;

class SettingsFile : public testing::Test {
  protected:
    SettingsFile() { std::filesystem::create_directories(folder_); }
    ~SettingsFile() override { std::filesystem::remove_all(folder_); }

    Settings read(const std::string& text) {
        std::ofstream(file()) << text;
        return readSettings(file());
    }
    std::string refusal(const std::string& text) {
        try {
            read(text);
        } catch (const Error& error) {
            return error.what();
        }
        return "accepted";
    }
    std::filesystem::path file() const { return folder_ / "torvex.toml"; }

    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("torvex-settings-" + std::to_string(getpid()));
};

TEST_F(SettingsFile, EmptyFileGivesTheDefaults) {
    const Settings settings = read("");
    EXPECT_EQ(settings.database.url, "sqlite:data");
    EXPECT_EQ(settings.server.address, "127.0.0.1");
    EXPECT_EQ(settings.server.port, 8080);
    EXPECT_EQ(settings.server.tls.certificate, "");
    EXPECT_EQ(settings.paths.images, "images");
    EXPECT_EQ(settings.paths.documents, "documents");
    EXPECT_FALSE(settings.feeds.privateAddresses);
    EXPECT_EQ(settings.feeds.time, std::chrono::seconds(5));
    EXPECT_EQ(settings.server.sessions.authorIdle, std::chrono::hours(1));
    EXPECT_EQ(settings.logLevel, "info");
}

TEST_F(SettingsFile, EverySectionIsRead) {
    const Settings settings = read(R"(
[database]
url = "postgresql://db.example/site"
user = "web"
password = "word"
[server]
listen = "[::1]:9000"
threads = 3
workers = 7
[tls]
certificate = "tls/site.pem"
key = "/etc/site.key"
[limits]
body_bytes = 1000
upload_bytes = 5000
header_seconds = 2.5
author_idle_seconds = 7200
[paths]
images = "pictures"
[feeds]
private_addresses = true
seconds = 1.5
[log]
level = "debug"
)");
    EXPECT_EQ(settings.database.url, "postgresql://db.example/site");
    EXPECT_EQ(settings.database.user, "web");
    EXPECT_EQ(settings.database.password, "word");
    EXPECT_EQ(settings.server.address, "::1");
    EXPECT_EQ(settings.server.port, 9000);
    EXPECT_EQ(settings.server.loops, 3U);
    EXPECT_EQ(settings.server.workers, 7U);
    EXPECT_EQ(settings.server.tls.certificate, (folder_ / "tls/site.pem").string());
    EXPECT_EQ(settings.server.tls.key, "/etc/site.key");
    EXPECT_EQ(settings.server.limits.body, 1000U);
    EXPECT_EQ(settings.server.limits.upload, 5000U);
    EXPECT_EQ(settings.server.sessions.authorIdle, std::chrono::hours(2));
    EXPECT_EQ(settings.server.deadlines.header, 2500ms);
    EXPECT_EQ(settings.paths.images, "pictures");
    EXPECT_EQ(settings.paths.documents, "documents");
    EXPECT_TRUE(settings.feeds.privateAddresses);
    EXPECT_EQ(settings.feeds.time, 1500ms);
    EXPECT_EQ(settings.logLevel, "debug");
}

TEST_F(SettingsFile, WhoAsksAndForWhatIsRead) {
    const Settings settings = read(
        "[server]\ntrusted_proxies = [\"127.0.0.1\", \"10.0.0.0/8\"]\nhosts = [\"*.site.test\"]\n"
        "https_only = true\nstrict_transport_seconds = 60\npermissions_policy = \"\"\n");
    EXPECT_EQ(settings.server.trustedProxies, (std::vector<std::string>{"127.0.0.1", "10.0.0.0/8"}));
    EXPECT_EQ(settings.server.hosts, std::vector<std::string>{"*.site.test"});
    EXPECT_TRUE(settings.server.httpsAlone);
    EXPECT_EQ(settings.server.strictTransport, 60s);
    EXPECT_EQ(settings.server.permissionsPolicy, "");
    EXPECT_TRUE(read("").server.trustedProxies.empty());
    EXPECT_TRUE(read("").server.hosts.empty());
}

TEST_F(SettingsFile, AWrongProxyOrHostIsRefusedWithItsLine) {
    for (const char* proxies : {"\"127.0.0.1\"", "[1]", "[\"localhost\"]", "[\"10.0.0.0/33\"]"})
        EXPECT_THAT(refusal(std::string("[server]\ntrusted_proxies = ") + proxies + "\n"),
                    HasSubstr("torvex.toml:2: trusted_proxies in [server] must be"))
            << proxies;
    for (const char* hosts : {"\"a\"", "[\"\"]", "[\"a:80\"]", "[\"https://a\"]"})
        EXPECT_THAT(refusal(std::string("[server]\nhosts = ") + hosts + "\n"),
                    HasSubstr("torvex.toml:2: hosts in [server] must be"))
            << hosts;
    EXPECT_THAT(refusal("[server]\npermissions_policy = \"a\\r\\nX: y\"\n"), HasSubstr("torvex.toml:2: "));
    EXPECT_THAT(refusal("[server]\nstrict_transport_seconds = -1\n"), HasSubstr("torvex.toml:2: "));
}

TEST_F(SettingsFile, WithACertificateHttpsIsWhatTheSiteIs) {
    const std::string tls = "[tls]\ncertificate = \"a\"\nkey = \"b\"\n";
    EXPECT_FALSE(read("").server.httpsAlone);
    EXPECT_TRUE(read(tls).server.httpsAlone);
    EXPECT_FALSE(read(tls + "[server]\nhttps_only = false\n").server.httpsAlone);
}

TEST_F(SettingsFile, WithoutACertificateHttpsTakesAProxyThatIsBelieved) {
    EXPECT_THAT(refusal("[server]\nhttps_only = true\n"),
                HasSubstr("torvex.toml:2: https_only in [server] must be false without a certificate"));
    EXPECT_TRUE(read("[server]\nhttps_only = true\ntrusted_proxies = [\"10.0.0.1\"]\n").server.httpsAlone);
}

TEST_F(SettingsFile, WhereAuthorsWorkIsRead) {
    EXPECT_EQ(read("").server.authoringHost, "");
    EXPECT_EQ(read("").authoring.interface, "");
    const Settings settings = read("[authoring]\nhost = \"authors.site.test\"\ninterface = \"ui/dist\"\n");
    EXPECT_EQ(settings.server.authoringHost, "authors.site.test");
    EXPECT_EQ(settings.authoring.interface, (folder_ / "ui/dist").string());
    EXPECT_EQ(read("[authoring]\ninterface = \"/src/ui/dist\"\n").authoring.interface, "/src/ui/dist");
}

TEST_F(SettingsFile, TheAuthorsHostIsOneNameThatIsAnswered) {
    for (const char* host : {"*.site.test", "a:80", "https://a", "a/b"})
        EXPECT_THAT(refusal(std::string("[authoring]\nhost = \"") + host + "\"\n"),
                    HasSubstr("torvex.toml:2: host in [authoring] must be a name"))
            << host;
    EXPECT_THAT(refusal("[authoring]\nhost = \"a.test\"\n[server]\nhosts = [\"b.test\"]\n"),
                HasSubstr("torvex.toml:2: host in [authoring] must be among the hosts"));
    EXPECT_EQ(refusal("[authoring]\nhost = \"a.test\"\n[server]\nhosts = [\"*.test\"]\n"
                      "[database]\nurl = \"sqlite:data\"\n"),
              "accepted");
}

TEST_F(SettingsFile, WithoutAMailServerThereIsNone) {
    const Settings settings = read("");
    EXPECT_EQ(settings.mail.server.host, "");
    EXPECT_EQ(settings.mail.sender, "");
}

TEST_F(SettingsFile, AMailServerIsRead) {
    const MailSettings mail = read(R"([mail]
server = "mail.example.org:2525"
tls = "none"
user = "web"
password = "word"
sender = "web@example.org"
seconds = 2.5
)")
                                  .mail;
    EXPECT_EQ(mail.server.host, "mail.example.org");
    EXPECT_EQ(mail.server.port, 2525);
    EXPECT_EQ(mail.server.tls, MailTls::None);
    EXPECT_EQ(mail.server.user, "web");
    EXPECT_EQ(mail.server.password, "word");
    EXPECT_EQ(mail.server.time, 2500ms);
    EXPECT_EQ(mail.sender, "web@example.org");
}

TEST_F(SettingsFile, AMailServerHasTheUsualPortOfItsLine) {
    const std::string server = "[mail]\nserver = \"mail.example.org\"\n";
    EXPECT_EQ(read(server).mail.server.port, 587);
    EXPECT_EQ(read(server).mail.server.tls, MailTls::StartTls);
    EXPECT_EQ(read(server + "tls = \"always\"\n").mail.server.port, 465);
    EXPECT_EQ(read(server + "tls = \"none\"\n").mail.server.port, 25);
}

TEST_F(SettingsFile, WrongMailSettingsAreRefusedWithTheirLine) {
    for (const std::string line :
         {"server = \"smtp://mail.example.org\"", "server = \"a b\"", "server = \"a:x\"",
          "server = \"web@mail.example.org\"", "tls = \"yes\"", "sender = \"web\"",
          "sender = \"a@b.example\\r\\nBcc: c@d.example\"", "sevrer = \"a\""})
        EXPECT_THAT(refusal("[mail]\n" + line + "\n"), HasSubstr("torvex.toml:2: ")) << line;
}

TEST_F(SettingsFile, TypesOfPublicFilesAreRead) {
    EXPECT_TRUE(read("").server.fileTypes.empty());
    const Settings settings =
        read("[files]\ntypes = { step = \"model/step\", dat = \"application/x-dat\" }\n");
    EXPECT_EQ(settings.server.fileTypes, (MediaTypes{{"dat", "application/x-dat"}, {"step", "model/step"}}));
}

TEST_F(SettingsFile, AWrongTypeOfPublicFilesIsRefused) {
    for (const char* types :
         {"3", "[\"step\"]", "{ step = 3 }", "{ \".step\" = \"model/step\" }", "{ STEP = \"model/step\" }",
          "{ step = \"model\" }", "{ step = \"a/b\\r\\nX: y\" }"})
        EXPECT_THAT(refusal(std::string("[files]\ntypes = ") + types + "\n"),
                    HasSubstr("torvex.toml:2: types in [files] must be"))
            << types;
}

TEST_F(SettingsFile, UnknownKeyIsRefusedWithItsLineAndTheKnownOnes) {
    const std::string refused = refusal("[server]\n\nlisen = \"127.0.0.1:1\"\n");
    EXPECT_THAT(refused, HasSubstr("torvex.toml:3: "));
    EXPECT_THAT(refused, HasSubstr("no setting lisen in [server]"));
    EXPECT_THAT(refused, HasSubstr("listen, user, threads, workers"));
}

TEST_F(SettingsFile, UnknownSectionIsRefusedWithTheKnownOnes) {
    const std::string refused = refusal("[serve]\nlisten = \"127.0.0.1:1\"\n");
    EXPECT_THAT(refused, HasSubstr("torvex.toml:1: there is no section [serve]"));
    EXPECT_THAT(refused, HasSubstr("database, server"));
}

TEST_F(SettingsFile, KeyOutsideASectionIsRefused) {
    EXPECT_THAT(refusal("listen = \"127.0.0.1:1\"\n"), HasSubstr("torvex.toml:1: "));
}

TEST_F(SettingsFile, SectionThatIsAValueIsRefused) {
    EXPECT_THAT(refusal("server = 3\n"), HasSubstr("torvex.toml:1: server must be a section"));
}

TEST_F(SettingsFile, WrongKindIsRefusedWithWhatIsExpected) {
    EXPECT_THAT(refusal("[server]\nworkers = \"two\"\n"),
                HasSubstr("torvex.toml:2: workers in [server] must be a whole number from 0 to 1024"));
    EXPECT_THAT(refusal("[server]\nworkers = 2000\n"), HasSubstr("a whole number from 0 to 1024"));
    EXPECT_THAT(refusal("[paths]\nimages = 3\n"), HasSubstr("images in [paths] must be a text in quotes"));
    EXPECT_THAT(refusal("[server]\nsecure_cookies = 1\n"), HasSubstr("must be true or false"));
    EXPECT_THAT(refusal("[limits]\nidle_seconds = 0\n"), HasSubstr("a number of seconds above 0"));
    EXPECT_THAT(refusal("[limits]\nidle_seconds = nan\n"), HasSubstr("a number of seconds above 0"));
    EXPECT_THAT(refusal("[log]\nlevel = \"loud\"\n"), HasSubstr("one of trace, debug, info"));
}

TEST_F(SettingsFile, AddressWithoutPortIsRefused) {
    EXPECT_THAT(refusal("[server]\nlisten = \"127.0.0.1\"\n"),
                HasSubstr("torvex.toml:2: listen in [server] must be ADDRESS:PORT"));
}

TEST_F(SettingsFile, CertificateWithoutKeyIsRefused) {
    EXPECT_THAT(refusal("[tls]\ncertificate = \"a.pem\"\n"), HasSubstr("TLS needs both files"));
}

TEST_F(SettingsFile, MediaFolderMustNotLeaveThePublicFiles) {
    for (const auto* name : {"", "..", ".hidden", "a/b", "/etc", "a\\\\b"}) {
        EXPECT_THAT(refusal(std::string("[paths]\nimages = \"") + name + "\"\n"),
                    HasSubstr("images in [paths] must be the name of a folder"))
            << name;
    }
}

TEST_F(SettingsFile, BrokenFileIsRefusedWithItsLine) {
    EXPECT_THAT(refusal("[server]\nlisten = \n"), HasSubstr("torvex.toml:2: "));
}

TEST_F(SettingsFile, RefusalNeverShowsThePassword) {
    EXPECT_THAT(refusal("[database]\npassword = \"hush-hush\"\nurl = 3\n"), testing::Not(HasSubstr("hush")));
}

TEST_F(SettingsFile, MissingFileIsRefusedByName) {
    EXPECT_THROW(readSettings(folder_ / "none.toml"), Error);
}

TEST(ListenAddress, IsReadWithItsPort) {
    EXPECT_EQ(parseListenAddress("0.0.0.0:80").address, "0.0.0.0");
    EXPECT_EQ(parseListenAddress("0.0.0.0:80").port, 80);
    EXPECT_EQ(parseListenAddress("[::]:65535").address, "::");
    EXPECT_EQ(parseListenAddress("[::]:65535").port, 65535);
    EXPECT_EQ(parseListenAddress("127.0.0.1:0").port, 0);
}

TEST(ListenAddress, AnythingElseIsRefused) {
    for (const auto* wrong : {"", ":", "80", ":80", "127.0.0.1", "127.0.0.1:", "127.0.0.1:65536", "a:-1",
                              "a:8 ", "::1:80", "[]:80"}) {
        EXPECT_THROW(parseListenAddress(wrong), Error) << wrong;
    }
}

}  // namespace
}  // namespace torvex
