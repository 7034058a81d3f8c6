#include "platform/db/ConnectionSource.h"

#include <optional>

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"

namespace torvex::db {

namespace {

/// Opened by what is asked of it first: a database that can't be reached is met by the query that needs it,
/// and so by the innermost operation, like one that breaks down later.
class OpensAtFirstUse final : public Connection {
  public:
    OpensAtFirstUse(Database& database, std::optional<std::string> text)
        : database_(database), text_(std::move(text)) {}

    Engine engine() const override { return opened().engine(); }
    const std::string& connectionText() const override { return opened().connectionText(); }
    Rows query(std::string_view statement, Parameters parameters) override {
        return opened().query(statement, parameters);
    }
    std::int64_t execute(std::string_view statement, Parameters parameters) override {
        return opened().execute(statement, parameters);
    }
    void executeScript(const std::string& script) override { opened().executeScript(script); }
    void begin() override { opened().begin(); }
    void beginReading() override { opened().beginReading(); }
    ScopeMemory* memory() override { return lease_ ? lease_->memory() : nullptr; }
    void record(ReadRecord& record) override { opened().record(record); }
    void commit() override { opened().commit(); }
    void rollback() override { opened().rollback(); }

  private:
    Connection& opened() const {
        if (!text_) throw DatabaseError("no connection: connect was not called");
        if (!lease_) lease_ = database_.open(*text_);
        return *lease_;
    }

    Database& database_;
    const std::optional<std::string> text_;
    mutable Lease lease_;
};

}  // namespace

Connection& ConnectionSource::use(HostContext& host) {
    if (auto* const* open = std::get_if<Connection*>(&given_)) return **open;
    if (!opening_) {
        const auto* text = std::get_if<std::string>(&given_);
        opening_ =
            std::make_shared<OpensAtFirstUse>(host.database, text ? std::optional(*text) : std::nullopt);
    }
    return *opening_;
}

Lease openOwn(HostContext& host, Purpose purpose) {
    const auto& values = host.application;
    return host.database.open(values.text(applicationKey::databaseText),
                              values.text(applicationKey::databaseUser),
                              values.text(applicationKey::databasePassword), purpose);
}

}  // namespace torvex::db
