#include <gmock/gmock.h>

#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class DeskBranchTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        addBert();
        role(3);
        editRights(3, "aa", "en", {"publish"});
        page("aa.en").set("editStatus", "P").insert();
    }
    /// One that is held is held by Bert.
    PageBuilder inState(const std::string& node, const std::string& statuses) {
        PageBuilder builder = DeskTest::inState(node, statuses);
        if (statuses.at(1) == '1') builder.set("lockedBy", bert);
        return builder;
    }
    /// "node state reason", with "goes" for those that go.
    std::vector<std::string> forecast(const std::string& root) {
        std::vector<std::string> lines;
        const Value list = desk().getBranch(root);
        if (!list.isGrid()) return lines;
        const ResultGrid& grid = list.grid();
        for (std::size_t row = 0; row < grid.rows(); ++row) {
            const auto cell = [&](std::size_t column) { return grid.at(column, row).toText(); };
            EXPECT_EQ(grid.at(5, row).boolean(), cell(6).empty());
            lines.push_back(cell(1) + " " + cell(3) + " " + (cell(6).empty() ? "goes" : cell(6)));
        }
        return lines;
    }
    /// The nodes of the branch that are live, or gone, by publishing it.
    std::vector<std::string> published(const std::string& root) {
        std::vector<std::string> before = nodesOf(root);
        EXPECT_EQ(manager().publishPageCascading(root), "0");
        std::vector<std::string> gone;
        for (const auto& node : before) {
            const std::string state = cell(
                "select editStatus || approveStatus from TORVEX_PAGES_DESIGN where nodeId = '" + node + "'");
            if (state.empty() || (state == "P0" && changed_.contains(node))) gone.push_back(node);
        }
        return gone;
    }
    std::vector<std::string> nodesOf(const std::string& root) {
        std::vector<std::string> nodes;
        auto rows = connection().query(
            "select nodeId, editStatus, deleteStatus from TORVEX_PAGES_DESIGN order by nodeId");
        while (rows.next()) {
            const std::string node = rows.text("nodeId");
            if (!node.starts_with(root)) continue;
            nodes.push_back(node);
            if (rows.text("editStatus") != "P") changed_.insert(node);
        }
        return nodes;
    }

    std::set<std::string> changed_;
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskBranchTest, bothEngines(), engineName);

TEST_P(DeskBranchTest, ALineSaysWhatThePageIs) {
    inState("aa.en.01", "M100").id(12).title("Walks").insert();
    EXPECT_THAT(linesOf(desk().getBranch("12")),
                ElementsAre("12|aa.en.01|Walks|changed|Bert Broker|False|held"));
}

TEST_P(DeskBranchTest, WhatStaysSaysWhy) {
    inState("aa.en.01", "M001").insert();
    inState("aa.en.01.01", "M000").insert();
    inState("aa.en.01.02", "P000").insert();
    inState("aa.en.01.03", "P100").insert();
    inState("aa.en.01.04", "M101").insert();
    inState("aa.en.01.05", "N000").insertInDesignOnly();
    inState("aa.en.01.05.01", "M001").insertInDesignOnly();
    inState("aa.en.01.06", "P010").insert();
    EXPECT_THAT(
        forecast("aa.en.01"),
        ElementsAre("aa.en.01 approved goes", "aa.en.01.01 changed notApproved", "aa.en.01.02 live unchanged",
                    "aa.en.01.03 live unchanged", "aa.en.01.04 approved held", "aa.en.01.05 new notApproved",
                    "aa.en.01.05.01 approved parentNotLive", "aa.en.01.06 marked notApproved"));
}

TEST_P(DeskBranchTest, APageGoesBelowOneThatGoesWithIt) {
    inState("aa.en.01", "M001").insertInDesignOnly();
    inState("aa.en.01.01", "M001").insertInDesignOnly();
    EXPECT_THAT(forecast("aa.en.01"), ElementsAre("aa.en.01 approved goes", "aa.en.01.01 approved goes"));
}

TEST_P(DeskBranchTest, AllGoesBelowAPageThatIsRemoved) {
    inState("aa.en.01", "P011").insert();
    inState("aa.en.01.01", "M100").insert();
    inState("aa.en.02", "M000").insert();
    EXPECT_THAT(forecast("aa.en"), ElementsAre("aa.en live unchanged", "aa.en.01 marked goes",
                                               "aa.en.01.01 changed goes", "aa.en.02 changed notApproved"));
}

TEST_P(DeskBranchTest, WhoMayNotPublishIsToldSo) {
    inState("aa.en.01", "M001").insert();
    inState("aa.en.01.01", "M000").insert();
    connection().execute("update TORVEX_EDIT_RIGHTS set publish = 0");
    EXPECT_THAT(forecast("aa.en.01"),
                ElementsAre("aa.en.01 approved noRight", "aa.en.01.01 changed notApproved"));
}

TEST_P(DeskBranchTest, WhatIsForecastIsWhatPublishingTheBranchDoes) {
    inState("aa.en.01", "M001").insertInDesignOnly();
    inState("aa.en.01.01", "M001").insertInDesignOnly();
    inState("aa.en.01.02", "M000").insertInDesignOnly();
    inState("aa.en.01.02.01", "M001").insertInDesignOnly();
    inState("aa.en.01.03", "M101").insert();
    inState("aa.en.01.04", "M011").insert();
    inState("aa.en.01.04.01", "M100").insert();
    std::vector<std::string> goes;
    for (const std::string& line : forecast("aa.en")) {
        if (line.ends_with("goes")) goes.push_back(line.substr(0, line.find(' ')));
    }
    EXPECT_EQ(published("aa.en"), goes);
    EXPECT_THAT(goes, ElementsAre("aa.en.01", "aa.en.01.01", "aa.en.01.04", "aa.en.01.04.01"));
}

TEST_P(DeskBranchTest, APageThatIsntThereHasNoBranch) {
    for (const auto& bad : badIdentifiers()) EXPECT_TRUE(desk().getBranch(bad).isEmpty()) << bad;
    EXPECT_TRUE(desk().getBranch("aa.en.77").isEmpty());
}

TEST_P(DeskBranchTest, WhatFailsIsRaised) {
    const PageId pageId = inState("aa.en.01", "M001").insert();
    drop("TORVEX_PAGES_LIVE");
    EXPECT_THAT(errorOf([&] { desk().getBranch(ident(pageId)); }), StartsWith(chain({"getBranch !"})));
}

}  // namespace
}  // namespace torvex::test
