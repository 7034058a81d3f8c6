#include "search/catalogue/Upkeep.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <thread>
#include <xapian.h>

#include "platform/ApplicationValues.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/WatchedFileSystem.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/CatalogueFixture.h"
#include "search/catalogue/ChangedFiles.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Keeper.h"
#include "search/catalogue/Queue.h"
#include "search/catalogue/Reader.h"
#include "search/extraction/TextExtractor.h"
#include "support/Gate.h"
#include "support/TestDatabase.h"
#include "support/TestHost.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

/// Lines from any thread.
class SafeLog final : public OperatorLog {
  public:
    void warn(std::string_view line) override { note(line); }
    void note(std::string_view line) override {
        const std::scoped_lock lock(mutex_);
        lines_.emplace_back(line);
    }
    std::vector<std::string> lines() const {
        const std::scoped_lock lock(mutex_);
        return lines_;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

/// Can be held up.
class GatedExtractor final : public catalogue::TextExtractor {
  public:
    catalogue::Reading read(const std::string& fileName, std::string_view bytes) override {
        if (gate) gate->pass();
        return direct_.read(fileName, bytes);
    }
    std::optional<Gate> gate;

  private:
    catalogue::DirectExtractor direct_;
};

/// An installation on the disk with a catalogue and a queue.
class UpkeepTest : public DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        fs::create_directories(root() + "/search/html/en/ab");
        fs::create_directories(root() + "/wwwroot/documents/ab/001");
    }

    std::string root() const { return folder_.path(); }
    std::string database() const { return catalogue::databaseFolder(root()); }
    static std::string page(const std::string& nodeId) { return "search/html/en/ab/" + nodeId + ".html"; }
    static std::string document(const std::string& name) { return "wwwroot/documents/ab/" + name; }

    void write(const std::string& path, const std::string& text) const {
        std::ofstream(root() + "/" + path, std::ios::binary) << text;
    }
    void queue(const std::vector<std::string>& paths) { catalogue::enqueue(connection(), clock_, paths); }

    catalogue::UpkeepParts parts() {
        return {database(), {root(), "documents"},           files(), extractor, log,
                clock_,     [this] { return openAnother(); }};
    }
    FileSystem& files() {
        if (!files_) files_.emplace(std::vector<std::string>{root()});
        return *files_;
    }

    /// The files that hold a word, by name.
    std::vector<std::string> found(const std::string& text) const {
        const catalogue::Query query = queryBelow("", text, "filename");
        const catalogue::Reader reader(root());
        const auto hits = reader.find(query, 0);
        std::vector<std::string> names;
        for (const auto& row : reader.rows(query, hits.database, hits.hits)) names.push_back(row.filename);
        return names;
    }
    bool isFoundInTime(const std::string& text, std::size_t count,
                       std::chrono::seconds patience = 120s) const {
        for (const auto end = std::chrono::steady_clock::now() + patience;
             std::chrono::steady_clock::now() < end;) {
            try {
                if (found(text).size() == count) return true;
            } catch (const catalogue::UnavailableError&) {
            }
            std::this_thread::sleep_for(20ms);
        }
        return false;
    }

    static bool isSoon(const std::function<bool()>& holds) {
        for (int i = 0; i < 6'000; ++i) {
            if (holds()) return true;
            std::this_thread::sleep_for(20ms);
        }
        return false;
    }
    bool isAtRest() const {
        return renewal.asked() == catalogue::Task::None && renewal.progress()->compared &&
               renewal.progress()->task == catalogue::Task::None;
    }
    std::string generation() const {
        std::string generation;
        catalogue::Reader(root()).read(
            [&](const Xapian::Database& database) { generation = database.get_metadata("generation"); });
        return generation;
    }

    SafeLog log;
    GatedExtractor extractor;
    ApplicationValues application;
    catalogue::Renewal renewal{application};

  private:
    TemporaryFolder folder_;
    FixedClock clock_{DateTime{2026, 6, 15, 12, 0, 0}};
    std::optional<DiskFileSystem> files_;
};
INSTANTIATE_TEST_SUITE_P(Engines, UpkeepTest, bothEngines(), engineName);

void workOff(catalogue::Upkeep& upkeep) {
    while (upkeep.step(1s)) {
    }
}

TEST_P(UpkeepTest, TakesInAllFilesThatItIsToHold) {
    write(page("ab.en.01"), "<title>T</title>word");
    write(document("a.txt"), "word");
    write(document("001/b.bin"), "word");
    write("wwwroot/other.txt", "word");
    write(document(".hidden.txt"), "word");
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    EXPECT_EQ(upkeep.planned(), 3);
    workOff(upkeep);
    EXPECT_THAT(found("word"), ElementsAre("a.txt", "ab.en.01.html"));
    EXPECT_THAT(found("#filename=*"), ElementsAre("a.txt", "ab.en.01.html", "b.bin"));
}
TEST_P(UpkeepTest, ACatalogueThatWasJustFilledIsCompact) {
    std::size_t textSize = 0;
    for (int n = 0; n < 600; ++n) {
        std::string text;
        for (int word = 0; word < 300; ++word) text += "w" + std::to_string(n * word * word % 7919) + "rd ";
        textSize += text.size();
        write(page("ab.en." + std::to_string(1000 + n)), text);
    }
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    std::uintmax_t size = 0;
    for (const auto& file : fs::directory_iterator(database())) size += file.file_size();
    EXPECT_LT(static_cast<double>(size), 1.5 * static_cast<double>(textSize));
    EXPECT_EQ(found("w0rd").size(), 600);
    write(page("ab.en.1000"), "changed");
    queue({page("ab.en.1000")});
    workOff(upkeep);
    EXPECT_THAT(found("changed"), ElementsAre("ab.en.1000.html"));
}
TEST_P(UpkeepTest, AFileThatIsNotReadAsTheServerEndsIsReadAfterwards) {
    class EndingExtractor final : public catalogue::TextExtractor {
        catalogue::Reading read(const std::string&, std::string_view) override {
            throw catalogue::ReadingEnded();
        }
    } ending;
    write(page("ab.en.01"), "word");
    const catalogue::UpkeepParts whole = parts();
    {
        catalogue::Upkeep upkeep(
            {whole.folder, whole.holdings, whole.files, ending, whole.log, whole.clock, whole.openDatabase});
        upkeep.plan(upkeep.compare());
        EXPECT_THROW(upkeep.step(1s), catalogue::ReadingEnded);
        upkeep.rest();
    }
    EXPECT_THAT(log.lines(), testing::IsEmpty());
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    EXPECT_THAT(found("word"), ElementsAre("ab.en.01.html"));
}
TEST_P(UpkeepTest, AComparisonTellsWhatHasChanged) {
    write(page("ab.en.01"), "one");
    write(page("ab.en.02"), "one");
    write(page("ab.en.03"), "one");
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    EXPECT_EQ(upkeep.compare().count(), 0);
    write(page("ab.en.01"), "another");
    fs::remove(root() + "/" + page("ab.en.02"));
    write(page("ab.en.04"), "new");
    fs::last_write_time(root() + "/" + page("ab.en.03"), fs::file_time_type::clock::now() + 1h);
    const auto differences = upkeep.compare();
    EXPECT_THAT(differences.changed,
                UnorderedElementsAre(page("ab.en.01"), page("ab.en.03"), page("ab.en.04")));
    EXPECT_THAT(differences.gone, ElementsAre(page("ab.en.02")));
    upkeep.plan(differences);
    workOff(upkeep);
    EXPECT_THAT(found("one"), ElementsAre("ab.en.03.html"));
    EXPECT_THAT(found("another OR new"), ElementsAre("ab.en.01.html", "ab.en.04.html"));
}
TEST_P(UpkeepTest, BegunAnewEveryFileIsReadAgain) {
    write(page("ab.en.01"), "one");
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    upkeep.beginAnew();
    EXPECT_THAT(upkeep.compare().changed, ElementsAre(page("ab.en.01")));
    upkeep.rest();
    // Also by another run, when this one ends here.
    catalogue::Upkeep next(parts());
    EXPECT_THAT(next.compare().changed, ElementsAre(page("ab.en.01")));
}
TEST_P(UpkeepTest, QueuedFilesAreTakenInRenewedAndRemoved) {
    catalogue::Upkeep upkeep(parts());
    workOff(upkeep);
    write(page("ab.en.01"), "one");
    write(document("a.txt"), "one");
    queue({page("ab.en.01"), document("a.txt"), document("never.txt")});
    workOff(upkeep);
    EXPECT_THAT(found("one"), ElementsAre("a.txt", "ab.en.01.html"));
    write(page("ab.en.01"), "two words");
    fs::remove(root() + "/" + document("a.txt"));
    queue({page("ab.en.01"), document("a.txt")});
    workOff(upkeep);
    EXPECT_THAT(found("one"), IsEmpty());
    EXPECT_THAT(found("two"), ElementsAre("ab.en.01.html"));
}
TEST_P(UpkeepTest, AQueuedFolderLosesWhatIsGone) {
    write(document("001/a.txt"), "one");
    write(document("001/b.txt"), "one");
    write(document("c.txt"), "one");
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    fs::remove(root() + "/" + document("001/a.txt"));
    queue({document("001/")});
    workOff(upkeep);
    EXPECT_THAT(found("one"), ElementsAre("b.txt", "c.txt"));
    fs::remove_all(root() + "/" + document("001"));
    queue({document("001/")});
    workOff(upkeep);
    EXPECT_THAT(found("one"), ElementsAre("c.txt"));
}
TEST_P(UpkeepTest, AnotherProgramGoesOnWhereTheQueueIs) {
    {
        catalogue::Upkeep upkeep(parts());
        workOff(upkeep);
    }
    for (int n = 0; n < 600; ++n) queue({document("none" + std::to_string(n))});
    write(page("ab.en.01"), "one");
    queue({page("ab.en.01")});
    catalogue::Upkeep next(parts());
    workOff(next);
    EXPECT_THAT(found("one"), ElementsAre("ab.en.01.html"));
    write(page("ab.en.02"), "one");
    queue({page("ab.en.02")});
    workOff(next);
    EXPECT_EQ(found("one").size(), 2);
}
TEST_P(UpkeepTest, ARowThatIsSeenLateIsNotMissed) {
    catalogue::Upkeep upkeep(parts());
    queue({document("1"), document("2"), document("3")});
    connection().execute(
        "update TORVEX_SEARCH_QUEUE set queue_id = queue_id + 10 where queue_path like '%3'");
    workOff(upkeep);
    write(document("late.txt"), "one");
    connection().execute("insert into TORVEX_SEARCH_QUEUE (queue_id, queue_path) values (?, ?)",
                         {catalogue::lastQueued(connection()) - 5, document("late.txt")});
    workOff(upkeep);
    EXPECT_THAT(found("one"), ElementsAre("late.txt"));
}
TEST_P(UpkeepTest, OldRowsOfTheQueueAreRemoved) {
    queue({document("today")});
    connection().execute(
        "insert into TORVEX_SEARCH_QUEUE (queue_path, queue_day) values ('old', '20260601')");
    connection().execute(
        "insert into TORVEX_SEARCH_QUEUE (queue_path, queue_day) values ('week', '20260608')");
    catalogue::Upkeep(parts()).tidyQueue();
    std::vector<std::string> left;
    for (const auto& file : catalogue::queuedBehind(connection(), 0, 10)) left.push_back(file.path);
    EXPECT_THAT(left, ElementsAre(document("today"), "week"));
}
TEST_P(UpkeepTest, AFileWithoutReadableTextIsFoundByItsNameAndToldOnce) {
    write(document("broken.pdf"), "nonsense");
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    EXPECT_THAT(found("@filename broken"), ElementsAre("broken.pdf"));
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_THAT(log.lines()[0],
                HasSubstr("wwwroot/documents/ab/broken.pdf is not in the catalogue: it is broken"));
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    EXPECT_EQ(log.lines().size(), 1);
}
TEST_P(UpkeepTest, AHugeFileIsFoundByItsNameAloneAndTold) {
    write(document("huge.txt"), "word");
    fs::resize_file(root() + "/" + document("huge.txt"), (std::uintmax_t{64} << 20) + 1);
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    EXPECT_THAT(found("word"), IsEmpty());
    EXPECT_THAT(found("@filename huge"), ElementsAre("huge.txt"));
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("huge.txt is not in the catalogue: it is too large")));
}
TEST_P(UpkeepTest, LinksAreNotFollowed) {
    write("torvex.toml", "secret");
    fs::create_symlink(root() + "/torvex.toml", root() + "/" + document("link.txt"));
    fs::create_directory_symlink("/etc", root() + "/" + document("etc"));
    catalogue::Upkeep upkeep(parts());
    EXPECT_EQ(upkeep.compare().count(), 0);
    queue({document("link.txt")});
    workOff(upkeep);
    EXPECT_THAT(found("secret"), IsEmpty());
}

// ---- While a server runs ----

TEST_P(UpkeepTest, TheKeeperTakesInWhatThisProgramWrites) {
    catalogue::ChangedFiles changes({root(), "documents"});
    WatchedFileSystem watched(files(), [&](const std::string& path) { changes.note(path); });
    write(document("before.txt"), "word");
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(isFoundInTime("word", 1));
    watched.writeText(root() + "/" + page("ab.en.01"), "word", TextFormat::Unicode);
    watched.writeBytes(root() + "/" + document("a.txt"), "word");
    EXPECT_TRUE(isFoundInTime("word", 3));
    watched.moveFile(root() + "/" + document("a.txt"), root() + "/" + document("b.txt"));
    EXPECT_TRUE(isFoundInTime("#filename=b.txt", 1));
    EXPECT_TRUE(isFoundInTime("#filename=a.txt", 0));
    watched.deleteFolder(root() + "/wwwroot/documents/ab");
    EXPECT_TRUE(isFoundInTime("word", 1));
    EXPECT_THAT(log.lines(), IsEmpty());
}
TEST_P(UpkeepTest, TheKeeperTakesInWhatOthersQueue) {
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(isFoundInTime("#filename=*", 0));
    write(page("ab.en.01"), "word");
    queue({page("ab.en.01")});
    EXPECT_TRUE(isFoundInTime("word", 1));
}
TEST_P(UpkeepTest, TheKeeperComparesWhenItIsAsked) {
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(isFoundInTime("#filename=*", 0));
    ASSERT_TRUE(isSoon([&] { return isAtRest(); }));
    write(document("late.txt"), "word");
    EXPECT_TRUE(renewal.ask(catalogue::Task::Compare));
    EXPECT_TRUE(isFoundInTime("word", 1));
    EXPECT_TRUE(isSoon([&] { return isAtRest(); }));
    EXPECT_EQ(renewal.asked(), catalogue::Task::None);
}
TEST_P(UpkeepTest, TheKeeperMakesTheCatalogueAnewWhenItIsAsked) {
    write(document("a.txt"), "word");
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(isFoundInTime("word", 1));
    ASSERT_TRUE(isSoon([&] { return isAtRest(); }));
    const std::string before = generation();
    EXPECT_TRUE(renewal.ask(catalogue::Task::Anew));
    EXPECT_TRUE(isSoon([&] { return generation() != before && isAtRest(); }));
    EXPECT_THAT(found("word"), ElementsAre("a.txt"));
    catalogue::Upkeep upkeep(parts());
    EXPECT_EQ(upkeep.compare().count(), 0);
}
TEST_P(UpkeepTest, TheKeeperTellsHowFarItIsAndStopsWhenItIsAsked) {
    for (int n = 0; n < 40; ++n) write(document(std::to_string(n) + ".txt"), "word");
    extractor.gate.emplace();
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(isSoon([&] { return renewal.progress()->total == 40; }));
    EXPECT_EQ(renewal.progress()->task, catalogue::Task::Compare);
    extractor.gate->await(1);
    EXPECT_TRUE(renewal.ask(catalogue::Task::Stop));
    std::this_thread::sleep_for(600ms);  // longer than it works without looking up
    extractor.gate->open();
    EXPECT_TRUE(isSoon([&] { return isAtRest(); }));
    EXPECT_THAT(found("word"), testing::SizeIs(1));
    EXPECT_TRUE(renewal.ask(catalogue::Task::Compare));
    EXPECT_TRUE(isFoundInTime("word", 40));
}
TEST_P(UpkeepTest, WhatIsAskedWaitsForWhoWritesTheCatalogue) {
    catalogue::ChangedFiles changes({root(), "documents"});
    std::optional<catalogue::Writer> other(database());
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(renewal.ask(catalogue::Task::Anew));
    std::this_thread::sleep_for(200ms);
    EXPECT_EQ(renewal.asked(), catalogue::Task::Anew);
    other.reset();
    EXPECT_TRUE(isSoon([&] { return renewal.asked() == catalogue::Task::None && isAtRest(); }));
}
TEST_P(UpkeepTest, NobodyCanAskWhereNoKeeperIs) {
    EXPECT_FALSE(renewal.ask(catalogue::Task::Compare));
    catalogue::ChangedFiles changes({root(), "documents"});
    std::optional<catalogue::Keeper> keeper(std::in_place, parts(), changes, renewal,
                                            catalogue::KeeperTimes{.look = 20ms});
    EXPECT_TRUE(renewal.progress().has_value());
    keeper.reset();
    EXPECT_FALSE(renewal.progress().has_value());
    EXPECT_FALSE(renewal.ask(catalogue::Task::Compare));
    EXPECT_EQ(renewal.asked(), catalogue::Task::None);
}
TEST_P(UpkeepTest, TheKeeperMakesADamagedCatalogueAnew) {
    write(page("ab.en.01"), "word");
    {
        catalogue::Upkeep upkeep(parts());
        upkeep.plan(upkeep.compare());
        workOff(upkeep);
    }
    std::ofstream(database() + "/iamglass") << "nonsense";
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(isFoundInTime("word", 1));
    EXPECT_THAT(log.lines(), testing::Contains(HasSubstr("it is made anew")));
}
TEST_P(UpkeepTest, TheKeeperMakesACatalogueWithMissingFilesAnew) {
    write(page("ab.en.01"), "word");
    {
        catalogue::Upkeep upkeep(parts());
        upkeep.plan(upkeep.compare());
        workOff(upkeep);
    }
    fs::remove(database() + "/postlist.glass");
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms});
    EXPECT_TRUE(isFoundInTime("word", 1));
}
TEST_P(UpkeepTest, TheKeeperLeavesALaterCatalogueAloneAndSaysSo) {
    {
        catalogue::Writer writer(database());
        writer.setMetadata("format", "99");
        writer.commit();
    }
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms, .afterFailure = 20ms});
    for (int n = 0; n < 500 && log.lines().empty(); ++n) std::this_thread::sleep_for(20ms);
    std::this_thread::sleep_for(200ms);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("one of a newer version")));
    EXPECT_THROW(catalogue::Reader(root()).check(), catalogue::UnavailableError);
}
TEST_P(UpkeepTest, TheKeeperGoesOnWhenTheFolderCanBeMadeAgain) {
    fs::create_directories(root() + "/data");
    write("data/search", "a file is in the way");
    write(page("ab.en.01"), "word");
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms, .afterFailure = 20ms});
    for (int n = 0; n < 500 && log.lines().empty(); ++n) std::this_thread::sleep_for(20ms);
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("site search: ")));
    fs::remove(root() + "/data/search");
    EXPECT_TRUE(isFoundInTime("word", 1));
    // It is said once all is done.
    for (int n = 0; n < 500 && log.lines().size() < 2; ++n) std::this_thread::sleep_for(20ms);
    EXPECT_THAT(log.lines(), ElementsAre(testing::_, HasSubstr("kept up to date again")));
}
/// As on a full disk: while this lives, no file of this process grows beyond so many bytes.
class NoRoom {
  public:
    explicit NoRoom(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    NoRoom(const NoRoom&) = delete;
    NoRoom& operator=(const NoRoom&) = delete;
    ~NoRoom() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

  private:
    rlimit before_{};
    void (*handler_)(int);
};

std::string manyWords(int seed) {
    std::string text = "many";
    for (int n = 0; n < 3'000; ++n) text += " w" + std::to_string(seed * 3'000 + n);
    return text;
}

/// What is broken throws. (The library's own check deletes one of its objects as another type.)
void readAll(const Xapian::Database& database) {
    for (auto term = database.allterms_begin(); term != database.allterms_end(); ++term) {
        for (auto entry = database.postlist_begin(*term); entry != database.postlist_end(*term); ++entry)
            database.get_document(*entry).get_data();
    }
}

TEST_P(UpkeepTest, ACatalogueThatFindsNoRoomStaysWholeAndGoesOn) {
    write(document("before.txt"), "word");
    catalogue::ChangedFiles changes({root(), "documents"});
    const catalogue::Keeper keeper(parts(), changes, renewal, {.look = 20ms, .afterFailure = 20ms});
    ASSERT_TRUE(isFoundInTime("word", 1));
    std::vector<std::string> queued;
    for (int n = 0; n < 60; ++n) {
        queued.push_back(document(std::to_string(n) + ".txt"));
        write(queued.back(), manyWords(n));
    }
    {
        // The queue's own files are smaller than this, what is to be taken in is larger.
        const NoRoom full(2'000'000);
        queue(queued);
        // The keeper gives way to all others: on a busy machine it takes its time.
        for (int n = 0; n < 6'000 && log.lines().empty(); ++n) std::this_thread::sleep_for(20ms);
        std::this_thread::sleep_for(300ms);
        EXPECT_THAT(log.lines(), ElementsAre(AllOf(HasSubstr("site search: the catalogue can't be written: "),
                                                   HasSubstr("File too large"))));
        EXPECT_EQ(found("word").size(), 1);
        EXPECT_EQ(found("many").size(), 0);
    }
    EXPECT_TRUE(isFoundInTime("many", 60));
    EXPECT_EQ(found("word").size(), 1);
    for (int n = 0; n < 500 && log.lines().size() < 2; ++n) std::this_thread::sleep_for(20ms);
    EXPECT_THAT(log.lines(), ElementsAre(testing::_, HasSubstr("kept up to date again")));
    EXPECT_NO_THROW(readAll(Xapian::Database(database())));
}
TEST_P(UpkeepTest, SearchingGoesOnWhileFilesAreTakenIn) {
    for (int n = 0; n < 300; ++n) write(document(std::to_string(n) + ".txt"), "word number");
    catalogue::Upkeep upkeep(parts());
    upkeep.plan(upkeep.compare());
    workOff(upkeep);
    std::atomic<bool> isDone = false;
    std::jthread searcher([&] {
        while (!isDone) EXPECT_EQ(found("word").size(), 300);
    });
    for (int round = 0; round < 5; ++round) {
        upkeep.beginAnew();
        upkeep.plan(upkeep.compare());
        workOff(upkeep);
    }
    isDone = true;
}

// ---- Which files ----

TEST(ChangedFiles, NotesTheFilesOfACatalogueOnceEach) {
    catalogue::ChangedFiles changes({"/site/", "papers"});
    for (const char* path :
         {"/site/search/html/en/ab/ab.en.01.html", "/site/search/html/en/ab/ab.en.01.html",
          "/site/wwwroot/papers/ab/a.txt", "/site/wwwroot/papers/ab/001/", "\\site\\wwwroot\\papers\\b.txt",
          "/site/search/", "/site/wwwroot/images/a.png", "/other/search/html/a.html",
          "/site/wwwroot/papers/.a.txt", "/site/wwwroot/papers/../../torvex.toml"}) {
        changes.note(path);
    }
    EXPECT_THAT(changes.take(),
                ElementsAre("search/", "search/html/en/ab/ab.en.01.html", "wwwroot/papers/ab/001/",
                            "wwwroot/papers/ab/a.txt", "wwwroot/papers/b.txt"));
    EXPECT_THAT(changes.take(), IsEmpty());
}

}  // namespace
}  // namespace torvex::test
