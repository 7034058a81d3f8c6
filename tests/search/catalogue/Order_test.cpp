#include "search/catalogue/Order.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <tuple>

#include "search/catalogue/CatalogueFixture.h"
#include "search/catalogue/FrequentWords.h"
#include "search/catalogue/Reader.h"
#include "search/catalogue/Terms.h"
#include "search/catalogue/Words.h"

namespace torvex::test {
namespace {

using catalogue::FrequentWords;
using catalogue::Hit;
using catalogue::Reader;

constexpr std::size_t entries = 800;
constexpr std::size_t vocabulary = 1'200;
/// Frequent words are chosen from so many entries: in time, or never.
constexpr std::size_t soon = 200;
constexpr std::size_t never = entries + 1;

/// The first ones are in nearly every text, more of them in one of forty than a byte has codes.
std::string wordAt(std::size_t place) {
    static constexpr std::array<const char*, 3> endings = {"", "s", "ing"};
    return "w" + std::string(1, static_cast<char>('a' + place % 26)) + std::to_string(place) +
           endings[place % endings.size()];
}

class Texts {
  public:
    Texts() {
        double sum = 0;
        for (std::size_t n = 0; n < vocabulary; ++n)
            sums_.push_back(sum += 1.0 / static_cast<double>(n + 30));
    }

    std::string word() {
        const double at = std::uniform_real_distribution<double>(0, sums_.back())(random_);
        const auto found = std::lower_bound(sums_.begin(), sums_.end(), at);
        return wordAt(static_cast<std::size_t>(found - sums_.begin()));
    }
    std::string words(std::size_t count, const std::string& between = " ") {
        std::string text = word();
        for (std::size_t n = 1; n < count; ++n) text.append(between).append(word());
        return text;
    }
    std::size_t upTo(std::size_t most) { return 1 + random_() % most; }

  private:
    std::mt19937_64 random_{7};
    std::vector<double> sums_;
};

/// The same entries in two catalogues: one that knows frequent words, and one that never does.
class TwoCataloguesTest : public testing::Test {
  protected:
    TwoCataloguesTest() {
        for (std::size_t n = 0; n < entries; ++n) {
            const std::string path = "wwwroot/documents/ab/" + std::to_string(n % 7) + "/" +
                                     std::to_string(n) + (n % 3 == 0 ? ".pdf" : ".txt");
            const std::string text = made_.words(made_.upTo(120));
            catalogue::Columns columns{{std::string(catalogue::column::title), made_.words(made_.upTo(4))}};
            texts_.push_back(text);
            entries_.push_back({path, {text.size(), 0}, {text, "", std::move(columns)}});
        }
        fill(quick_, soon);
        fill(plain_, never);
    }

    void fill(const TemporaryFolder& folder, std::size_t tellingEntries) {
        catalogue::Writer writer(catalogue::databaseFolder(folder.path()), tellingEntries);
        for (std::size_t n = 0; n < entries_.size(); ++n) {
            writer.put(entries_[n]);
            if (n % 250 == 249) writer.commit();
        }
        // Put in again, some of those from before the frequent words were known.
        for (std::size_t n = 0; n < entries_.size(); n += 5) writer.put(entries_[n]);
        writer.commit();
    }

    static catalogue::Query asked(const std::string& text, const std::string& sortBy = "rank[d],doctitle") {
        return queryBelow("", text, sortBy);
    }

    static std::vector<std::pair<std::uint32_t, int>> pairs(const std::vector<Hit>& hits) {
        std::vector<std::pair<std::uint32_t, int>> all;
        for (const Hit& hit : hits) all.emplace_back(hit.id, hit.rank);
        return all;
    }

    /// However many are asked for, they are the first ones of all.
    void expectFirstOnes(const Reader& reader, const catalogue::Query& query,
                         const std::vector<std::pair<std::uint32_t, int>>& all) {
        for (const std::size_t most : {1U, 7U, 40U, 120U, 960U}) {
            const auto found = reader.find(query, most);
            const auto some = pairs(found.hits);
            ASSERT_LE(some.size(), all.size()) << query.text;
            EXPECT_TRUE(std::equal(some.begin(), some.end(), all.begin())) << query.text << " " << most;
            EXPECT_EQ(found.isAll, some.size() == all.size()) << query.text << " " << most;
            EXPECT_TRUE(!some.empty() || all.empty()) << query.text;
        }
    }

    /// Words that stand so in a text, or any.
    std::string phrase(std::size_t count) {
        const std::vector<catalogue::Word> all = catalogue::wordsOf(texts_[made_.upTo(entries) - 1]);
        if (made_.upTo(4) == 1 || all.size() < count) return made_.words(count);
        std::string found;
        for (std::size_t n = 0, begin = made_.upTo(all.size() - count + 1) - 1; n < count; ++n)
            found.append(n == 0 ? "" : " ").append(all[begin + n].folded);
        return found;
    }

    std::string randomQuery() {
        const auto wild = [this] { return made_.word().substr(0, 2 + made_.upTo(2)) + "*"; };
        switch (made_.upTo(9)) {
            case 1:
                return "@all " + made_.word();
            case 2:
                return "@all " + made_.words(2, " AND ");
            case 3:
                return "(@all " + made_.words(5, " OR ") + ") OR (@filename " + made_.word() + ")";
            case 4:
                return "@all \"" + phrase(1 + made_.upTo(3)) + "\"";
            case 5:
                return "@all " + wild();
            case 6:
                return "$all " + made_.words(2);
            case 7:
                return "(@all " + made_.words(2, " OR ") + ") AND #filename=*.pdf";
            case 8:
                return "@all " + made_.word() + " AND NOT \"" + phrase(2) + "\"";
            default:
                return "@doctitle \"" + made_.words(2) + "\" OR @contents \"" + phrase(2) + "\"";
        }
    }

    /// Whether the words stand in the text one behind the other, told without any catalogue.
    static bool stands(const std::string& phrase, const std::string& text) {
        return (" " + text + " ").find(" " + phrase + " ") != std::string::npos;
    }

    Texts made_;
    std::vector<std::string> texts_;
    std::vector<catalogue::Entry> entries_;
    TemporaryFolder quick_;
    TemporaryFolder plain_;
};

TEST_F(TwoCataloguesTest, FindTheSameInTheSameOrderWithTheSameRanks) {
    const Reader quick(quick_.path());
    const Reader plain(plain_.path());
    std::size_t found = 0;
    for (int n = 0; n < 250; ++n) {
        const auto query = asked(randomQuery());
        const auto all = plain.find(query, 0);
        ASSERT_TRUE(all.isAll);
        EXPECT_EQ(pairs(quick.find(query, 0).hits), pairs(all.hits)) << query.text;
        expectFirstOnes(quick, query, pairs(all.hits));
        found += all.hits.size();
    }
    EXPECT_GT(found, 10'000U);
}

TEST_F(TwoCataloguesTest, AreSortedByColumnsAlike) {
    const Reader quick(quick_.path());
    const Reader plain(plain_.path());
    for (int n = 0; n < 60; ++n) {
        const auto query = asked(randomQuery(), n % 2 == 0 ? "doctitle" : "filename[d],rank[d]");
        const auto all = pairs(plain.find(query, 0).hits);
        EXPECT_EQ(pairs(quick.find(query, 0).hits), all) << query.text;
        expectFirstOnes(quick, query, all);
    }
}

TEST_F(TwoCataloguesTest, OrderByRankThenTitleThenPath) {
    const Reader reader(quick_.path());
    for (int n = 0; n < 40; ++n) {
        const auto query = asked(randomQuery());
        const auto found = reader.find(query, 0);
        const auto rows = reader.rows(query, found.database, found.hits);
        const auto key = [](const catalogue::Row& row) {
            const auto title = row.columns.find(std::string(catalogue::column::title));
            return std::tuple(-row.rank, title == row.columns.end() ? "" : title->second, row.path);
        };
        EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end(), [&](const auto& a, const auto& b) {
            return key(a) < key(b);
        })) << query.text;
        EXPECT_TRUE(std::all_of(rows.begin(), rows.end(),
                                [](const auto& row) { return row.rank >= 1 && row.rank <= 1000; }));
    }
}

TEST_F(TwoCataloguesTest, HoldAPhraseWhereItStands) {
    const Reader reader(quick_.path());
    std::size_t stood = 0;
    for (int n = 0; n < 150; ++n) {
        const std::string sought = phrase(1 + made_.upTo(3));
        std::set<std::string> expected;
        for (std::size_t entry = 0; entry < entries; ++entry)
            if (stands(sought, texts_[entry])) expected.insert(entries_[entry].path);
        const auto query = asked("@contents \"" + sought + "\"");
        const auto hits = reader.find(query, 0);
        const auto paths = reader.paths(query, hits.database, hits.hits);
        EXPECT_EQ(std::set<std::string>(paths.begin(), paths.end()), expected) << sought;
        stood += expected.size();
    }
    EXPECT_GT(stood, 100U);
}

TEST_F(TwoCataloguesTest, DifferInTheFrequentWordsAlone) {
    const Xapian::Database quick(catalogue::databaseFolder(quick_.path()));
    const Xapian::Database plain(catalogue::databaseFolder(plain_.path()));
    EXPECT_TRUE(FrequentWords::areSettledIn(quick));
    EXPECT_FALSE(FrequentWords::areSettledIn(plain));
    const FrequentWords frequent = FrequentWords::in(quick);
    const std::string first = frequent.codeOf(wordAt(0));
    ASSERT_EQ(first.size(), 1U);
    const bool hasLong = [&] {
        for (std::size_t n = 0; n < vocabulary; ++n)
            if (frequent.codeOf(wordAt(n)).size() == 2) return true;
        return false;
    }();
    EXPECT_TRUE(hasLong);
    EXPECT_EQ(frequent.codeOf(wordAt(vocabulary - 1)), "");
    EXPECT_GT(quick.get_termfreq(FrequentWords::pairTerm(first, first)), 0U);
    EXPECT_EQ(plain.get_termfreq(FrequentWords::pairTerm(first, first)), 0U);
    // Those put in before, less those put in again.
    EXPECT_EQ(quick.get_termfreq(FrequentWords::untoldTerm()), 200U);
    EXPECT_EQ(plain.get_termfreq(FrequentWords::untoldTerm()), entries);
}

TEST_F(CatalogueTest, FrequentWordsStayTheSame) {
    const auto put = [&](const std::string& name, const std::string& text) {
        catalogue::Writer writer(database(), 3);
        writer.put({"wwwroot/documents/ab/" + name, {text.size(), 0}, {text, "", {}}});
        writer.commit();
    };
    const auto code = [&](const std::string& word) {
        return FrequentWords::in(Xapian::Database(database())).codeOf(word);
    };
    for (const auto* name : {"1.txt", "2.txt"}) put(name, "old words");
    EXPECT_EQ(code("old"), "");
    put("3.txt", "old words");
    const std::string old = code("old");
    EXPECT_NE(old, "");
    for (const auto* name : {"4.txt", "5.txt", "6.txt", "7.txt", "8.txt"}) put(name, "new words");
    EXPECT_EQ(code("old"), old);
    EXPECT_EQ(code("new"), "");
    EXPECT_EQ(find(query("\"old words\""))->size(), 3);
    EXPECT_EQ(find(query("\"new words\""))->size(), 5);
    EXPECT_EQ(find(query("\"words old\""))->size(), 0);
}
TEST_F(CatalogueTest, WithoutFrequentWordsPhrasesAreFoundByTheirTracesAlone) {
    catalogue::Writer writer(database(), 1);
    writer.put({"wwwroot/documents/ab/1.txt", {1, 0}, {"", "", {}}});
    writer.commit();
    writer.put({"wwwroot/documents/ab/2.txt", {1, 0}, {"two words", "", {}}});
    writer.commit();
    EXPECT_TRUE(FrequentWords::areSettledIn(Xapian::Database(database())));
    EXPECT_EQ(find(query("\"two words\""))->size(), 1);
}

}  // namespace
}  // namespace torvex::test
