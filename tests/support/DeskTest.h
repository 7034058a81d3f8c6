#pragma once

#include <memory>
#include <string>
#include <vector>

#include "desk/desk.h"
#include "support/GridLines.h"
#include "support/RightsTest.h"

namespace torvex::test {

/// The base of tests of what an author has on her desk: a `desk` that works for "anna", who has no role yet.
class DeskTest : public RightsTest {
  protected:
    static constexpr int bert = 8;

    /// A new object, as the next request would make.
    torvex::desk& desk() {
        desk_ = std::make_unique<torvex::desk>(host.context());
        desk_->connect(connection());
        return *desk_;
    }
    void TearDown() override {
        desk_.reset();
        RightsTest::TearDown();
    }

    void designBody(PageId pageId, int bodyId, const std::string& text, int type = 1, int feedId = 0) {
        row("TORVEX_BODIES_DESIGN", {{"pageId", pageId},
                                     {"bodyId", bodyId},
                                     {"bodyType", type},
                                     {"feedId", feedId},
                                     {"bodyText", text}});
    }
    void addBert() { login(bert, "bert", "Bert Broker", "session-of-bert"); }
    /// A page with these edit, lock, delete and approve statuses.
    PageBuilder inState(const std::string& node, const std::string& statuses) {
        PageBuilder builder = page(node);
        builder.set("editStatus", statuses.substr(0, 1)).set("lockStatus", statuses.at(1) - '0');
        builder.set("deleteStatus", statuses.at(2) - '0').set("approveStatus", statuses.at(3) - '0');
        return builder;
    }
    void document(const std::string& site, const std::string& title, const std::string& file) {
        row("TORVEX_DOCUMENTS",
            {{"doc_site", site}, {"doc_fldId", ""}, {"doc_title", title}, {"doc_filename", file}});
    }
    static std::string ident(PageId pageId) { return std::to_string(static_cast<int>(pageId)); }

    /// One column of all lines.
    static std::vector<std::string> columnOf(const Value& list, std::size_t column) {
        std::vector<std::string> cells;
        if (!list.isGrid()) return cells;
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            cells.push_back(list.grid().at(column, row).toText());
        }
        return cells;
    }

  private:
    std::unique_ptr<torvex::desk> desk_;
};

}  // namespace torvex::test
