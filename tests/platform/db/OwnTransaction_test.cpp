#include "platform/db/OwnTransaction.h"

#include <gmock/gmock.h>

#include "platform/Errors.h"
#include "support/TestDatabase.h"
#include "support/TestHost.h"

namespace torvex::db {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OwnTransactionTest : public test::DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        host.database.target = &database();
        host.application.set("torvex_odbc", connection().connectionText());
    }

    HostContext& context() { return host.context(); }
    std::string roles() {
        std::string names;
        auto rows = connection().query("select roleName from TORVEX_ROLES where roleName like 'new%'");
        while (rows.next()) names += rows.text("roleName");
        return names;
    }
    static void addRole(Connection& on) {
        on.execute("insert into TORVEX_ROLES (roleName, roleDesc) values ('new', '')");
    }
    static Outcome<std::string> addAndFail(Connection& own) {
        addRole(own);
        own.execute("insert into TORVEX_NOWHERE (a) values (1)");
        return commit("added");
    }

    test::TestHost host;
};
INSTANTIATE_TEST_SUITE_P(Engines, OwnTransactionTest, test::bothEngines(), test::engineName);

TEST_P(OwnTransactionTest, WhatIsCommittedStaysAndGivesItsValue) {
    const auto outcome = inOwnTransaction(context(), [](Connection& own) {
        addRole(own);
        return commit(12);
    });
    EXPECT_TRUE(outcome.isCommitted);
    EXPECT_EQ(outcome.value, 12);
    EXPECT_EQ(roles(), "new");
}

TEST_P(OwnTransactionTest, WhatIsRefusedIsTakenBackAndGivesItsValue) {
    const auto outcome = inOwnTransaction(context(), [](Connection& own) {
        addRole(own);
        return refuse(12);
    });
    EXPECT_FALSE(outcome.isCommitted);
    EXPECT_EQ(outcome.value, 12);
    EXPECT_EQ(roles(), "");
}

TEST_P(OwnTransactionTest, NeitherAnEmptyValueNorAnyOtherDecides) {
    inOwnTransaction(context(), [](Connection& own) {
        addRole(own);
        return commit(std::string("-99"));
    });
    EXPECT_EQ(roles(), "new");
    connection().execute("delete from TORVEX_ROLES where roleName = 'new'");
    inOwnTransaction(context(), [](Connection& own) {
        addRole(own);
        return refuse(std::string());
    });
    EXPECT_EQ(roles(), "");
}

TEST_P(OwnTransactionTest, AFailurePassesOnAndIsTakenBack) {
    EXPECT_THROW(inOwnTransaction(context(), addAndFail), DatabaseError);
    EXPECT_EQ(roles(), "");
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(OwnTransactionTest, ATriedFailureIsRefusedWithItsCodeAndTold) {
    using namespace std::string_view_literals;
    const auto outcome = tryInOwnTransaction(context(), "saving of role 5", "-99"sv, addAndFail);
    EXPECT_FALSE(outcome.isCommitted);
    EXPECT_EQ(outcome.value, "-99");
    EXPECT_EQ(roles(), "");
    EXPECT_THAT(host.log.lines, ElementsAre(testing::StartsWith("saving of role 5: ")));
}

TEST_P(OwnTransactionTest, ATriedOneCoversTheOpeningToo) {
    host.application.set("torvex_odbc", "nothing that can be opened");
    const auto outcome = tryInOwnTransaction(context(), "saving", -1, [](Connection&) { return commit(1); });
    EXPECT_FALSE(outcome.isCommitted);
    EXPECT_EQ(outcome.value, -1);
    EXPECT_EQ(host.log.lines.size(), 1U);
}

TEST_P(OwnTransactionTest, ATriedOneHasItsValueAndTellsNothingWhenItIsCommitted) {
    const auto outcome = tryInOwnTransaction(context(), "saving", -1, [](Connection& own) {
        addRole(own);
        return commit(1);
    });
    EXPECT_TRUE(outcome.isCommitted);
    EXPECT_EQ(outcome.value, 1);
    EXPECT_EQ(roles(), "new");
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(OwnTransactionTest, TheEndOfARequestInTheMiddleIsNoFailure) {
    EXPECT_THROW(tryInOwnTransaction(context(), "saving", -1,
                                     [](Connection& own) -> Outcome<int> {
                                         addRole(own);
                                         throw ResponseEnded();
                                     }),
                 ResponseEnded);
    EXPECT_EQ(roles(), "");
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(OwnTransactionTest, AConnectionThatIsThereCanBeUsed) {
    const auto outcome = inTransaction(connection(), [](Connection& on) {
        addRole(on);
        return refuse(3);
    });
    EXPECT_EQ(outcome.value, 3);
    EXPECT_EQ(roles(), "");
}

}  // namespace
}  // namespace torvex::db
