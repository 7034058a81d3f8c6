#include "host/BufferedHits.h"

#include <atomic>
#include <gmock/gmock.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/ostream_sink.h>
#include <sstream>
#include <vector>

#include "delivery/HitStore.h"
#include "host/LineLog.h"
#include "support/TestDatabase.h"

namespace torvex {

namespace {

using namespace std::chrono_literals;

constexpr const char* node = "01.en.01";
constexpr const char* today = "20260615";

class BufferedHitsTest : public test::DatabaseTest {
  protected:
    BufferedHits::OpenDatabase opener() {
        return [this](db::Purpose purpose) {
            ++opened_;
            if (isBroken_) throw db::DatabaseError("the disk is full");
            return openAnother(purpose);
        };
    }

    /// "hits/uniquehits" as stored, "" when there is no row.
    std::string stored(std::string_view nodeId = node, std::string_view day = today) {
        auto rows = connection().query(
            "select hits, uniquehits from TORVEX_LOGGING where nodeId = ? and yyyymmdd = ?", {nodeId, day});
        if (!rows.next()) return {};
        return rows.text("hits") + "/" + rows.text("uniquehits");
    }

    static SearchedWords searched(std::map<std::string, int> words, const std::string& day = today) {
        return {.pageId = 20, .nodeId = "01.en.09", .day = day, .words = std::move(words)};
    }
    /// "word count" of each word.
    std::vector<std::string> words() {
        return lines("select search_word, search_count from TORVEX_SEARCH_LOG order by search_word");
    }
    /// "word day searches withoutResult" of each day.
    std::vector<std::string> days() {
        return lines(
            "select search_word, yyyymmdd, searches, withoutResult from TORVEX_SEARCH_DAYS "
            "where search_pageId = 20 and site = '01' and lang = 'en' order by search_word, yyyymmdd");
    }
    std::vector<std::string> lines(const std::string& statement) {
        std::vector<std::string> lines;
        auto rows = connection().query(statement);
        while (rows.next()) {
            std::string line;
            for (std::size_t i = 0; i < rows.columns(); ++i)
                line += (i == 0 ? "" : " ") + rows.value(i).toText();
            lines.push_back(line);
        }
        return lines;
    }

    std::size_t errorLines() {
        const std::string text = logged_.str();
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }

    std::ostringstream logged_;
    spdlog::logger logger_{"test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logged_)};
    LineLog log_{logger_};
    std::atomic<int> opened_ = 0;
    std::atomic<bool> isBroken_ = false;
};

INSTANTIATE_TEST_SUITE_P(Engines, BufferedHitsTest, test::bothEngines(), test::engineName);

TEST_P(BufferedHitsTest, TheFirstViewOfADayIsAlwaysUnique) {
    BufferedHits hits(opener(), log_);
    EXPECT_TRUE(hits.count(node, today, false));
    EXPECT_FALSE(hits.count(node, today, false));
    EXPECT_TRUE(hits.count(node, today, true));
    EXPECT_TRUE(hits.flush());
    EXPECT_EQ(stored(), "3/2");
}

TEST_P(BufferedHitsTest, AnEarlierRowOfTheDayIsFound) {
    addHits(connection(), node, today, 10, 4);
    BufferedHits hits(opener(), log_);
    EXPECT_FALSE(hits.count(node, today, false));
    EXPECT_TRUE(hits.flush());
    EXPECT_EQ(stored(), "11/4");
}

TEST_P(BufferedHitsTest, ANewDayBeginsAnew) {
    BufferedHits hits(opener(), log_);
    EXPECT_TRUE(hits.count(node, today, false));
    EXPECT_TRUE(hits.count(node, "20260616", false));
    EXPECT_TRUE(hits.flush());
    EXPECT_EQ(stored(), "1/1");
    EXPECT_EQ(stored(node, "20260616"), "1/1");
}

TEST_P(BufferedHitsTest, TheDatabaseIsAskedOnceForEachNodeAndDay) {
    BufferedHits hits(opener(), log_, 1h);
    for (int i = 0; i < 100; ++i) hits.count(node, today, true);
    EXPECT_EQ(opened_, 1);
}

TEST_P(BufferedHitsTest, ViewsAreWrittenByThemselvesAfterTheDelay) {
    BufferedHits hits(opener(), log_, 20ms);
    hits.count(node, today, true);
    for (int i = 0; i < 200 && stored().empty(); ++i) std::this_thread::sleep_for(10ms);
    EXPECT_EQ(stored(), "1/1");
}

TEST_P(BufferedHitsTest, TheEndWritesWhatIsLeft) {
    {
        BufferedHits hits(opener(), log_, 1h);
        hits.count(node, today, true);
        EXPECT_EQ(stored(), "");
    }
    EXPECT_EQ(stored(), "1/1");
}

TEST_P(BufferedHitsTest, AFailedWriteKeepsTheViewsAndIsLoggedOnce) {
    BufferedHits hits(opener(), log_, 1h);
    hits.count(node, today, true);
    isBroken_ = true;
    EXPECT_FALSE(hits.flush());
    hits.count(node, today, true);
    EXPECT_FALSE(hits.flush());
    EXPECT_EQ(errorLines(), 1U);
    EXPECT_EQ(stored(), "");
    isBroken_ = false;
    EXPECT_TRUE(hits.flush());
    EXPECT_EQ(stored(), "2/2");
}

TEST_P(BufferedHitsTest, AViewThatCannotBeLookedUpIsNotCounted) {
    BufferedHits hits(opener(), log_, 1h);
    isBroken_ = true;
    EXPECT_THROW(hits.count(node, today, true), std::exception);
    isBroken_ = false;
    EXPECT_TRUE(hits.flush());
    EXPECT_EQ(stored(), "");
}

TEST_P(BufferedHitsTest, ViewsFromManyThreadsAreAllCountedAndOneIsTheFirst) {
    std::atomic<int> uniques = 0;
    {
        BufferedHits hits(opener(), log_, 1ms);
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&] {
                for (int k = 0; k < 250; ++k)
                    if (hits.count(node, today, false)) ++uniques;
            });
        }
        for (std::thread& thread : threads) thread.join();
    }
    EXPECT_EQ(uniques, 1);
    EXPECT_EQ(stored(), "1000/1");
}

// Searched words

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(BufferedHitsTest, WordsAreWrittenByThemselvesAfterTheDelay) {
    BufferedHits hits(opener(), log_, 20ms);
    hits.countSearch(searched({{"tax", 1}}));
    for (int i = 0; i < 200 && words().empty(); ++i) std::this_thread::sleep_for(10ms);
    EXPECT_THAT(words(), ElementsAre("tax 1"));
}

TEST_P(BufferedHitsTest, WordsAreCountedInAllAndByDay) {
    BufferedHits hits(opener(), log_, 1h);
    hits.countSearch(searched({{"tax", 1}, {"rates", 2}}));
    hits.countNothingFound(searched({{"tax", 1}, {"rates", 2}}));
    hits.countSearch(searched({{"tax", 1}}, "20260616"));
    EXPECT_THAT(words(), IsEmpty());
    EXPECT_TRUE(hits.flush());
    EXPECT_THAT(words(), ElementsAre("rates 2", "tax 2"));
    EXPECT_THAT(days(), ElementsAre("rates 20260615 2 2", "tax 20260615 1 1", "tax 20260616 1 0"));
    hits.countSearch(searched({{"tax", 1}}));
    EXPECT_TRUE(hits.flush());
    EXPECT_THAT(words(), ElementsAre("rates 2", "tax 3"));
    EXPECT_THAT(days(), ElementsAre("rates 20260615 2 2", "tax 20260615 2 1", "tax 20260616 1 0"));
}

TEST_P(BufferedHitsTest, ThatNothingWasFoundMayBeWrittenApart) {
    BufferedHits hits(opener(), log_, 1h);
    hits.countSearch(searched({{"tax", 1}}));
    EXPECT_TRUE(hits.flush());
    hits.countNothingFound(searched({{"tax", 1}}));
    EXPECT_TRUE(hits.flush());
    EXPECT_THAT(words(), ElementsAre("tax 1"));
    EXPECT_THAT(days(), ElementsAre("tax 20260615 1 1"));
}

TEST_P(BufferedHitsTest, TheEndWritesTheWordsThatAreLeft) {
    {
        BufferedHits hits(opener(), log_, 1h);
        hits.countSearch(searched({{"tax", 1}}));
        EXPECT_THAT(words(), IsEmpty());
    }
    EXPECT_THAT(words(), ElementsAre("tax 1"));
}

TEST_P(BufferedHitsTest, WordsThatCannotBeWrittenAreKeptAndDoNotHoldUpViews) {
    BufferedHits hits(opener(), log_, 1h);
    connection().execute("alter table TORVEX_SEARCH_DAYS rename to TORVEX_AWAY");
    hits.count(node, today, true);
    hits.countSearch(searched({{"tax", 1}}));
    EXPECT_FALSE(hits.flush());
    EXPECT_FALSE(hits.flush());
    EXPECT_EQ(stored(), "1/1");
    EXPECT_THAT(words(), IsEmpty());
    EXPECT_EQ(errorLines(), 1U);
    connection().execute("alter table TORVEX_AWAY rename to TORVEX_SEARCH_DAYS");
    EXPECT_TRUE(hits.flush());
    EXPECT_THAT(words(), ElementsAre("tax 1"));
}

TEST_P(BufferedHitsTest, WhoBringsTooManyWordsWritesThemFirst) {
    BufferedHits hits(opener(), log_, 1h);
    std::map<std::string, int> many;
    for (std::size_t i = 0; i < BufferedHits::mostWords; ++i) many["word" + std::to_string(i)] = 1;
    hits.countSearch(searched(many));
    EXPECT_THAT(words(), IsEmpty());
    hits.countSearch(searched({{"one more", 1}}));
    EXPECT_EQ(words().size(), BufferedHits::mostWords);
    EXPECT_TRUE(hits.flush());
    EXPECT_EQ(words().size(), BufferedHits::mostWords + 1);
}

TEST_P(BufferedHitsTest, WordsBeyondTheMemoryAreLeftOutWhileTheyCannotBeWritten) {
    BufferedHits hits(opener(), log_, 1h);
    std::map<std::string, int> many;
    for (std::size_t i = 0; i < BufferedHits::mostWords; ++i) many["word" + std::to_string(i)] = 1;
    hits.countSearch(searched(many));
    isBroken_ = true;
    hits.countSearch(searched({{"left out", 1}}));
    isBroken_ = false;
    EXPECT_TRUE(hits.flush());
    EXPECT_EQ(words().size(), BufferedHits::mostWords);
}

}  // namespace

}  // namespace torvex
