#include <gmock/gmock.h>

#include "support/RolesTest.h"

namespace torvex::test {
namespace {

using testing::StartsWith;

class LoginListTest : public RolesTest {
  protected:
    std::string lineOf(const std::string& name) {
        for (const auto& line : linesOf(registers().getLogins()))
            if (line.find("|" + name + "|") != std::string::npos) return line;
        return "";
    }
    void set(const std::string& column, const std::string& value) {
        connection().execute("update TORVEX_LOGINS set " + column + " = ? where loginId = ?", {value, bert});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginListTest, bothEngines(), engineName);

TEST_P(LoginListTest, ALoginIsListedWithItsUseAndItsRoles) {
    set("job", "Broker");
    set("date", "20260614");
    set("time", "09:12");
    set("validFrom", "20260101");
    set("validTo", "20261231");
    row("TORVEX_ROLES_LOGINS", {{"roleId", programme}, {"loginId", bert}});
    row("TORVEX_ROLES_LOGINS", {{"roleId", desk}, {"loginId", bert}});
    EXPECT_EQ(lineOf("bert"), "8|bert|Bert Broker|Broker|2026-06-14T09:12:00|1|20260101|20261231|0|0|2|0");
}

TEST_P(LoginListTest, WhoNeverCameHasNoMomentAndAProgramIsOne) {
    set("sessionId", "");
    set("kind", "program");
    EXPECT_EQ(lineOf("bert"), "8|bert|Bert Broker||-|0|||1|0|1|0");
}

TEST_P(LoginListTest, AFailureIsSaid) {
    connection().execute("drop table TORVEX_ROLES_LOGINS");
    EXPECT_THAT(errorOf([&] { registers().getLogins(); }), StartsWith(chain({"getLogins !"})));
}

}  // namespace
}  // namespace torvex::test
