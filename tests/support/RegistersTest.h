#pragma once

#include <memory>

#include "desk/registers.h"
#include "support/GridLines.h"
#include "support/RecordsTest.h"

namespace torvex::test {

/// A base of tests, and a `registers` that works for whoever the session says.
template <typename Base>
class WithRegisters : public Base {
  protected:
    /// A new object, as the next request would make.
    torvex::registers& registers() {
        registers_ = std::make_unique<torvex::registers>(this->host.context());
        registers_->connect(this->connection());
        return *registers_;
    }
    void TearDown() override {
        registers_.reset();
        Base::TearDown();
    }

  private:
    std::unique_ptr<torvex::registers> registers_;
};

/// The base of tests of the registers' records.
using RegistersTest = WithRegisters<RecordsTest>;

}  // namespace torvex::test
