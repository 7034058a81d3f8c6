#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <random>
#include <thread>

#include "cli/ProgramFixture.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Reader.h"
#include "search/catalogue/RemoteBackend.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using ::testing::HasSubstr;

class IndexCommand : public ProgramDatabaseTest {
  protected:
    void SetUp() override { init({"--demo"}); }

    std::string database() const { return catalogue::databaseFolder(site()); }
    void write(const std::string& name, const std::string& text) const {
        fs::create_directories(site() + "/wwwroot/documents/ab");
        std::ofstream(site() + "/wwwroot/documents/ab/" + name) << text;
    }
    void writeMany(int count) const {
        for (int n = 0; n < count; ++n) {
            std::string text = "quokka ";
            for (int word = 0; word < 200; ++word)
                text += "word" + std::to_string((n * 31 + word * 17) % 5000) + " ";
            write("many" + std::to_string(n) + ".txt", text);
        }
    }
    static catalogue::Query query(const std::string& text) {
        catalogue::Query asked;
        asked.text = text;
        asked.scopes = {{"", catalogue::Depth::Deep}};
        return asked;
    }
    std::size_t found(const std::string& text) const {
        return catalogue::Reader(site()).find(query(text), 0).hits.size();
    }
    bool isFoundInTime(const std::string& text, std::chrono::milliseconds patience) const {
        for (const auto end = std::chrono::steady_clock::now() + patience;
             std::chrono::steady_clock::now() < end;) {
            try {
                if (found(text) > 0) return true;
            } catch (const catalogue::UnavailableError&) {
            }
            std::this_thread::sleep_for(20ms);
        }
        return false;
    }
    Arguments index(Arguments further = {}) const {
        Arguments arguments{"index", "--install", site()};
        arguments.insert(arguments.end(), further.begin(), further.end());
        return arguments;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, IndexCommand, bothEngines(), engineName);

TEST_P(IndexCommand, TakesInTheSnapshotsAndDocuments) {
    output({"snapshot", "--install", site(), "--all"});
    write("extra.txt", "xylophone");
    EXPECT_THAT(run(index({"--check"})).code, 1);
    EXPECT_THAT(output(index()), HasSubstr("Took in "));
    EXPECT_EQ(found("xylophone"), 1);
    EXPECT_GT(found("#filename=*.html"), 10);
    EXPECT_EQ(output(index({"--check"})), "0 files new or changed, 0 gone\n");
}
TEST_P(IndexCommand, ReadsAllAnew) {
    write("extra.txt", "xylophone");
    output(index());
    const std::string again = output(index({"--all"}));
    EXPECT_THAT(again, testing::Not(HasSubstr("Took in 0 ")));
    EXPECT_EQ(found("xylophone"), 1);
}
TEST_P(IndexCommand, OptionsThatExcludeEachOtherAreRefused) {
    EXPECT_EQ(run(index({"--all", "--check"})).code, 2);
    EXPECT_EQ(run(index({"--serve", "127.0.0.1:0", "--all"})).code, 2);
    EXPECT_EQ(run(index({"--serve", "nonsense"})).code, 2);
}
TEST_P(IndexCommand, StoppedItGoesOnLater) {
    writeMany(3000);
    RunningProgram program(folder(), index());
    while (program.err().find(" files\n") == std::string::npos) std::this_thread::sleep_for(5ms);
    program.signal(SIGTERM);
    const auto result = program.wait();
    if (result.code == 1) {
        EXPECT_THAT(result.out, HasSubstr("goes on"));
        EXPECT_GT(found("quokka"), 0);
    }
    output(index());
    EXPECT_EQ(found("quokka"), 3000);
}
TEST_P(IndexCommand, KilledAtAnyMomentItLeavesAWholeCatalogue) {
    writeMany(1500);
    std::mt19937 random(7);
    for (int round = 0; round < 6; ++round) {
        RunningProgram program(folder(), index({"--all"}));
        std::this_thread::sleep_for(std::chrono::milliseconds(50 + random() % 900));
        program.signal(SIGKILL);
        program.wait();
        // What is there can be searched, also before anybody mends anything.
        if (fs::exists(database() + "/iamglass")) {
            try {
                EXPECT_LE(found("quokka"), 1500);
            } catch (const catalogue::UnavailableError& error) {
                EXPECT_THAT(error.what(), HasSubstr("still to be made"));
            }
        }
    }
    output(index());
    EXPECT_EQ(found("quokka"), 1500);
    EXPECT_EQ(run(index({"--check"})).code, 0);
}
TEST_P(IndexCommand, AServerTakesInWhatIsPublishedWithinTwoSeconds) {
    const RunningProgram server(folder(), {"serve", "--install", site(), "--listen", "127.0.0.1:0"});
    server.waitForError("serving ");
    EXPECT_TRUE(isFoundInTime("#filename=*", 60s));
    const std::string page =
        sql("select min(pageId) as page from TORVEX_PAGES_LIVE where type = 'P' and nodeId not like '%.99%'");
    const std::string number = std::to_string(std::stoi(page.substr(page.find_first_of("0123456789"))));
    sql("update TORVEX_PAGES_LIVE set title = 'Xylophone' where pageId = " + number);
    output({"call", "--install", site(), "search.initializePages", "pageIdent=" + number});
    EXPECT_TRUE(isFoundInTime("@doctitle xylophone", 2s));
}
TEST_P(IndexCommand, AServerAndTheCommandWorkSideBySide) {
    writeMany(500);
    const RunningProgram server(folder(), {"serve", "--install", site(), "--listen", "127.0.0.1:0"});
    server.waitForError("serving ");
    EXPECT_EQ(run(index({"--all"})).code, 0);
    EXPECT_EQ(found("quokka"), 500);
    EXPECT_THAT(server.err(), testing::Not(HasSubstr("site search")));
}
TEST_P(IndexCommand, AServerWithoutARoomForTheCatalogueServes) {
    fs::create_directories(site() + "/data");
    std::ofstream(site() + "/data/search") << "a file is in the way";
    const RunningProgram server(folder(), {"serve", "--install", site(), "--listen", "127.0.0.1:0"});
    server.waitForError("site search: the folder");
    EXPECT_THAT(server.err(), HasSubstr("serving "));
}
TEST_P(IndexCommand, OffersItsCatalogueToOthers) {
    write("extra.txt", "a xylophone on the stairs");
    output(index());
    RunningProgram server(folder(), index({"--serve", "127.0.0.1:0"}));
    server.waitForError("offering the catalogue at ");
    const std::string said = server.err();
    const std::string address = said.substr(said.find("127.0.0.1:"));
    const catalogue::RemoteBackend remote(address.substr(0, address.find('\n')) + "/torvex");
    const auto hits = remote.find(query("xylophone"), 0);
    ASSERT_EQ(hits.hits.size(), 1U);
    EXPECT_EQ(remote.rows(query("xylophone"), hits.database, hits.hits).at(0).characterization,
              "a xylophone on the stairs");
    EXPECT_EQ(remote.corrected("xylofone", "en"), "xylophone");
    EXPECT_THROW(remote.find(query("("), 0), catalogue::QueryError);
    server.signal(SIGTERM);
    EXPECT_EQ(server.wait().code, 0);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THROW(remote.find(query("xylophone"), 0), catalogue::UnavailableError);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
}

}  // namespace
}  // namespace torvex::test
