#include <gmock/gmock.h>

#include "desk/desk.h"
#include "platform/Keys.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Queue.h"
#include "search/catalogue/Renewal.h"
#include "search/catalogue/Writer.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class CatalogueOperationsTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set(applicationKey::installPath, folder_.path());
    }
    void fill(int entries) {
        catalogue::Writer writer(catalogue::databaseFolder(folder_.path()));
        for (int n = 0; n < entries; ++n)
            writer.put({"wwwroot/documents/ab/" + std::to_string(n) + ".txt", {4, 0}, {"word", "", {}}});
        writer.setMetadata("queue", "0");
        writer.commit();
    }
    Value list() {
        torvex::desk desk(host.context());
        desk.connect(connection());
        return desk.getCatalogue();
    }
    /// The columns of the one row, but for the bytes.
    std::vector<std::string> told() {
        const Value list = this->list();
        std::vector<std::string> cells;
        for (std::size_t column = 0; column < list.grid().columns(); ++column)
            if (column != 1) cells.push_back(list.grid().at(column, 0).toText());
        return cells;
    }

    catalogue::Renewal renewal{host.application};

  private:
    TemporaryFolder folder_;
};
INSTANTIATE_TEST_SUITE_P(Engines, CatalogueOperationsTest, bothEngines(), engineName);

TEST_P(CatalogueOperationsTest, WithoutACatalogueAndAServerThereIsNothingToTell) {
    EXPECT_THAT(told(), ElementsAre("0", "0", "0", "", "", "0", "0", "", ""));
}

TEST_P(CatalogueOperationsTest, WhatItHoldsAndWhatWaitsIsCounted) {
    fill(3);
    catalogue::enqueue(connection(), host.clock, {"a", "b"});
    EXPECT_THAT(told(), ElementsAre("3", "2", "0", "", "", "0", "0", "", ""));
    EXPECT_GT(list().grid().at(1, 0).number(), 1000);
}

TEST_P(CatalogueOperationsTest, WhatTheKeeperTellsIsTold) {
    renewal.tell({.task = catalogue::Task::Anew,
                  .total = 500,
                  .done = 20,
                  .compared = DateTime{2026, 6, 15, 11, 0, 0},
                  .failure = "the disk is full"});
    renewal.ask(catalogue::Task::Stop);
    EXPECT_THAT(told(), ElementsAre("0", "0", "1", "stop", "anew", "500", "20", "2026-06-15T11:00:00",
                                    "the disk is full"));
}

TEST_P(CatalogueOperationsTest, ARenewalIsAskedForAndNoted) {
    renewal.tell({});
    EXPECT_EQ(registers().renewCatalogue(" Anew ", 64), "0");
    EXPECT_EQ(renewal.asked(), catalogue::Task::Anew);
    EXPECT_EQ(registers().renewCatalogue("stop", 64), "0");
    EXPECT_EQ(renewal.asked(), catalogue::Task::Stop);
    EXPECT_THAT(rowsOf("select advId, action, description from TORVEX_AUDIT_TRAIL order by auditId"),
                ElementsAre("64|renew|The search catalogue is to be made anew",
                            "64|renew|The work on the search catalogue is to stop"));
}

TEST_P(CatalogueOperationsTest, WhatCannotBeDoneIsRefusedAndNotNoted) {
    EXPECT_EQ(registers().renewCatalogue("compare", 64), "-1");
    renewal.tell({});
    EXPECT_EQ(registers().renewCatalogue("polish", 64), "-2");
    EXPECT_EQ(registers().renewCatalogue("", 64), "-2");
    actAsNobody();
    EXPECT_EQ(registers().renewCatalogue("compare", 64), "-10");
    EXPECT_EQ(renewal.asked(), catalogue::Task::None);
    EXPECT_THAT(rowsOf("select action from TORVEX_AUDIT_TRAIL"), IsEmpty());
}

TEST_P(CatalogueOperationsTest, FailuresTellTheOperation) {
    fill(1);
    drop("TORVEX_SEARCH_QUEUE");
    EXPECT_THAT(errorOf([&] { list(); }), StartsWith(chain({"getCatalogue !"})));
}

}  // namespace
}  // namespace torvex::test
