#pragma once

#include <memory>

#include "desk/registers.h"
#include "support/GridLines.h"
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

  private:
    std::unique_ptr<torvex::registers> registers_;
};

}  // namespace torvex::test
