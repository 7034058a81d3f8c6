#include "platform/db/Connection.h"

#include <cmath>
#include <limits>

#include "installation/Schema.h"
#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

using namespace std::string_view_literals;

/// A table with a column of each kind.
class ConnectionTest : public test::DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        if (HasFatalFailure()) return;
        connection().executeScript(
            Schema::wordsOf(GetParam(),
                            "create table Thing (id bigint primary key, Name {text}, amount double precision,"
                            " marked {flag}, made {date}, story {text});"
                            "create index idx_thing_name on Thing (name);"));
    }

    void add(int id, std::string_view name) {
        EXPECT_EQ(connection().execute("insert into Thing (id, name) values (?, ?)", {id, name}), 1);
    }
    double countOf(std::string_view statement, Parameters parameters = {}) {
        return countOf(connection(), statement, parameters);
    }
    static double countOf(Connection& on, std::string_view statement, Parameters parameters = {}) {
        auto rows = on.query(statement, parameters);
        return rows.next() ? rows.number(rows.columnName(0)) : -1;
    }
    double named(std::string_view name) {
        return countOf("select count(*) as n from Thing where name = ?", {name});
    }
    double like(std::string_view pattern) {
        return countOf("select count(*) as n from Thing where name like ?", {pattern});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ConnectionTest, test::bothEngines(), test::engineName);

TEST_P(ConnectionTest, TellsItsEngine) {
    EXPECT_EQ(connection().engine(), GetParam());
}

TEST_P(ConnectionTest, ItsTextOpensTheSameDatabaseAgain) {
    add(1, "shared");
    const Lease other = database().open(connection().connectionText());
    EXPECT_EQ(countOf(*other, "select count(*) as n from Thing where id = 1"), 1);
}

TEST_P(ConnectionTest, FindsTablesAndColumnsWhateverTheirCase) {
    add(7, "seven");
    auto rows = connection().query("SELECT ID, nAmE FROM tHiNg WHERE iD = ?", {7});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("Id"), 7);
    EXPECT_EQ(rows.text("NAME"), "seven");
    EXPECT_EQ(rows.columns(), 2U);
}

TEST_P(ConnectionTest, ReadsColumnsInAnyOrder) {
    connection().execute("insert into Thing (id, name, amount, marked) values (?, ?, ?, ?)",
                         {1, "a"sv, 2.5, true});
    auto rows = connection().query("select id, name, amount, marked from Thing");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("marked"), 1);
    EXPECT_EQ(rows.number("id"), 1);
    EXPECT_EQ(rows.number("amount"), 2.5);
    EXPECT_EQ(rows.text("name"), "a");
    EXPECT_EQ(rows.number("id"), 1);
}

TEST_P(ConnectionTest, ThrowsForAColumnThatTheResultLacks) {
    add(1, "a");
    auto rows = connection().query("select id from Thing");
    ASSERT_TRUE(rows.next());
    EXPECT_THROW(rows.text("name"), DatabaseError);
    EXPECT_THROW(rows.isNull("nothing"), DatabaseError);
}

TEST_P(ConnectionTest, NullIsAskedForAndReadsAsEmpty) {
    connection().execute("insert into Thing (id, name, amount, made) values (?, ?, ?, ?)",
                         {1, nullptr, nullptr, nullptr});
    auto rows = connection().query("select name, amount, made from Thing");
    ASSERT_TRUE(rows.next());
    for (const std::string_view column : {"name", "amount", "made"}) {
        EXPECT_TRUE(rows.isNull(column));
        EXPECT_EQ(rows.text(column), "");
        EXPECT_EQ(rows.view(column), "");
        EXPECT_EQ(rows.number(column, -1), -1);
        EXPECT_TRUE(rows.value(column).isEmpty());
    }
}

TEST_P(ConnectionTest, AnEmptyTextIsNotNull) {
    add(1, "");
    auto rows = connection().query("select name from Thing where name = ''");
    ASSERT_TRUE(rows.next());
    EXPECT_FALSE(rows.isNull("name"));
    EXPECT_TRUE(rows.value("name").isText());
}

TEST_P(ConnectionTest, GivesNoRowsBehindTheLast) {
    add(1, "a");
    auto rows = connection().query("select id from Thing");
    EXPECT_TRUE(rows.next());
    EXPECT_FALSE(rows.next());
    EXPECT_FALSE(rows.next());
}

TEST_P(ConnectionTest, NumbersOfAllKindsComeBackAsNumbers) {
    connection().execute("insert into Thing (id, amount, marked) values (?, ?, ?)",
                         {std::int64_t{1} << 52, 0.1, false});
    auto rows =
        connection().query("select id, amount, marked, count(*) over () as n, id = id as same from Thing");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.value("id"), Value(4503599627370496.0));
    EXPECT_EQ(rows.text("id"), "4503599627370496");
    EXPECT_EQ(rows.value("amount"), Value(0.1));
    EXPECT_EQ(rows.text("amount"), "0.1");
    EXPECT_EQ(rows.value("marked"), Value(0));
    EXPECT_EQ(rows.value("n"), Value(1));
    EXPECT_EQ(rows.value("same"), Value(1));
    EXPECT_EQ(rows.text("same"), "1");
}

TEST_P(ConnectionTest, SumsAreNumbers) {
    connection().execute("insert into Thing (id, amount) values (?, ?), (?, ?)", {1, 1.5, 2, 2.5});
    auto rows =
        connection().query("select sum(id) as ids, sum(amount) as amounts, sum(marked) as none from Thing");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.value("ids"), Value(3));
    EXPECT_EQ(rows.text("ids"), "3");
    EXPECT_EQ(rows.text("amounts"), "4");
    EXPECT_TRUE(rows.isNull("none"));
}

TEST_P(ConnectionTest, ATextReadAsANumberMustBeOne) {
    add(1, " 12 ");
    add(2, "twelve");
    auto rows = connection().query("select name from Thing order by id");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("name"), 12);
    ASSERT_TRUE(rows.next());
    EXPECT_THROW(rows.number("name"), DatabaseError);
}

TEST_P(ConnectionTest, QuotesAndMarksInATextAreNothingSpecial) {
    const std::string_view text = "it's \"quoted\" ? $1 \\ -- ; %' or ''='";
    add(1, text);
    EXPECT_EQ(named(text), 1);
    auto rows = connection().query("select name from Thing");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.text("name"), text);
}

TEST_P(ConnectionTest, AQuestionMarkInQuotesIsNoParameter) {
    add(1, "why?");
    auto rows = connection().query(
        "select 'it''s ?' as \"what?\", name from Thing -- and why?\nwhere name = 'why?' and id = ?", {1});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.text("what?"), "it's ?");
}

TEST_P(ConnectionTest, TextsCompareIgnoringCaseBeyondAscii) {
    add(1,
        "\xC3\x89"
        "COLE Stra\xC3\x9F"
        "E");
    EXPECT_EQ(named("\xC3\xA9"
                    "cole stra\xC3\x9F"
                    "e"),
              1);
    EXPECT_EQ(named("ecole strasse"), 0);
    EXPECT_EQ(countOf("select count(*) as n from Thing where name <> ?", {"\xC3\xA9"
                                                                          "cole stra\xC3\x9F"
                                                                          "e"sv}),
              0);
    EXPECT_EQ(countOf("select count(*) as n from Thing where name in (?, ?)", {"x"sv,
                                                                               "\xC3\xA9"
                                                                               "COLE STRA\xC3\x9F"
                                                                               "E"sv}),
              1);
}

TEST_P(ConnectionTest, UniqueKeysAndDistinctIgnoreCase) {
    add(1, "\xC3\x84");
    add(2, "\xC3\xA4");
    EXPECT_EQ(countOf("select count(distinct name) as n from Thing"), 1);
    connection().execute("insert into TORVEX_LANGUAGES (lang, name) values ('zz', 'one')");
    EXPECT_THROW(connection().execute("insert into TORVEX_LANGUAGES (lang, name) values ('ZZ', 'two')"),
                 DatabaseError);
}

TEST_P(ConnectionTest, OrdersTextIgnoringCaseByCharacterCodes) {
    for (int id = 1; const std::string_view name : {"b", "A", "\xC3\x84", "a.", "a/", "C"}) add(id++, name);
    std::string order;
    auto rows = connection().query("select name from Thing order by name");
    while (rows.next()) order += rows.text("name") + " ";
    EXPECT_EQ(order, "A a. a/ b C \xC3\x84 ");
}

TEST_P(ConnectionTest, ARangeFindsWhatLiesBelowANode) {
    for (int id = 1;
         const std::string_view name : {"ab.en.01", "AB.EN.01.02", "ab.en.01.99", "ab.en.02", "ab.en.010"}) {
        add(id++, name);
    }
    EXPECT_EQ(countOf("select count(*) as n from Thing where name >= ? and name < ?",
                      {"Ab.En.01."sv, "Ab.En.01/"sv}),
              2);
}

TEST_P(ConnectionTest, LikeIgnoresCaseAndKnowsBothWildcards) {
    add(1, "\xC3\x89tude No. 5");
    EXPECT_EQ(like("\xC3\xA9TUDE%"), 1);
    EXPECT_EQ(like("%no%5"), 1);
    EXPECT_EQ(like("_tude no. _"), 1);
    EXPECT_EQ(like("__tude%"), 0);
    EXPECT_EQ(like("%NO. 5_"), 0);
    EXPECT_EQ(like("%"), 1);
    EXPECT_EQ(like(""), 0);
    EXPECT_EQ(countOf("select count(*) as n from Thing where name not like ?", {"\xC3\xA9%"sv}), 0);
}

TEST_P(ConnectionTest, LikeTakesAnEscapedWildcardAsItStands) {
    add(1, "100%_a");
    add(2, "100 percent");
    EXPECT_EQ(like("100\\%%"), 1);
    EXPECT_EQ(like("100_\\_A"), 1);
    EXPECT_EQ(countOf("select count(*) as n from Thing where name like ? escape '!'", {"100!%!_A"sv}), 1);
}

TEST_P(ConnectionTest, LikeWithATextPutTogetherInTheStatementIgnoresCase) {
    add(1, "Prefix and more");
    EXPECT_EQ(countOf("select count(*) as n from Thing where name like ? || '%'", {"PREFIX"sv}), 1);
}

TEST_P(ConnectionTest, LowerAndUpperKnowLettersBeyondAscii) {
    auto rows =
        connection().query("select lower(?) as low, upper(?) as high", {"\xC3\x89X"sv, "\xC3\xA9x"sv});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.text("low"), "\xC3\xA9x");
    EXPECT_EQ(rows.text("high"), "\xC3\x89X");
}

TEST_P(ConnectionTest, ATextWithANulFindsNothing) {
    add(1, "abc");
    EXPECT_EQ(named("abc\0"sv), 0);
    EXPECT_EQ(named("abc\0def"sv), 0);
    EXPECT_EQ(named("\0"sv), 0);
    EXPECT_EQ(like("abc\0"sv), 0);
}

TEST_P(ConnectionTest, AMalformedTextFindsNothing) {
    add(1, "abc");
    EXPECT_EQ(named("abc\xFF"), 0);
    EXPECT_EQ(named("\xC3"), 0);
    EXPECT_EQ(like("abc\xC3"), 0);
    EXPECT_EQ(named("abc"), 1);
}

TEST_P(ConnectionTest, WhatATextCannotHoldIsStoredAsTheReplacementCharacter) {
    add(1,
        "a\0b\xFF"
        "c"sv);
    auto rows = connection().query("select name from Thing");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.text("name"),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD"
              "c");
}

TEST_P(ConnectionTest, LongTextsComeBackWhole) {
    std::string text;
    for (int i = 0; i < 50000; ++i) text += "l\xC3\xA9ng'";
    connection().execute("insert into Thing (id, story) values (1, ?)", {std::string_view(text)});
    auto rows = connection().query("select story from Thing");
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.view("story"), text);
}

TEST_P(ConnectionTest, AnyNumberAgainstAKeyFindsItOrNothing) {
    add(12, "twelve");
    constexpr std::string_view byKey = "select count(*) as n from Thing where id = ?";
    EXPECT_EQ(countOf(byKey, {12}), 1);
    EXPECT_EQ(countOf(byKey, {12.0}), 1);
    EXPECT_EQ(countOf(byKey, {std::int64_t{12}}), 1);
    EXPECT_EQ(countOf(byKey, {12.5}), 0);
    EXPECT_EQ(countOf(byKey, {1e18}), 0);
    EXPECT_EQ(countOf(byKey, {1e30}), 0);
    EXPECT_EQ(countOf(byKey, {-1e300}), 0);
    EXPECT_EQ(countOf(byKey, {9223372036854775808.0}), 0);
    EXPECT_EQ(countOf(byKey, {std::numeric_limits<double>::infinity()}), 0);
    EXPECT_EQ(countOf(byKey, {std::nan("")}), 0);
    EXPECT_EQ(countOf(byKey, {nullptr}), 0);
}

TEST_P(ConnectionTest, MomentsComeBackAsMoments) {
    const DateTime moment{2026, 2, 28, 23, 59, 7};
    connection().execute("insert into Thing (id, made) values (?, ?)", {1, moment});
    auto rows = connection().query("select made from Thing where made = ?", {moment});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.value("made"), Value(moment));
    EXPECT_EQ(rows.text("made"), "2026-02-28 23:59:07");
    EXPECT_EQ(rows.view("made"), "2026-02-28 23:59:07");
}

TEST_P(ConnectionTest, MomentsCompareInTime) {
    connection().execute("insert into Thing (id, made) values (1, ?), (2, ?)",
                         {DateTime{1900, 1, 1}, DateTime{2026, 10, 9, 8, 7, 6}});
    EXPECT_EQ(countOf("select count(*) as n from Thing where made > ?", {DateTime{2026, 10, 9, 8, 7, 5}}), 1);
    EXPECT_EQ(countOf("select count(*) as n from Thing where made < ?", {DateTime{2026, 10, 9}}), 1);
}

TEST_P(ConnectionTest, CountsTheRowsThatAStatementChanged) {
    add(1, "a");
    add(2, "b");
    EXPECT_EQ(connection().execute("update Thing set marked = 1"), 2);
    EXPECT_EQ(connection().execute("update Thing set marked = 1 where id = 3"), 0);
    EXPECT_EQ(connection().execute("delete from Thing where id = 1"), 1);
    EXPECT_EQ(connection().execute("create index idx_thing_marked on Thing (marked)"), 0);
}

TEST_P(ConnectionTest, AChangeMayGiveRowsBack) {
    add(1, "a");
    auto rows = connection().query("update Thing set marked = 5 where id = ? returning marked, name", {1});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("marked"), 5);
    EXPECT_EQ(rows.text("name"), "a");
    EXPECT_FALSE(rows.next());
}

TEST_P(ConnectionTest, WrongStatementsThrowAndTheConnectionGoesOn) {
    EXPECT_THROW(connection().query("select nothing from Thing"), DatabaseError);
    EXPECT_THROW(connection().query("selekt"), DatabaseError);
    EXPECT_THROW(connection().execute("insert into Nowhere (a) values (?)", {1}), DatabaseError);
    EXPECT_THROW(connection().execute("delete from Thing where id = ?", {}), DatabaseError);
    EXPECT_THROW(connection().execute("delete from Thing where id = ?", {1, 2}), DatabaseError);
    EXPECT_EQ(countOf("select count(*) as n from Thing"), 0);
}

TEST_P(ConnectionTest, FailuresDoNotTellTheValues) {
    connection().executeScript("create unique index idx_thing_unique on Thing (name)");
    add(1, "secret");
    try {
        connection().execute("insert into Thing (id, name) values (?, ?)", {2, "SECRET"sv});
        FAIL() << "the second row was taken";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(std::string(error.what()).find("ecret"), std::string::npos) << error.what();
        EXPECT_EQ(std::string(error.what()).find("SECRET"), std::string::npos) << error.what();
    }
}

TEST_P(ConnectionTest, AStatementServesAgainWhileItsRowsAreOpen) {
    for (int id = 1; id <= 3; ++id) add(id, "x");
    constexpr std::string_view fromKey = "select id from Thing where id >= ? order by id";
    std::string order;
    auto outer = connection().query(fromKey, {1});
    while (outer.next()) {
        auto inner = connection().query(fromKey, {outer.number("id")});
        while (inner.next()) order += inner.text("id");
        order += ' ';
    }
    EXPECT_EQ(order, "123 23 3 ");
}

TEST_P(ConnectionTest, AStatementForgetsItsValuesAndRows) {
    add(1, "a");
    add(2, "b");
    constexpr std::string_view all = "select id from Thing where id > ? order by id";
    {
        auto rows = connection().query(all, {0});
        ASSERT_TRUE(rows.next());
    }
    auto rows = connection().query(all, {1});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("id"), 2);
    EXPECT_FALSE(rows.next());
}

TEST_P(ConnectionTest, BoundTextsMayGoWhenTheCallReturns) {
    add(1, "a");
    add(2, "b");
    std::string name = "a rather long text that doesn't fit into the object itself";
    auto rows =
        connection().query("select id from Thing where name <> ? order by id", {std::string_view(name)});
    name.assign(name.size(), 'b');
    EXPECT_TRUE(rows.next());
    EXPECT_TRUE(rows.next());
    EXPECT_FALSE(rows.next());
}

TEST_P(ConnectionTest, OneStatementTakesValuesOfSeveralTypes) {
    constexpr std::string_view insert = "insert into Thing (id, amount, name) values (?, ?, ?)";
    connection().execute(insert, {1, 1, "x"sv});
    connection().execute(insert, {2, 1.5, nullptr});
    connection().execute(insert, {3, nullptr, "y"sv});
    EXPECT_EQ(countOf("select sum(amount) as n from Thing"), 2.5);
}

TEST_P(ConnectionTest, SelectStarSeesAColumnThatWasAdded) {
    add(1, "a");
    constexpr std::string_view all = "select * from Thing";
    EXPECT_EQ(connection().query(all).columns(), 6U);
    openAnother()->executeScript("alter table Thing add column more bigint default 7");
    auto rows = connection().query(all);
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.columns(), 7U);
    EXPECT_EQ(rows.number("more"), 7);
}

TEST_P(ConnectionTest, AScriptRunsAllItsStatements) {
    connection().executeScript(
        "insert into Thing (id) values (1); insert into Thing (id) values (2);\n-- done\n");
    EXPECT_EQ(countOf("select count(*) as n from Thing"), 2);
    connection().executeScript("");
}

TEST_P(ConnectionTest, HandsOutKeysBehindOnesThatWereGiven) {
    constexpr std::string_view given = "insert into TORVEX_PAGES_DESIGN (pageId, nodeId) values (?, ?)";
    constexpr std::string_view handedOut = "insert into TORVEX_PAGES_DESIGN (nodeId) values (?)";
    constexpr std::string_view keyOf = "select pageId from TORVEX_PAGES_DESIGN where nodeId = ?";
    connection().execute(given, {500, "ab.en"sv});
    connection().execute(handedOut, {"ab.en.01"sv});
    EXPECT_EQ(countOf(keyOf, {"ab.en.01"sv}), 501);
    connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = 501");
    connection().execute(handedOut, {"ab.en.02"sv});
    EXPECT_EQ(countOf(keyOf, {"ab.en.02"sv}), 502) << "a key is never handed out twice";
}

TEST_P(ConnectionTest, CountsHitsInOneStatement) {
    constexpr std::string_view count =
        "insert into TORVEX_LOGGING (nodeId, yyyymmdd, hits, uniquehits) values (?, ?, 1, ?) "
        "on conflict (nodeId, yyyymmdd) do update set hits = TORVEX_LOGGING.hits + 1, "
        "uniquehits = TORVEX_LOGGING.uniquehits + excluded.uniquehits returning hits";
    for (int hit = 1; hit <= 3; ++hit) {
        auto rows = connection().query(count, {"ab.en"sv, "20260101"sv, true});
        ASSERT_TRUE(rows.next());
        EXPECT_EQ(rows.number("hits"), hit);
    }
}

}  // namespace
}  // namespace torvex::db
