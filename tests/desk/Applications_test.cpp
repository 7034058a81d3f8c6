#include <gmock/gmock.h>

#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;

class RegistersApplicationsTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_APPLICATIONS", {{"app_id", 5},
                                    {"app_name", "Shop"},
                                    {"app_param_public", "kept"},
                                    {"app_param_admin", "kept too"},
                                    {"app_system", 1}});
        row("TORVEX_APPLICATIONS", {{"app_id", 6}, {"app_name", "Map"}});
    }
    std::string save(int id, const std::string& name, int advId = 0) {
        return registers().saveApplication(id, name, " About it ", " /shop.asp ", "/admin.asp",
                                           "/publish.asp", advId);
    }
    std::string rowOf(const std::string& id) {
        return rowsOf(
                   "select app_name, app_description, app_href_public, app_href_admin, app_href_publish, "
                   "app_param_public, app_param_admin, app_system, lock from TORVEX_APPLICATIONS where "
                   "app_id = " +
                   id)
            .at(0);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersApplicationsTest, bothEngines(), engineName);

TEST_P(RegistersApplicationsTest, AnApplicationIsAdded) {
    const std::string id = save(0, "  Shelf ", 40);
    EXPECT_EQ(rowOf(id), "Shelf|About it|/shop.asp|/admin.asp|/publish.asp|||0|");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||40|new|New application \"Shelf\""));
}

TEST_P(RegistersApplicationsTest, AnApplicationIsSavedAndLetGoAndStaysWhatElseItIs) {
    hold("TORVEX_APPLICATIONS", "app_id", 5, host.session.id());
    EXPECT_EQ(save(5, "Garden shop", 40), "5");
    EXPECT_EQ(rowOf("5"), "Garden shop|About it|/shop.asp|/admin.asp|/publish.asp|kept|kept too|1|");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||40|save|Application \"Garden shop\" has been updated"));
}

TEST_P(RegistersApplicationsTest, LongTextsAreCut) {
    const std::string text(600, 'x');
    EXPECT_EQ(registers().saveApplication(5, text, text, text, text, text), "5");
    const std::string cut(500, 'x');
    EXPECT_EQ(rowOf("5"),
              std::string(50, 'x') + "|" + cut + "|" + cut + "|" + cut + "|" + cut + "|kept|kept too|1|");
}

TEST_P(RegistersApplicationsTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save(99, "New"); });
    expectRefusal("-2", [&] { return save(5, " map "); });
    expectRefusal("-2", [&] { return save(0, "SHOP"); });
    expectRefusal("-3", [&] { return save(0, "  "); });
    hold("TORVEX_APPLICATIONS", "app_id", 5, bertsSession);
    expectRefusal("-4", [&] { return save(5, "New"); });
    actAsNobody();
    expectRefusal("-10", [&] { return save(6, "New"); });
}

TEST_P(RegistersApplicationsTest, AFailureAnywhereChangesNothing) {
    failEverywhere("5", "-99", [&] { return save(5, "New"); });
}

TEST_P(RegistersApplicationsTest, OfTwoWhoAddAnApplicationOfOneNameOneDoes) {
    beforeTransaction([&] { row("TORVEX_APPLICATIONS", {{"app_id", 9}, {"app_name", "Shelf"}}); });
    EXPECT_EQ(save(0, "Shelf"), "-2");
}

}  // namespace
}  // namespace torvex::test
