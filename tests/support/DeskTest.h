#pragma once

#include <memory>
#include <string>
#include <vector>

#include "desk/desk.h"
#include "support/RightsTest.h"

namespace torvex::test {

/// The base of tests of what an author has on her desk: a `desk` that works for "anna", who has no role yet.
class DeskTest : public RightsTest {
  protected:
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
    static std::string ident(PageId pageId) { return std::to_string(static_cast<int>(pageId)); }

    /// A list's rows, their cells divided by "|", "-" for an empty one; none for a list without rows.
    static std::vector<std::string> linesOf(const Value& list) {
        std::vector<std::string> lines;
        if (!list.isGrid()) return lines;
        const ResultGrid& grid = list.grid();
        for (std::size_t row = 0; row < grid.rows(); ++row) {
            std::string line;
            for (std::size_t column = 0; column < grid.columns(); ++column) {
                const Value& cell = grid.at(column, row);
                line += (column == 0 ? "" : "|") + (cell.isEmpty() ? "-" : cell.toText());
            }
            lines.push_back(line);
        }
        return lines;
    }

    /// Column of all lines.
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
