#include <gmock/gmock.h>

#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// The two registers behave alike: each test runs on both.
struct Feeds {
    std::string name;
    std::string table;
    int bodyType;
    std::string word;
    std::string (cManager::*check)(const std::string&, const std::string&, const std::string&, int);
    Value (cManager::*list)(const std::string&, const std::string&);
    std::string (cManager::*remove)(int, int);
};

const Feeds registers[] = {
    {"HTML", "TORVEX_FEEDS_HTML", 2, "HTML feed", &cManager::checkHTMLfeed, &cManager::getHTMLfeedList,
     &cManager::deleteHTMLfeed},
    {"XML", "TORVEX_FEEDS_XML", 3, "XML feed", &cManager::checkXMLfeed, &cManager::getXMLfeedList,
     &cManager::deleteXMLfeed},
};

class FeedsTest : public RecordsTest {
  protected:
    void feed(const Feeds& feeds, int id, const std::string& name, const std::string& lang = "en",
              const std::string& site = "aa") {
        row(feeds.table, {{"feedId", id},
                          {"feedSite", site},
                          {"feedLang", lang},
                          {"feedName", name},
                          {"feedDescription", "Of " + name}});
    }
    std::string check(const Feeds& feeds, const std::string& name, int feedId = 0,
                      const std::string& lang = "en") {
        return (manager().*feeds.check)("aa", lang, name, feedId);
    }
    std::string remove(const Feeds& feeds, int feedId, int advId = 0) {
        return (manager().*feeds.remove)(feedId, advId);
    }
    void use(const std::string& twin, int bodyType, int feedId) {
        row("TORVEX_BODIES_" + twin,
            {{"pageId", 12}, {"bodyId", 1}, {"bodyType", bodyType}, {"feedId", feedId}});
    }
    std::vector<std::string> left(const Feeds& feeds) {
        return rowsOf("select feedId from " + feeds.table + " order by feedId");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, FeedsTest, bothEngines(), engineName);

TEST_P(FeedsTest, ANameIsTakenInItsSiteAndLanguage) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "Caf\xC3\x89 \"O'Neil\"");
        EXPECT_EQ(check(feeds, "Caf\xC3\xA9 \"o'neil\""), "1");
        EXPECT_EQ(check(feeds, "Caf\xC3\xA9"), "0");
        EXPECT_EQ(check(feeds, "Caf\xC3\xA9 \"o'neil\"", 0, "de"), "0");
    }
}

TEST_P(FeedsTest, AFeedsOwnNameIsFreeForIt) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "News");
        EXPECT_EQ(check(feeds, "News", 5), "0");
        feed(feeds, 6, "news");
        EXPECT_EQ(check(feeds, "News", 5), "1");
    }
}

TEST_P(FeedsTest, TheListHasTheFeedsOfASiteAndLanguageByName) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "weather");
        feed(feeds, 6, "News");
        feed(feeds, 7, "Elsewhere", "de");
        feed(feeds, 8, "Other site", "en", "bb");
        const Value list = (manager().*feeds.list)("aa", "en");
        ASSERT_TRUE(list.isGrid());
        const ResultGrid& grid = list.grid();
        ASSERT_EQ(grid.rows(), 2U);
        ASSERT_EQ(grid.columns(), 4U);
        EXPECT_EQ(grid.at(0, 0), Value(6));
        EXPECT_EQ(grid.at(1, 0), Value("News"));
        EXPECT_EQ(grid.at(2, 0), Value("Of News"));
        EXPECT_TRUE(grid.at(3, 0).isEmpty());
        EXPECT_EQ(grid.at(1, 1), Value("weather"));
    }
}

TEST_P(FeedsTest, WithoutFeedsTheListIsEmpty) {
    for (const Feeds& feeds : registers) EXPECT_TRUE((manager().*feeds.list)("aa", "en").isEmpty());
}

TEST_P(FeedsTest, AFeedThatNobodyShowsGoes) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "News");
        feed(feeds, 6, "Weather");
        EXPECT_EQ(remove(feeds, 5, 231), "");
        EXPECT_THAT(left(feeds), ElementsAre("6"));
        EXPECT_EQ(auditTrail().back(),
                  "7|Anna Author|0||231|delete|" + feeds.word + " \"News\" has been removed");
    }
}

TEST_P(FeedsTest, WithoutAnEntryOfTheMenuNoLineIsWritten) {
    for (const Feeds& feeds : registers) {
        feed(feeds, 5, "News");
        EXPECT_EQ(remove(feeds, 5), "");
    }
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(FeedsTest, AFeedThatIsNotThereIsRefused) {
    for (const Feeds& feeds : registers) {
        feed(feeds, 5, "News");
        for (const int id : {0, -5, 6}) expectRefusal("-1", [&] { return remove(feeds, id, 231); });
    }
}

TEST_P(FeedsTest, AFeedOfAPageOfTheDesignStays) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        connection().execute("delete from TORVEX_BODIES_DESIGN");
        feed(feeds, 5, "News");
        use("DESIGN", feeds.bodyType, 5);
        expectRefusal("-2", [&] { return remove(feeds, 5, 231); });
    }
}

TEST_P(FeedsTest, AFeedOfALivePageAloneStays) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        connection().execute("delete from TORVEX_BODIES_LIVE");
        feed(feeds, 5, "News");
        use("LIVE", feeds.bodyType, 5);
        expectRefusal("-2", [&] { return remove(feeds, 5, 231); });
    }
}

TEST_P(FeedsTest, ABodyOfAnotherKindUsesAnotherFeed) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "News");
        connection().execute("delete from TORVEX_BODIES_LIVE");
        use("LIVE", feeds.bodyType == 2 ? 3 : 2, 5);
        EXPECT_EQ(remove(feeds, 5), "");
    }
}

TEST_P(FeedsTest, AFeedThatAnotherAuthorHasOpenStays) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "News");
        hold(feeds.table, "feedId", 5, bertsSession);
        expectRefusal("-3", [&] { return remove(feeds, 5, 231); });
    }
}

TEST_P(FeedsTest, TheTestsStandInOrder) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "News");
        hold(feeds.table, "feedId", 5, bertsSession);
        connection().execute("delete from TORVEX_BODIES_LIVE");
        use("LIVE", feeds.bodyType, 5);
        expectRefusal("-2", [&] { return remove(feeds, 5, 231); });
    }
}

TEST_P(FeedsTest, ALockOfASessionThatIsGoneIsNoHindrance) {
    for (const Feeds& feeds : registers) {
        feed(feeds, 5, "News");
        hold(feeds.table, "feedId", 5, "session-of-nobody");
        EXPECT_EQ(remove(feeds, 5), "");
    }
}

TEST_P(FeedsTest, AFailureAnywhereChangesNothing) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "News");
        failEverywhere("", "-99", [&] { return remove(feeds, 5, 231); });
    }
}

TEST_P(FeedsTest, ATrailThatCantBeWrittenIsToldToOperators) {
    feed(registers[0], 5, "News");
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_EQ(remove(registers[0], 5, 231), "");
    EXPECT_THAT(left(registers[0]), IsEmpty());
    EXPECT_EQ(host.log.lines.size(), 1U);
}

TEST_P(FeedsTest, TwoSessionsThatRemoveAFeedAtOnceRemoveItOnce) {
    for (const Feeds& feeds : registers) {
        SCOPED_TRACE(feeds.name);
        feed(feeds, 5, "News");
        std::string second;
        beforeTransaction([&] { second = remove(feeds, 5, 231); });
        const std::string first = remove(feeds, 5, 231);
        EXPECT_EQ(second, "");
        EXPECT_EQ(first, "-1");
    }
}

TEST_P(FeedsTest, FailuresHaveTheOperationsLine) {
    for (const Feeds& feeds : registers) {
        drop(feeds.table);
        EXPECT_THAT(errorOf([&] { check(feeds, "News"); }),
                    StartsWith(chain({"check" + feeds.name + "feed !"})));
        EXPECT_THAT(errorOf([&] { (manager().*feeds.list)("aa", "en"); }),
                    StartsWith(chain({"get" + feeds.name + "feedList !"})));
    }
}

}  // namespace
}  // namespace torvex::test
