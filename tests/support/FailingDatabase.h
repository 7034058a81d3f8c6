#pragma once

#include <functional>

#include "platform/db/Database.h"

namespace torvex::test {

/// A database whose connections for transactions break down at a chosen step: at their opening, at the begin,
/// at a statement or at the commit. Other connections are left alone.
class FailingDatabase final : public db::Database {
  public:
    explicit FailingDatabase(db::Database& behind) : behind_(behind) {}

    /// The step that fails, counted from 1 over all transactions; 0 none.
    int failAt = 0;
    /// The steps so far.
    int steps = 0;
    /// Called at each step, before it is done: for what others do at just that moment.
    std::function<void(int step)> atStep;

    void reset(int step) {
        failAt = step;
        steps = 0;
    }

    db::Lease open(std::string_view text, std::string_view user, std::string_view password,
                   db::Purpose purpose) override;

    /// Counts one step, and throws `DatabaseError` when it is the chosen one.
    void step();

  private:
    db::Database& behind_;
};

}  // namespace torvex::test
