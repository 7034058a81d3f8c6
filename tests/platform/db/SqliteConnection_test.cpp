#include "platform/db/SqliteConnection.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/db/SqliteStore.h"

namespace torvex::db {
namespace {

class SqliteStoreTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string name = std::filesystem::temp_directory_path() / "torvex-store-XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        parent_ = name;
        folder_ = parent_ + "/store";
    }
    void TearDown() override { std::filesystem::remove_all(parent_); }

    std::string parent_;
    std::string folder_;
};

TEST_F(SqliteStoreTest, AStoreIsThreeFiles) {
    createSqliteStore(folder_);
    auto c = openSqliteStore(folder_, Purpose::Everything);
    c->executeScript("create table T (k integer primary key, t text collate torvex)");
    EXPECT_EQ(c->execute("insert into T (k, t) values (?, ?)", {1.0, std::string_view("\xC3\x89t\xC3\xA9")}),
              1);
    Rows rows = c->query("select * from t where T = ?", {std::string_view("\xC3\xA9T\xC3\x89")});
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.number("K"), 1);
}

}  // namespace
}  // namespace torvex::db
