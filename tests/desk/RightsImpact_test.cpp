#include <gmock/gmock.h>

#include "support/RolesTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RightsImpactTest : public RolesTest {
  protected:
    std::vector<std::string> weigh(const std::string& rights, const std::string& scope = "",
                                   int roleId = programme) {
        return linesOf(registers().weighEditRights(roleId, " AA ", "en", rights, scope));
    }
    std::vector<std::string> weighEntry(int entry, bool view, bool edit, const std::string& site = "",
                                        const std::string& lang = "") {
        return linesOf(registers().weighAdvancedRight(programme, entry, site, lang, view, edit));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RightsImpactTest, bothEngines(), engineName);

TEST_P(RightsImpactTest, WhatIsTakenIsCountedInPages) {
    mayEdit(programme, "en", {"edit", "publish"});
    EXPECT_THAT(weigh("00001"), ElementsAre("8|Bert Broker|publish|4|0"));
    EXPECT_THAT(weigh("00000"), ElementsAre("8|Bert Broker|publish|4|0", "8|Bert Broker|edit|4|0"));
    EXPECT_THAT(weigh("00101"), IsEmpty());
}

TEST_P(RightsImpactTest, AScopeCountsWithAllBelowItAndNothingTwice) {
    EXPECT_THAT(weigh("00001", "aa.en.01"), ElementsAre("8|Bert Broker|edit|0|2"));
    EXPECT_THAT(weigh("00001", "aa.en.02,aa.en.01,aa.en.01.01"), ElementsAre("8|Bert Broker|edit|0|3"));
}

TEST_P(RightsImpactTest, WhatAnotherRoleGivesStays) {
    mayEdit(programme, "en", {"publish"});
    role(5, "Helpers", bert);
    mayEdit(5, "en", {"publish"}, "aa.en.01");
    EXPECT_THAT(weigh("00000"), ElementsAre("8|Bert Broker|publish|4|2"));
    connection().execute("update TORVEX_EDIT_RIGHTS set scope = '' where roleId = 5");
    EXPECT_THAT(weigh("00000"), IsEmpty());
}

TEST_P(RightsImpactTest, EverybodyWhoHasTheRoleIsListedByNameButTheAdministrator) {
    mayEdit(programme, "en", {"publish"});
    row("TORVEX_ROLES_LOGINS", {{"roleId", programme}, {"loginId", anna}});
    row("TORVEX_ROLES_LOGINS", {{"roleId", programme}, {"loginId", bert}});
    actAsSa();
    row("TORVEX_ROLES_LOGINS", {{"roleId", programme}, {"loginId", 2}});
    EXPECT_THAT(weigh("00000"), ElementsAre("7|Anna Author|publish|4|0", "8|Bert Broker|publish|4|0"));
}

TEST_P(RightsImpactTest, OtherWebsitesHaveNoPartInIt) {
    mayEdit(programme, "de", {"publish"});
    EXPECT_THAT(weigh("00000"), IsEmpty());
    EXPECT_THAT(weigh("00100", "", 99), IsEmpty());
}

TEST_P(RightsImpactTest, AnEntryIsLostWithTheRowThatGaveIt) {
    mayOpen(programme, 221);
    EXPECT_THAT(weighEntry(221, true, false), ElementsAre("8|Bert Broker|edit|1|0"));
    EXPECT_THAT(weighEntry(221, false, false),
                ElementsAre("8|Bert Broker|view|1|0", "8|Bert Broker|edit|1|0"));
    EXPECT_THAT(weighEntry(221, true, true), IsEmpty());
}

TEST_P(RightsImpactTest, ARowForAllPlacesKeepsWhatARowForOneLoses) {
    mayOpen(programme, 221, "aa", "en");
    EXPECT_THAT(weighEntry(221, false, true, "aa", "en"), ElementsAre("8|Bert Broker|view|1|0"));
    role(5, "Helpers", bert);
    mayOpen(5, 221, "", "en");
    EXPECT_THAT(weighEntry(221, false, true, "aa", "en"), IsEmpty());
}

TEST_P(RightsImpactTest, WhatAnEntryDoesntOfferIsNoGain) {
    EXPECT_THAT(weighEntry(63, true, true), ElementsAre("8|Bert Broker|view|0|1"));
}

}  // namespace
}  // namespace torvex::test
