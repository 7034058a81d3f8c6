#pragma once

#include <fmt/format.h>
#include <map>
#include <memory>
#include <string>

#include "Store.h"

namespace torvex::bench {

/// Trees of three levels: 90 children below each page. Sites are numbered, as one root has no room for more than
/// some eight thousand pages.
class PageTree : public Store {
  public:
    /// So many pages of the third level, numbered from 1, and those above them.
    explicit PageTree(int pages) {
        db::Transaction transaction(connection());
        for (int i = 0; i < pages; ++i) addBranchOf(i);
        transaction.commit();
    }

    static std::string rootOf(int i) { return fmt::format("{:02}.en", i / perTree + 10); }
    static std::string parentOf(int i) {
        return fmt::format("{}.{:02}", rootOf(i), i % perTree / perParent + 1);
    }
    static std::string nodeOf(int i) { return fmt::format("{}.{:02}", parentOf(i), i % perParent + 1); }

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
        connection().execute(
            "insert into TORVEX_PAGES_DESIGN (pageId, nodeId, orderId, parent, type, title, navigation, "
            "editStatus) values (?, ?, ?, ?, 'P', ?, 'A', 'P')",
            {pageId, node, order, parent, node});
        connection().execute(
            "insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, parent, type, title, navigation, "
            "online) "
            "values (?, ?, ?, ?, 'P', ?, 'A', 1)",
            {pageId, node, order, parent, node});
    }
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
