// The verdict of a page's groups on a visitor, in its place among the other verdicts.

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

// The host's clock stands at 2026-06-15.
constexpr const char* today = "20260615";
constexpr const char* yesterday = "20260614";
constexpr const char* tomorrow = "20260616";

class AccessTest : public SiteTest {
  protected:
    /// The visitor sees nothing of a page that is refused.
    void expectNothingFilled() {
        EXPECT_EQ(server().pgType(), "");
        EXPECT_EQ(server().pgTitle(), "");
        EXPECT_EQ(server().pgOrderId(), -1);
        EXPECT_EQ(server().pgOnline(), -1);
        EXPECT_EQ(server().pgUp(), -1);
        EXPECT_EQ(server().pgTemplateFile(), "");
    }

    int verdict(const std::string& ident, const std::string& username = "",
                const std::string& password = "") {
        server().getPage(ident, username, password);
        return server().pgAccess();
    }

    /// A root, and a page 12 of group 5 with its member "ann".
    void securedPage() {
        host.application.set("torvex_extranet", true);
        page("aa.en").id(10).insert();
        page("aa.en.01").id(12).insert();
        group(5, "members");
        pageGroup(10, 1);
        pageGroup(12, 5);
        user(1, "Ann", "secret", {5});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AccessTest, bothEngines(), engineName);

TEST_P(AccessTest, WithTheExtranetOffNoGroupIsLookedAt) {
    page("aa.en.01").id(12).insert();
    drop("TORVEX_PAGES_GROUPS_LIVE");
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(AccessTest, APageWithoutAnyGroupIsRefused) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).title("Twelve").insert();
    EXPECT_EQ(verdict("12", "Ann", "secret"), -3);
    EXPECT_EQ(server().pgPageId(), 12);
    expectNothingFilled();
}

TEST_P(AccessTest, APageForEverybodyIsOpen) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).insert();
    pageGroup(12, 1);
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(AccessTest, TheLowestGroupDecides) {
    securedPage();
    pageGroup(12, 1);
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(AccessTest, ASecuredPageNeedsAName) {
    securedPage();
    EXPECT_EQ(verdict("12"), -4);
    EXPECT_EQ(verdict("12", "", "secret"), -4);
    expectNothingFilled();
}

TEST_P(AccessTest, ASecuredPageNeedsAPassword) {
    securedPage();
    EXPECT_EQ(verdict("12", "Ann"), -4);
}

TEST_P(AccessTest, AMemberOfAGroupOfThePageMaySeeIt) {
    securedPage();
    EXPECT_EQ(verdict("12", "Ann", "secret"), 1);
    EXPECT_EQ(server().pgType(), "P");
}

TEST_P(AccessTest, AMemberOfAnyGroupOfThePageMaySeeIt) {
    securedPage();
    group(6, "guests");
    pageGroup(12, 6);
    user(2, "Bob", "guest", {6});
    EXPECT_EQ(verdict("12", "Bob", "guest"), 1);
}

TEST_P(AccessTest, AnUnknownNameIsRefused) {
    securedPage();
    EXPECT_EQ(verdict("12", "Eve", "secret"), -5);
    expectNothingFilled();
}

TEST_P(AccessTest, AWrongPasswordIsRefused) {
    securedPage();
    EXPECT_EQ(verdict("12", "Ann", "guess"), -5);
    EXPECT_EQ(verdict("12", "Ann", "' or '1'='1"), -5);
}

TEST_P(AccessTest, AUserOfAnotherGroupIsRefused) {
    securedPage();
    group(6, "guests");
    user(2, "Bob", "guest", {6});
    EXPECT_EQ(verdict("12", "Bob", "guest"), -5);
}

TEST_P(AccessTest, ANameWithAQuoteIsAName) {
    securedPage();
    user(2, "O'Hara", "it's", {5});
    EXPECT_EQ(verdict("12", "O'Hara", "it's"), 1);
}

TEST_P(AccessTest, AUserIsValidOnBothEndsOfTheDates) {
    securedPage();
    user(2, "Bob", "guest", {5}, today, today);
    EXPECT_EQ(verdict("12", "Bob", "guest"), 1);
}

TEST_P(AccessTest, AUserWithEmptyDatesIsValid) {
    securedPage();
    user(2, "Bob", "guest", {5}, "", "");
    EXPECT_EQ(verdict("12", "Bob", "guest"), 1);
}

TEST_P(AccessTest, AUserBeforeTheFirstDayIsRefused) {
    securedPage();
    user(2, "Bob", "guest", {5}, tomorrow, "");
    EXPECT_EQ(verdict("12", "Bob", "guest"), -5);
}

TEST_P(AccessTest, AUserAfterTheLastDayIsRefused) {
    securedPage();
    user(2, "Bob", "guest", {5}, "", yesterday);
    EXPECT_EQ(verdict("12", "Bob", "guest"), -5);
}

TEST_P(AccessTest, APageThatInheritsTakesTheGroupsOfItsParent) {
    securedPage();
    page("aa.en.01.01").id(13).insert();
    pageGroup(13, 0);
    EXPECT_EQ(verdict("13"), -4);
    EXPECT_EQ(verdict("13", "Ann", "secret"), 1);
    EXPECT_EQ(verdict("13", "Ann", "guess"), -5);
}

TEST_P(AccessTest, APageWhoseParentHasNoGroupsIsRefused) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).insert();
    page("aa.en.01.01").id(13).insert();
    pageGroup(13, 0);
    EXPECT_EQ(verdict("13"), -3);
}

TEST_P(AccessTest, APageThatInheritsUpToTheRootIsOpen) {
    host.application.set("torvex_extranet", true);
    page("aa.en").id(10).insert();
    page("aa.en.01").id(12).insert();
    pageGroup(10, 0);
    pageGroup(12, 0);
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(AccessTest, TheGroupsOfAFolderStandBeforeItsChild) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).type("F").insert();
    page("aa.en.01.01").id(13).insert();
    group(5, "members");
    pageGroup(12, 5);
    pageGroup(13, 1);
    EXPECT_EQ(verdict("12"), -4);
    EXPECT_EQ(server().pgPageId(), 12);
}

TEST_P(AccessTest, TheGroupsOfTheChildDecideOnAFolder) {
    securedPage();
    connection().execute("update TORVEX_PAGES_LIVE set type = 'F' where pageId = 10");
    EXPECT_EQ(verdict("10"), -4);
    EXPECT_EQ(server().pgPageId(), 12);
    EXPECT_EQ(verdict("10", "Ann", "secret"), 1);
}

TEST_P(AccessTest, ASecuredPageThatIsOfflineAsksForALoginFirst) {
    securedPage();
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId = 12");
    EXPECT_EQ(verdict("12"), -4);
    EXPECT_EQ(verdict("12", "Eve", "secret"), -5);
    EXPECT_EQ(verdict("12", "Ann", "secret"), -2);
}

TEST_P(AccessTest, ASecuredApplicationWithoutAnAddressIsRefusedLast) {
    securedPage();
    connection().execute("update TORVEX_PAGES_LIVE set type = 'A', online = 0 where pageId = 12");
    EXPECT_EQ(verdict("12", "Ann", "secret"), -2);
    connection().execute("update TORVEX_PAGES_LIVE set online = 1 where pageId = 12");
    EXPECT_EQ(verdict("12", "Ann", "secret"), -7);
    EXPECT_EQ(verdict("12"), -4);
}

}  // namespace
}  // namespace torvex::test
