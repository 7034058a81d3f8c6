#include "search/catalogue/CatalogueServer.h"

#include <chrono>
#include <gmock/gmock.h>
#include <set>
#include <thread>

#include "search/catalogue/CatalogueFixture.h"
#include "search/catalogue/Reader.h"
#include "search/catalogue/Wire.h"

namespace torvex::test {
namespace {

using catalogue::UnavailableError;

class RemoteCatalogueTest : public CatalogueTest {
  protected:
    std::unique_ptr<catalogue::Catalogue> openRemote(std::uint16_t port) {
        return catalogue::open(host.context(), "query://127.0.0.1:" + std::to_string(port) + "/torvex",
                               "\\\\server\\share\\");
    }
    static catalogue::Query remoteQuery(const std::string& text) {
        catalogue::Query asked = query(text);
        asked.columns = {"doctitle"};
        asked.scopes = {{"\\\\server\\share\\search\\html\\", catalogue::Depth::Deep}};
        return asked;
    }
};

TEST_F(RemoteCatalogueTest, IsAskedAsTheOwnOneIs) {
    page("ab.en.01", "The tax of the town", {{"doctitle", "Money"}});
    document("a.txt", "tax");
    commit();
    const catalogue::Reader reader(folder.path());
    catalogue::CatalogueServer server(reader, "127.0.0.1", 0);
    std::jthread running([&] { server.run(); });
    const auto remote = openRemote(server.port());
    const auto results = remote->find(remoteQuery("tax"));
    ASSERT_EQ(results->size(), 1);
    const auto row = results->row(0);
    EXPECT_EQ(row.path, "\\\\server\\share\\search\\html\\en\\ab\\ab.en.01.html");
    EXPECT_EQ(row.characterization, "The tax of the town");
    EXPECT_THAT(row.columns, testing::ElementsAre(testing::Pair("doctitle", "Money")));
    EXPECT_EQ(remote->corrected("twon", "en"), "town");
    EXPECT_THROW(remote->find(remoteQuery("tax tax")), catalogue::QueryError);
    EXPECT_THROW(remote->find(remoteQuery(std::string(10, '(') + std::string(200, '('))),
                 catalogue::TooManyError);
    server.stop();
}
TEST_F(RemoteCatalogueTest, IsAskedAgainByWhoGoesOn) {
    for (int n = 0; n < 300; ++n) document("many/" + std::to_string(n) + ".txt", "common word");
    commit();
    const catalogue::Reader reader(folder.path());
    catalogue::CatalogueServer server(reader, "127.0.0.1", 0);
    std::jthread running([&] { server.run(); });
    const auto remote = openRemote(server.port());
    catalogue::Query asked = query("common", "filename");
    asked.scopes = {{"\\\\server\\share\\wwwroot\\documents\\", catalogue::Depth::Deep}};
    const auto results = remote->find(asked);
    std::set<std::string> paths;
    for (std::size_t n = 0; results->has(n); ++n) paths.insert(results->path(n));
    EXPECT_EQ(paths.size(), 300);
    server.stop();
}
TEST_F(RemoteCatalogueTest, WithoutACatalogueItIsUnavailable) {
    const catalogue::Reader reader(folder.path());
    catalogue::CatalogueServer server(reader, "127.0.0.1", 0);
    std::jthread running([&] { server.run(); });
    EXPECT_THROW(openRemote(server.port()), UnavailableError);
    server.stop();
}
TEST_F(RemoteCatalogueTest, AServerThatIsGoneOrSilentIsUnavailableInTime) {
    const catalogue::Reader reader(folder.path());
    const auto begin = std::chrono::steady_clock::now();
    std::uint16_t port = 0;
    {
        const catalogue::CatalogueServer silent(reader, "127.0.0.1", 0);
        port = silent.port();
        EXPECT_THROW(openRemote(port), UnavailableError);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
    EXPECT_THROW(openRemote(port), UnavailableError);
    EXPECT_THROW(catalogue::open(host.context(), "query:///name", "\\root\\"), UnavailableError);
    EXPECT_THROW(catalogue::open(host.context(), "query://[::1]:1/name", "\\root\\"), UnavailableError);
}
TEST_F(RemoteCatalogueTest, NonsenseIsAnsweredWithAnError) {
    page("ab.en.01", "text");
    commit();
    const catalogue::Reader reader(folder.path());
    for (const std::string& nonsense :
         {std::string(), std::string("\xFF\xFF\xFF"), std::string("\x01\x01\x05"), std::string("\x01\x09"),
          std::string("\x02\x01")}) {
        EXPECT_THROW(catalogue::wire::readFound(catalogue::wire::answer(reader, nonsense)), UnavailableError);
        EXPECT_THROW(catalogue::wire::readRows(nonsense), Error);
    }
}

}  // namespace
}  // namespace torvex::test
