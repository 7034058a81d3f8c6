#include <gmock/gmock.h>

#include "cli/ProgramFixture.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;

class SqlCommand : public ProgramDatabaseTest {
  protected:
    SqlCommand() { init(); }

    ProgramResult tryOut(const std::string& statements) {
        return run({"sql", "--install", site(), statements});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SqlCommand, bothEngines(), engineName);

TEST_P(SqlCommand, RowsAreShownAsATable) {
    output({"sql", "--install", site(),
            "insert into TORVEX_SITES (site, name) values ('ab', 'Ünï'), ('cd', 'Two\nlines')"});
    EXPECT_EQ(output({"sql", "--install", site(),
                      "select site, name, description, 12 as number from TORVEX_SITES order by site"}),
              "site  name        description  number\n"
              "----  ----------  -----------  ------\n"
              "ab    Ünï         null             12\n"
              "cd    Two\\nlines  null             12\n"
              "(2 rows)\n");
}

TEST_P(SqlCommand, NoRowsAreShownToo) {
    EXPECT_EQ(output({"sql", "--install", site(), "select site from TORVEX_SITES"}),
              "site\n----\n(0 rows)\n");
}

TEST_P(SqlCommand, JsonKeepsKindsAndTheNamesOfTheSchema) {
    sql("insert into TORVEX_PAGES_DESIGN (nodeId, title, editingDate) "
        "values ('ab.en', 'A \"b\"', '2026-06-15 12:00:00')");
    EXPECT_EQ(sql("select pageId, NODEID, title, editingDate, baseTemplate, editor from TORVEX_PAGES_DESIGN"),
              "{\"pageId\":1,\"nodeId\":\"ab.en\",\"title\":\"A "
              "\\\"b\\\"\",\"editingDate\":\"2026-06-15T12:00:00\","
              "\"baseTemplate\":0,\"editor\":null}\n");
}

TEST_P(SqlCommand, NameIsSpelledAsInTheTableThatIsRead) {
    sql("insert into TORVEX_AUDIT_TRAIL (action, Date) values ('x', '20260615')");
    EXPECT_EQ(sql("select date from TORVEX_AUDIT_TRAIL"), "{\"Date\":\"20260615\"}\n");
    EXPECT_EQ(sql("select date from TORVEX_LOGINS"), "{\"date\":\"\"}\n");
}

TEST_P(SqlCommand, NameGivenByTheStatementIsKept) {
    EXPECT_EQ(sql("select count(*) as totalPages from TORVEX_PAGES_DESIGN"), "{\"totalPages\":0}\n");
}

TEST_P(SqlCommand, StatementsComeFromTheInput) {
    EXPECT_EQ(output({"sql", "--install", site(), "--json"},
                     "-- first; a comment\n"
                     "insert into TORVEX_SITES (site, name) values ('ab', 'a;b');\n\n"
                     "/* second; */ select name from TORVEX_SITES;\n;\n"),
              "{\"name\":\"a;b\"}\n");
}

TEST_P(SqlCommand, AllStoresAreReached) {
    sql("insert into TORVEX_LOGGING (site, lang, nodeId, yyyymmdd, hits) values ('ab', 'en', 'ab.en', "
        "'20260615', 3);"
        "insert into TORVEX_AUDIT_TRAIL (action) values ('x')");
    EXPECT_EQ(sql("select hits from TORVEX_LOGGING; select action from TORVEX_AUDIT_TRAIL"),
              "{\"hits\":3}\n{\"action\":\"x\"}\n");
}

TEST_P(SqlCommand, FailureNamesTheStatementAndKeepsNothing) {
    const ProgramResult failed = tryOut(
        "insert into TORVEX_SITES (site, name) values ('ab', 'x');"
        "insert into TORVEX_LOGGING (site, lang, nodeId, yyyymmdd) values ('ab', 'en', 'ab.en', '20260615');"
        "select site from TORVEX_SITES; insert into TORVEX_NOWHERE (a) values (1)");
    EXPECT_EQ(failed.code, 1);
    EXPECT_THAT(failed.err, HasSubstr("statement 4: "));
    EXPECT_THAT(failed.err, HasSubstr("Nothing was changed"));
    EXPECT_EQ(failed.out, "");
    EXPECT_EQ(sql("select count(*) as n from TORVEX_SITES"), "{\"n\":0}\n");
    EXPECT_EQ(sql("select count(*) as n from TORVEX_LOGGING"), "{\"n\":0}\n");
}

TEST_P(SqlCommand, StatementThatEndsTheTransactionIsRefused) {
    for (const auto* word : {"commit", "ROLLBACK", "begin", "savepoint a", "/* x */ end"}) {
        const ProgramResult refused =
            tryOut(std::string("insert into TORVEX_SITES (site, name) values ('ab', 'x'); ") + word);
        EXPECT_EQ(refused.code, 1) << word;
        EXPECT_THAT(refused.err, HasSubstr("statement 2: "));
    }
    EXPECT_EQ(sql("select count(*) as n from TORVEX_SITES"), "{\"n\":0}\n");
}

TEST_P(SqlCommand, NothingToRunIsWrongUsage) {
    EXPECT_EQ(tryOut(" ; -- nothing").code, 2);
}

}  // namespace
}  // namespace torvex::test
