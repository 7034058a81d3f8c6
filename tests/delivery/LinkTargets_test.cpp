#include "delivery/LinkTargets.h"

#include <fmt/format.h>
#include <random>

#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "support/LinksTest.h"

namespace torvex::test {
namespace {

/// What is learned together has to equal what is asked one by one.
class LinkTargetsTest : public LinksTest {
  protected:
    /// A tree of pages and folders in every state.
    void plantTree() {
        std::mt19937 random(7);
        const std::vector<std::pair<std::string, std::string>> dates = {
            {"", ""}, {"20260615", "20260615"}, {"20270101", ""}, {"", "20200101"}};
        for (int first = 10; first < 30; ++first) {
            for (int second = 0; second < 4; ++second) {
                const std::string node =
                    second == 0 ? fmt::format("aa.bb.{}", first) : fmt::format("aa.bb.{}.0{}", first, second);
                const auto& [from, to] = dates[random() % dates.size()];
                PageBuilder made = page(node).type(random() % 3 == 0 ? "F" : "P").dates(from, to);
                made.online(random() % 4 == 0 ? 0 : 1).order(static_cast<double>(random() % 3));
                const PageId id = random() % 8 == 0 ? made.insertInDesignOnly() : made.insert();
                identifiers.push_back(fmt::format("{}", id));
                identifiers.push_back(node);
            }
        }
    }
    void expectSame(const std::vector<std::string>& asked) {
        LinkTargets targets(connection(), host.clock.today());
        targets.learn(asked);
        for (const auto& identifier : asked) {
            EXPECT_EQ(targets.isOnline(identifier), server().isPage(identifier)) << "'" << identifier << "'";
            const PageIdentity expected = identify(connection(), identifier);
            const PageIdentity learned = targets.identityOf(identifier);
            EXPECT_EQ(learned.pageId, expected.pageId) << identifier;
            EXPECT_EQ(learned.nodeId, expected.nodeId) << identifier;
        }
    }

    std::vector<std::string> identifiers;
};
INSTANTIATE_TEST_SUITE_P(Engines, LinkTargetsTest, bothEngines(), engineName);

TEST_P(LinkTargetsTest, AnswersEqualAskingOneByOne) {
    plantTree();
    expectSame(identifiers);
}

TEST_P(LinkTargetsTest, WhatIsRememberedEqualsAskingOneByOne) {
    plantTree();
    const auto expectSameAgain = [this] {
        const db::ReadScope request(connection());
        expectSame(identifiers);
        expectSame(identifiers);
        expectSame({"12", "13", "999"});
        expectSame({"12", "999"});
    };
    expectSameAgain();
    host.clock = FixedClock({2027, 6, 15, 12, 0, 0});
    expectSameAgain();
}

TEST_P(LinkTargetsTest, IdentifiersThatAreNoneEqualAskingOneByOne) {
    plantTree();
    auto asked = badIdentifiers();
    std::erase_if(asked, [](const std::string& one) { return text::lowerTrim(one) != one; });
    expectSame(asked);
    asked.insert(asked.end(), identifiers.begin(), identifiers.end());
    expectSame(asked);
}

TEST_P(LinkTargetsTest, PagesMovedSinceTheyWerePublishedEqualAskingOneByOne) {
    page("aa.bb.20").id(70).insertInDesignOnly();  // was "aa.bb.21", where the public still finds it
    page("aa.bb.21").id(70).insertInLiveOnly();
    page("aa.bb.21").id(71).insertInDesignOnly();  // has taken its place, and was "aa.bb.20"
    page("aa.bb.20").id(71).offline().insertInLiveOnly();
    page("aa.bb.22").id(72).insertInDesignOnly();  // moved to where nothing is published
    page("aa.bb.23").id(72).type("F").insertInLiveOnly();
    page("aa.bb.23.01").insert();
    page("aa.bb.23").id(73).insertInDesignOnly();  // new, at the place of a published folder
    expectSame({"70", "71", "72", "73", "aa.bb.20", "aa.bb.21", "aa.bb.22", "aa.bb.23"});
}

TEST_P(LinkTargetsTest, NumbersInOtherSpellingsEqualAskingOneByOne) {
    expectSame({"12", "12.0", "+12", "012", "12.", "12.5", "-12", "13", "0", "1e1"});
}

TEST_P(LinkTargetsTest, AnIdentifierInAnotherSpellingDoesNotHideThePage) {
    page("aa.bs.01").id(60).insert();
    LinkTargets targets(connection(), host.clock.today());
    targets.learn({"aa.b\u017F.01"});
    targets.learn({"aa.bs.01"});
    EXPECT_TRUE(targets.isOnline("aa.bs.01"));
    EXPECT_EQ(targets.identityOf("aa.bs.01").pageId, 60);
}

TEST_P(LinkTargetsTest, WhatWasNotLearnedIsAsked) {
    LinkTargets targets(connection(), host.clock.today());
    EXPECT_TRUE(targets.isOnline("12"));
    EXPECT_FALSE(targets.isOnline("13"));
    EXPECT_EQ(targets.identityOf("aa.bb.01").pageId, 12);
    EXPECT_EQ(targets.identityOf("12").nodeId, "aa.bb.01");
}

TEST_P(LinkTargetsTest, LearningMoreKeepsWhatIsKnown) {
    LinkTargets targets(connection(), host.clock.today());
    targets.learn({"12", "13"});
    targets.learn({"aa.bb.01", "aa.bb.02", "12"});
    for (const auto* online : {"12", "aa.bb.01"}) EXPECT_TRUE(targets.isOnline(online));
    for (const auto* offline : {"13", "aa.bb.02"}) EXPECT_FALSE(targets.isOnline(offline));
}

TEST_P(LinkTargetsTest, APageWhoseNodeDiffersInTheTwoTablesIsAskedByTheDesignsNode) {
    page("aa.bb.05").id(50).insertInDesignOnly();
    page("aa.bb.06").id(50).insertInLiveOnly();
    expectSame({"50", "aa.bb.05", "aa.bb.06"});
}

TEST_P(LinkTargetsTest, LinksInAPageAreJudgedAsOneByOne) {
    plantTree();
    std::string html;
    std::string expected;
    for (const auto& identifier : identifiers) {
        html += "<a href=\"page(" + identifier + ")\">x</a>|";
        const std::string id = text::fromNumber(identify(connection(), identifier).pageId);
        expected += server().isPage(identifier)
                        ? "<a href=\"/tvx.asp?pageId=" + id + "\"" + std::string(status) + "x</a>|"
                        : "x|";
    }
    EXPECT_EQ(build(html), expected);
}

TEST_P(LinkTargetsTest, HostileIdentifiersInAPageBreakNothing) {
    for (const auto& identifier : badIdentifiers()) {
        EXPECT_EQ(build("<a href=\"page(" + identifier + ")\">x</a>"), "x") << identifier.substr(0, 50);
        const std::string address = build("<a href='/tvx.asp?pageId=" + identifier + "'>x</a>");
        EXPECT_TRUE(address == "x" || identifier.find('\'') != std::string::npos) << identifier.substr(0, 50);
    }
}

}  // namespace
}  // namespace torvex::test
