#include "support/FailingDatabase.h"

namespace torvex::test {

namespace {

class FailingConnection final : public db::Connection {
  public:
    FailingConnection(db::Lease behind, FailingDatabase& database)
        : behind_(std::move(behind)), database_(database) {}

    db::Engine engine() const override { return behind_->engine(); }
    const std::string& connectionText() const override { return behind_->connectionText(); }
    db::Rows query(std::string_view statement, db::Parameters parameters) override {
        database_.step();
        return behind_->query(statement, parameters);
    }
    std::int64_t execute(std::string_view statement, db::Parameters parameters) override {
        database_.step();
        return behind_->execute(statement, parameters);
    }
    void executeScript(const std::string& script) override { behind_->executeScript(script); }
    void begin() override {
        database_.step();
        behind_->begin();
    }
    void beginReading() override { behind_->beginReading(); }
    void commit() override {
        database_.step();
        behind_->commit();
    }
    void rollback() override { behind_->rollback(); }
    db::ScopeMemory* memory() override { return behind_->memory(); }

  private:
    db::Lease behind_;
    FailingDatabase& database_;
};

}  // namespace

db::Lease FailingDatabase::open(std::string_view text, std::string_view user, std::string_view password,
                                db::Purpose purpose) {
    if (purpose != db::Purpose::Transaction) return behind_.open(text, user, password, purpose);
    step();
    return std::make_shared<FailingConnection>(behind_.open(text, user, password, purpose), *this);
}

void FailingDatabase::step() {
    ++steps;
    if (atStep) atStep(steps);
    if (steps == failAt) throw db::DatabaseError("broken at step " + std::to_string(steps));
}

}  // namespace torvex::test
