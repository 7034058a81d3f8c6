#pragma once

#include <memory>
#include <string>
#include <vector>

#include "desk/registers.h"
#include "support/RecordsTest.h"

namespace torvex::test {

/// The base of tests of the registers' records: a `registers` that works for whoever the session says.
class RegistersTest : public RecordsTest {
  protected:
    /// A new object, as the next request would make.
    torvex::registers& registers() {
        registers_ = std::make_unique<torvex::registers>(host.context());
        registers_->connect(connection());
        return *registers_;
    }
    void TearDown() override {
        registers_.reset();
        RecordsTest::TearDown();
    }

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

  private:
    std::unique_ptr<torvex::registers> registers_;
};

}  // namespace torvex::test
