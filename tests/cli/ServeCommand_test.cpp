#include <arpa/inet.h>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <regex>
#include <sstream>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

#include "cli/ProgramFixture.h"
#include "platform/net/CurlHttpClient.h"
#include "platform/text/Text.h"
#include "support/FeedServer.h"
#include "support/RawHttpClient.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;
using namespace std::chrono_literals;

class ServeCommand : public ProgramDatabaseTest {
  protected:
    void changeSetting(const std::string& from, const std::string& to) {
        const std::string file = site() + "/torvex.toml";
        std::stringstream text;
        text << std::ifstream(file).rdbuf();
        ASSERT_NE(text.str().find(from), std::string::npos);
        std::ofstream(file) << text::replaceAll(text.str(), from, to);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ServeCommand, bothEngines(), engineName);

TEST_P(ServeCommand, ServesTheInterfaceOfAFolderToWhoWorksOnIt) {
    init();
    std::filesystem::create_directories(site() + "/built");
    std::ofstream(site() + "/built/main-12345678.js") << "interface";
    changeSetting("#interface = \"\"", "interface = \"built\"");
    const auto server = serve();
    EXPECT_THAT(server->err(), HasSubstr("the interface for authors is the one in " + site() + "/built"));
    CurlHttpClient http;
    EXPECT_EQ(http.get(addressOf(*server) + "torvex/ui/main-12345678.js").body, "interface");
}

TEST_P(ServeCommand, GivesAuthorsAHostOfTheirOwn) {
    init();
    changeSetting("#host = \"\"", "host = \"localhost\"");
    const auto server = serve();
    const std::uint16_t port = portOf(*server);
    CurlHttpClient http;
    EXPECT_EQ(http.get(addressOf(*server) + "torvex/login").status, 404);
    EXPECT_EQ(http.get("http://localhost:" + std::to_string(port) + "/torvex/login").status, 200);
}

TEST_P(ServeCommand, ServesTheStarterSite) {
    init({"--title", "Blue house", "--admin-password", "word"});
    const auto server = serve();
    CurlHttpClient http;
    const auto home = http.get(addressOf(*server));
    EXPECT_EQ(home.status, 200);
    EXPECT_THAT(home.body, HasSubstr("Welcome to Blue house"));
    EXPECT_THAT(home.body, HasSubstr("/stylesheets/ws/en/site.css"));
    EXPECT_EQ(http.get(addressOf(*server) + "stylesheets/ws/en/site.css").status, 200);
}

TEST_P(ServeCommand, RaisesTheLimitOfOpenFilesForItsConnections) {
    init({"--admin-password", "word"});
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    if (before.rlim_max < 10'000) GTEST_FAIL() << "the limit of open files can't be raised here";
    const rlimit low{700, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &low);  // the program starts with it
    const auto server = serve();
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_THAT(server->err(), testing::Not(HasSubstr("connections in place of")));
}

TEST_P(ServeCommand, SaysWhenThereAreFewerConnectionsThanWanted) {
    init({"--admin-password", "word"});
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    changeSetting("#connections = 4096", "connections = 1000000");
    const auto server = serve();
    if (before.rlim_max < 1'000'000) {
        EXPECT_THAT(server->err(), HasSubstr("connections in place of 1000000"));
    }
    EXPECT_EQ(CurlHttpClient().get(addressOf(*server)).status, 200);
}

TEST_P(ServeCommand, AnUnknownLoginTargetDoesNotFillTheLog) {
    init({"--demo", "--admin-password", "word"});
    const auto server = serve();
    const std::string address = addressOf(*server);
    const std::string form =
        "torvex_pageId=2&torvex_username=a&torvex_password=b&torvex_loginTarget=" + std::string(15'000, 'x');
    for (int i = 0; i < 10; ++i) {
        RawHttpClient client(portOf(address));
        client.ask(
            "POST /tvxLogin.asp HTTP/1.1\r\nHost: a\r\nSec-Fetch-Site: same-origin\r\nContent-Type: "
            "application/x-www-form-urlencoded\r\n"
            "Content-Length: " +
            std::to_string(form.size()) + "\r\n\r\n" + form);
    }
    server->signal(SIGTERM);
    const std::string said = server->wait(std::chrono::seconds(15)).err;
    EXPECT_LT(said.size(), 8'000U);
    EXPECT_THAT(said, HasSubstr("there is no login target \"xxx"));
}

TEST_P(ServeCommand, EndsCleanlyWhenAsked) {
    init({"--admin-password", "word"});
    for (const int number : {SIGTERM, SIGINT}) {
        const auto server = serve();
        server->signal(number);
        const ProgramResult ended = server->wait(std::chrono::seconds(15));
        EXPECT_EQ(ended.code, 0) << ended.err;
        EXPECT_THAT(ended.err, HasSubstr("stopped"));
    }
}

TEST_P(ServeCommand, KeepsTheHitsOfPagesServedBeforeTheEnd) {
    init({"--admin-password", "word"});
    const auto server = serve();
    CurlHttpClient http;
    http.get(addressOf(*server) + "tvx.asp?pageId=2");
    server->signal(SIGTERM);
    server->wait(std::chrono::seconds(15));
    EXPECT_EQ(sql("select nodeId, hits, uniqueHits from TORVEX_LOGGING"),
              "{\"nodeId\":\"ws.en.01\",\"hits\":1,\"uniquehits\":1}\n");
}

TEST_P(ServeCommand, StartFreesEveryLogin) {
    init({"--admin-password", "word"});
    sql("update TORVEX_LOGINS set sessionId = 'held'");
    const auto server = serve();
    EXPECT_EQ(sql("select sessionId from TORVEX_LOGINS"), "{\"sessionId\":\"\"}\n");
}

TEST_P(ServeCommand, AddressInUseIsRefused) {
    init({"--admin-password", "word"});
    const auto server = serve();
    const std::string address = addressOf(*server);
    const std::string listen = address.substr(7, address.size() - 8);
    const ProgramResult second = run({"serve", "--install", site(), "--listen", listen});
    EXPECT_EQ(second.code, 1);
    EXPECT_THAT(second.err, HasSubstr(listen.substr(listen.find(':') + 1)));
    EXPECT_THAT(second.err, HasSubstr("in use"));
    EXPECT_THAT(second.err, HasSubstr("--listen"));
    EXPECT_EQ(CurlHttpClient().get(address).status, 200);
}

/// The demo, with its HTML feed at an address, and with feeds of this machine allowed.
class ServeFeeds : public ServeCommand {
  protected:
    void initWithFeed(const std::string& address, const std::string& settings = "private_addresses = true") {
        init({"--demo", "--admin-password", "word"});
        sql("update TORVEX_FEEDS_HTML set feedFile = '', feedURL = '" + address + "'");
        std::ostringstream text;
        text << std::ifstream(site() + "/torvex.toml").rdbuf();
        std::ofstream(site() + "/torvex.toml")
            << std::regex_replace(text.str(), std::regex("\\[feeds\\]"), "[feeds]\n" + settings);
    }
    static std::string feedPage(const std::string& address) {
        // A browser's request: the client of feeds would be told from it by its mark.
        return RawHttpClient(portOf(address)).get("/tvx.asp?pageId=46").body;
    }
    static std::vector<std::future<std::string>> views(const std::string& address, int count) {
        std::vector<std::future<std::string>> pages;
        for (int i = 0; i < count; ++i) {
            pages.push_back(std::async(std::launch::async, [address] { return feedPage(address); }));
        }
        return pages;
    }

    FeedServer feeds;
};
INSTANTIATE_TEST_SUITE_P(Engines, ServeFeeds, bothEngines(), engineName);

TEST_P(ServeFeeds, WhileTheyAreSlowOthersAreServedAtOnce) {
    feeds.at("/slow", [](FeedServer::Peer& peer) {
        std::this_thread::sleep_for(3s);
        peer.send(answerText("200 OK", "", "after three seconds"));
    });
    initWithFeed(feeds.url("/slow"));
    const auto server = serve();
    const std::string address = addressOf(*server);
    const auto begin = std::chrono::steady_clock::now();
    auto slow = views(address, 12);
    while (feeds.targets().empty()) std::this_thread::sleep_for(10ms);
    CurlHttpClient http;
    for (int i = 0; i < 50; ++i) EXPECT_EQ(http.get(address + "tvx.asp?pageId=1").status, 200);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2500ms);
    for (auto& page : slow) EXPECT_THAT(page.get(), HasSubstr("200after three seconds"));
    EXPECT_EQ(feeds.targets().size(), 1U);
}

TEST_P(ServeFeeds, ASilentOneStopsNobodyAndIsSoonLeftAlone) {
    feeds.at("/silent", [](FeedServer::Peer& peer) { peer.waitForClose(); });
    initWithFeed(feeds.url("/silent"), "private_addresses = true\nseconds = 4");
    const auto server = serve();
    const std::string address = addressOf(*server);
    auto silent = views(address, 80);
    while (feeds.targets().empty()) std::this_thread::sleep_for(10ms);
    const auto begin = std::chrono::steady_clock::now();
    CurlHttpClient http;
    for (int i = 0; i < 50; ++i) EXPECT_EQ(http.get(address + "tvx.asp?pageId=1").status, 200);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    for (auto& page : silent) EXPECT_THAT(page.get(), HasSubstr("HTTP error - "));
    const auto later = std::chrono::steady_clock::now();
    EXPECT_THAT(feedPage(address), HasSubstr("HTTP error - the server took too long to answer"));
    EXPECT_LT(std::chrono::steady_clock::now() - later, 1s);
    EXPECT_EQ(feeds.targets().size(), 1U);
}

TEST_P(ServeFeeds, OneThatShowsThePageItselfFailsAtOnce) {
    initWithFeed("http://127.0.0.1:1/");
    const auto server = serve();
    const std::string address = addressOf(*server);
    // The page's own name comes from the visitor, as all names do.
    sql("update TORVEX_FEEDS_HTML set feedURL = '" + address + "tvx.asp?from=feed'");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(feedPage(address), HasSubstr("a page that is fetched as a feed can't fetch feeds itself"));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
}

TEST_P(ServeFeeds, ReachNoPrivateAddressUnlessTheSettingsSaySo) {
    feeds.answer("/a", "200 OK", "", "secret");
    initWithFeed(feeds.url("/a"), "seconds = 5");
    const auto server = serve();
    EXPECT_THAT(feedPage(addressOf(*server)), HasSubstr("HTTP error - the address is not a public one"));
    EXPECT_TRUE(feeds.targets().empty());
}

TEST_P(ServeFeeds, OneThatHangsKeepsTheProgramFromNothing) {
    feeds.at("/silent", [](FeedServer::Peer& peer) { peer.waitForClose(); });
    initWithFeed(feeds.url("/silent"));
    const auto server = serve();
    auto hanging = views(addressOf(*server), 3);
    while (feeds.targets().empty()) std::this_thread::sleep_for(10ms);
    server->signal(SIGTERM);
    const auto begin = std::chrono::steady_clock::now();
    server->waitForError("stopped", std::chrono::seconds(15));
    const auto said = std::chrono::steady_clock::now();
    EXPECT_EQ(server->wait(std::chrono::seconds(15)).code, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - said, 500ms);
    EXPECT_LT(said - begin, 10s);
    for (auto& page : hanging) page.wait();
}

TEST_P(ServeCommand, AddressThatIsNoneIsWrongUsage) {
    init();
    EXPECT_EQ(run({"serve", "--install", site(), "--listen", "here"}).code, 2);
}

TEST_P(ServeCommand, NewerDatabaseIsRefused) {
    init();
    sql("insert into TORVEX_SCHEMA_CONTENT (version, name, applied) values (999, 'later', '2026-01-01 "
        "00:00:00')");
    const ProgramResult refused = run({"serve", "--install", site(), "--listen", "127.0.0.1:0"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, HasSubstr("newer than this program"));
}

TEST_P(ServeCommand, OlderDatabaseIsRefusedWithTheWayOut) {
    init();
    sql("delete from TORVEX_SCHEMA_HITS");
    const ProgramResult refused = run({"serve", "--install", site(), "--listen", "127.0.0.1:0"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, HasSubstr("torvex migrate"));
}

}  // namespace
}  // namespace torvex::test
