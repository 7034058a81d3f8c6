#include "templates/Application.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class ApplicationTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (!HasFatalFailure()) applications.connect(connection());
    }

    void entry(int id, const std::string& name, int system, const Value& publish) {
        row("TORVEX_APPLICATIONS", {{"app_id", id},
                                    {"app_name", name},
                                    {"app_description", "Of " + name},
                                    {"app_href_public", "/public/" + name},
                                    {"app_href_admin", "/admin/" + name},
                                    {"app_href_publish", publish},
                                    {"app_system", system}});
    }

    void fourEntries() {
        entry(1, "Shop", 0, "");
        entry(2, "Forum", 1, "/publish/forum");
        entry(3, "album", 0, "/publish/album");
        entry(4, "Board", 1, {});
    }

    std::vector<std::string> names(int listType) {
        const Value list = applications.getApplicationList(listType);
        std::vector<std::string> names;
        if (list.isEmpty()) return names;
        for (std::size_t i = 0; i < list.grid().rows(); ++i) names.push_back(list.grid().at(1, i).toText());
        return names;
    }

    Application applications{host.context()};
};
INSTANTIATE_TEST_SUITE_P(Engines, ApplicationTest, bothEngines(), engineName);

TEST_P(ApplicationTest, AnObjectStartsWithoutAnEntry) {
    EXPECT_FALSE(applications.appExists());
    EXPECT_EQ(applications.appName(), "");
}

TEST_P(ApplicationTest, AnEntryIsReadWhole) {
    fourEntries();
    EXPECT_TRUE(applications.getApplication(2));
    EXPECT_TRUE(applications.appExists());
    EXPECT_EQ(applications.appName(), "Forum");
    EXPECT_EQ(applications.appDescription(), "Of Forum");
    EXPECT_EQ(applications.appURLPublic(), "/public/Forum");
    EXPECT_EQ(applications.appURLAdmin(), "/admin/Forum");
    EXPECT_EQ(applications.appURLPublish(), "/publish/forum");
    EXPECT_EQ(applications.appSystem(), "1");
}

TEST_P(ApplicationTest, AnUnknownEntryClearsTheOneBefore) {
    fourEntries();
    applications.getApplication(2);
    EXPECT_FALSE(applications.getApplication(77));
    EXPECT_FALSE(applications.appExists());
    EXPECT_EQ(applications.appName(), "");
    EXPECT_EQ(applications.appURLPublic(), "");
}

TEST_P(ApplicationTest, AnEntryIsFoundByItsName) {
    fourEntries();
    EXPECT_EQ(applications.getApplicationId("FORUM"), 2);
    EXPECT_EQ(applications.getApplicationId("' or '1'='1"), -1);
}

TEST_P(ApplicationTest, TheNameOfAnEntryIsFoundByItsNumber) {
    fourEntries();
    EXPECT_EQ(applications.getApplicationName(3), "album");
    EXPECT_EQ(applications.getApplicationName(77), "");
    EXPECT_EQ(applications.getApplicationName(-1), "");
}

TEST_P(ApplicationTest, TheListOfAllComesBySystemAndName) {
    fourEntries();
    EXPECT_EQ(names(-1), (std::vector<std::string>{"album", "Shop", "Board", "Forum"}));
}

TEST_P(ApplicationTest, TheListOfPublishableEntriesHasThoseWithAnAddressForIt) {
    fourEntries();
    EXPECT_EQ(names(2), (std::vector<std::string>{"album", "Forum"}));
}

TEST_P(ApplicationTest, TheListsBySystemFlagComeByName) {
    fourEntries();
    EXPECT_EQ(names(0), (std::vector<std::string>{"album", "Shop"}));
    EXPECT_EQ(names(1), (std::vector<std::string>{"Board", "Forum"}));
}

TEST_P(ApplicationTest, AListHasFourColumns) {
    fourEntries();
    const Value list = applications.getApplicationList(1);
    ASSERT_TRUE(list.isGrid());
    ASSERT_EQ(list.grid().columns(), 4);
    EXPECT_EQ(list.grid().at(0, 1), Value(2));
    EXPECT_EQ(list.grid().at(1, 1), Value("Forum"));
    EXPECT_EQ(list.grid().at(2, 1), Value("Of Forum"));
    EXPECT_EQ(list.grid().at(3, 1), Value(1));
}

TEST_P(ApplicationTest, AListWithoutEntriesIsEmpty) {
    EXPECT_TRUE(applications.getApplicationList(-1).isEmpty());
}

TEST_P(ApplicationTest, FailuresTellTheOperation) {
    drop("TORVEX_APPLICATIONS");
    const auto begins = [](const std::string& error, const char* function) {
        EXPECT_TRUE(error.starts_with(chain({function}))) << error;
    };
    begins(errorOf([&] { applications.getApplication(1); }), "getApplication !");
    begins(errorOf([&] { applications.getApplicationId("x"); }), "getApplicationId !");
    begins(errorOf([&] { applications.getApplicationList(1); }), "getApplicationList !");
    begins(errorOf([&] { applications.getApplicationName(1); }), "getApplicationName !");
}

}  // namespace
}  // namespace torvex::test
