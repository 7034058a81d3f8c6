#include "platform/db/PostgresForesight.h"

#include "platform/db/PostgresConnection.h"
#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

class PostgresForesightTest : public test::DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        if (HasFatalFailure()) return;
        line_ = connectPostgres(connectionText(), {}, {});
        run("create table Thing (id bigint)");
        for (const char* name : {"one", "two"})
            PostgresResult(PQprepare(line_.get(), name, "select $1::bigint as n from Thing", 1, nullptr));
    }
    void TearDown() override {
        line_.reset();
        DatabaseTest::TearDown();
    }

    void run(const char* statement) { const PostgresResult result(PQexec(line_.get(), statement)); }
    static PostgresQuestion question(const char* name, int number) {
        return {name, std::make_shared<const PostgresParameters>(Parameters{number})};
    }
    /// A scope that asks these.
    void learn(const std::vector<PostgresQuestion>& questions) {
        PostgresReading reading;
        reading.begin(line_.get(), questions.front(), foresight_);
        for (const PostgresQuestion& one : questions) reading.note(one);
        reading.teach(foresight_);
        run("rollback");
    }

    /// Whether the answer to the second question is there in a scope that has asked the first one alone.
    bool foresees(const PostgresQuestion& first, const PostgresQuestion& then) {
        PostgresReading reading;
        EXPECT_TRUE(reading.begin(line_.get(), first, foresight_));
        const bool isThere = reading.take(then) != nullptr;
        run("rollback");
        return isThere;
    }

    PostgresHandle line_;
    PostgresForesight foresight_;
};
INSTANTIATE_TEST_SUITE_P(Engines, PostgresForesightTest, testing::Values(Engine::PostgreSql),
                         test::engineName);

TEST_P(PostgresForesightTest, TheFirstQuestionComesWithTheBeginning) {
    PostgresReading reading;
    EXPECT_TRUE(reading.begin(line_.get(), question("one", 1), foresight_));
    EXPECT_EQ(PQtransactionStatus(line_.get()), PQTRANS_INTRANS);
    EXPECT_NE(reading.take(question("one", 1)), nullptr);
    EXPECT_EQ(reading.take(question("one", 1)), nullptr);
    EXPECT_EQ(reading.take(question("two", 1)), nullptr);
}

TEST_P(PostgresForesightTest, WhatFollowedTheLastTimeIsThereBeforeItIsAskedFor) {
    learn({question("one", 1), question("two", 2), question("two", 3)});
    PostgresReading reading;
    ASSERT_TRUE(reading.begin(line_.get(), question("one", 1), foresight_));
    EXPECT_NE(reading.take(question("two", 3)), nullptr);
    EXPECT_NE(reading.take(question("two", 2)), nullptr);
    EXPECT_EQ(reading.take(question("two", 4)), nullptr);
    EXPECT_EQ(reading.take(question("one", 2)), nullptr);
}

TEST_P(PostgresForesightTest, AnotherFirstQuestionHasItsOwn) {
    learn({question("one", 1), question("two", 2)});
    learn({question("one", 7), question("two", 8)});
    EXPECT_FALSE(foresees(question("one", 7), question("two", 2)));
    EXPECT_TRUE(foresees(question("one", 7), question("two", 8)));
}

TEST_P(PostgresForesightTest, TheLatestScopeIsTheOneToGoBy) {
    learn({question("one", 1), question("two", 2)});
    learn({question("one", 1), question("two", 3)});
    EXPECT_FALSE(foresees(question("one", 1), question("two", 2)));
    EXPECT_TRUE(foresees(question("one", 1), question("two", 3)));
}

TEST_P(PostgresForesightTest, NothingIsBegunWhereAnyOfItFails) {
    learn({question("one", 1), question("two", 2)});
    run("deallocate two");
    PostgresReading reading;
    EXPECT_FALSE(reading.begin(line_.get(), question("one", 1), foresight_));
    EXPECT_FALSE(reading.isBegun());
    EXPECT_EQ(PQtransactionStatus(line_.get()), PQTRANS_IDLE);
}

}  // namespace
}  // namespace torvex::db
