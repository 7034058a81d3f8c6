#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/db/Connection.h"

namespace torvex::test {

/// A connection that lets a test in before each change, for what others do at just that moment. Does
/// everything else as the connection behind it.
class InterruptedConnection final : public db::Connection {
  public:
    explicit InterruptedConnection(db::Connection& behind) : behind_(behind) {}

    /// Called before each `execute`; may use the connection behind, or others.
    std::function<void()> beforeChange = [] {};
    int changesTried = 0;
    int queries = 0;

    db::Engine engine() const override { return behind_.engine(); }
    const std::string& connectionText() const override { return behind_.connectionText(); }
    db::Rows query(std::string_view statement, db::Parameters parameters) override {
        ++queries;
        return behind_.query(statement, parameters);
    }
    std::int64_t execute(std::string_view statement, db::Parameters parameters) override {
        ++changesTried;
        beforeChange();
        return behind_.execute(statement, parameters);
    }
    void executeScript(const std::string& script) override { behind_.executeScript(script); }
    void begin() override { behind_.begin(); }
    void beginReading() override { behind_.beginReading(); }
    void commit() override { behind_.commit(); }
    void rollback() override { behind_.rollback(); }
    db::ScopeMemory* memory() override { return behind_.memory(); }

  private:
    db::Connection& behind_;
};

}  // namespace torvex::test
