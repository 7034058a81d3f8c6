#pragma once

#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <stdlib.h>
#include <string>

#include "installation/Schema.h"
#include "installation/SchemaFiles.h"
#include "support/TestHost.h"

namespace torvex::bench {

/// Trees of three levels in an embedded store of their own, with a host that is connected to it: 90 children
/// below each page. Sites are numbered, as one root has no room for more than some eight thousand pages.
class PageTree {
  public:
    /// So many pages of the third level, numbered from 1, and those above them.
    explicit PageTree(int pages) {
        if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
        const std::string text = "sqlite:" + folder_ + "/db";
        installedSchema().create(*database_, host.clock, text);
        connection_ = database_->open(text);
        db::Transaction transaction(*connection_);
        for (int i = 0; i < pages; ++i) addBranchOf(i);
        transaction.commit();
    }
    PageTree(const PageTree&) = delete;
    PageTree& operator=(const PageTree&) = delete;
    ~PageTree() {
        connection_.reset();
        database_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    static std::string rootOf(int i) { return fmt::format("{:02}.en", i / perTree + 10); }
    static std::string parentOf(int i) {
        return fmt::format("{}.{:02}", rootOf(i), i % perTree / perParent + 1);
    }
    static std::string nodeOf(int i) { return fmt::format("{}.{:02}", parentOf(i), i % perParent + 1); }

    db::Connection& connection() { return *connection_; }

    test::TestHost host;

  private:
    static constexpr int perParent = 90;
    static constexpr int perTree = 90 * perParent;
    static constexpr int firstAbove = 10'000'000;

    /// The page, ahead of it the pages above it that aren't there yet.
    void addBranchOf(int i) {
        if (i % perTree == 0) addPage(firstAbove + 2 * i, rootOf(i), "", 1);
        if (i % perParent == 0)
            addPage(firstAbove + 2 * i + 1, parentOf(i), rootOf(i), i % perTree / perParent + 1);
        addPage(i + 1, nodeOf(i), parentOf(i), i % perParent + 1);
    }
    void addPage(int pageId, const std::string& node, const std::string& parent, int order) {
        connection_->execute(
            "insert into TORVEX_PAGES_DESIGN (pageId, nodeId, orderId, parent, type, title, navigation, "
            "editStatus) values (?, ?, ?, ?, 'P', ?, 'A', 'P')",
            {pageId, node, order, parent, node});
        connection_->execute(
            "insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, parent, type, title, navigation, "
            "online) "
            "values (?, ?, ?, ?, 'P', ?, 'A', 1)",
            {pageId, node, order, parent, node});
    }

    std::string folder_ = std::filesystem::temp_directory_path() / "torvex-bench-XXXXXX";
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
    db::Lease connection_;
};

/// Made at the first call, and kept: making the largest takes seconds.
inline PageTree& treeOf(int pages) {
    static std::map<int, std::unique_ptr<PageTree>> trees;
    auto& tree = trees[pages];
    if (!tree) tree = std::make_unique<PageTree>(pages);
    return *tree;
}

/// Visits the numbers below `count` in an order that jumps about.
class Scattered {
  public:
    explicit Scattered(int count) : count_(count) {}
    int next() { return at_ = (at_ + 7919) % count_; }

  private:
    int count_;
    int at_ = 0;
};

}  // namespace torvex::bench
