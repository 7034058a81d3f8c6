#include "platform/db/PostgresConnection.h"

#include <array>
#include <fmt/format.h>
#include <libpq-fe.h>
#include <optional>
#include <poll.h>

#include "platform/db/PostgresForesight.h"
#include "platform/db/PostgresStatement.h"
#include "platform/db/ScopeMemory.h"
#include "platform/text/Text.h"

namespace torvex::db {

namespace {

/// Statements are constants, some hundreds of them; more than this means texts put together by their callers.
constexpr std::size_t mostNames = 2000;

/// Seconds to wait for a server that doesn't answer at all.
constexpr const char* connectTimeout = "10";
/// Seconds after which the system asks whether the other side of a silent connection is still there.
constexpr const char* keepalivesIdle = "60";

struct FreeOptions {
    void operator()(PQconninfoOption* options) const noexcept { PQconninfoFree(options); }
};
using Options = std::unique_ptr<PQconninfoOption, FreeOptions>;

std::string firstLine(std::string_view message) {
    const std::size_t end = message.find('\n');
    return std::string(message.substr(0, end));
}

std::string field(const PGresult* result, int code) {
    const char* text = PQresultErrorField(result, code);
    return text == nullptr ? std::string() : text;
}

/// The server's message. Its detail is left out, and a complaint about a value too, since both quote the
/// value.
[[noreturn]] void fail(PGconn* connection, const PGresult* result) {
    const std::string state = field(result, PG_DIAG_SQLSTATE);
    if (state.substr(0, 2) == "22") {
        throw DatabaseError(fmt::format("a value doesn't fit the place it is meant for (state {})", state));
    }
    const std::string message = field(result, PG_DIAG_MESSAGE_PRIMARY);
    throw DatabaseError(message.empty() ? firstLine(PQerrorMessage(connection)) : message);
}

Options parseText(const std::string& text) {
    char* message = nullptr;
    Options options(PQconninfoParse(text.c_str(), &message));
    // libpq's message may quote the text, and with it a password.
    PQfreemem(message);
    if (options == nullptr) throw DatabaseError("the connection text is not one of PostgreSQL");
    return options;
}

/// A value in the form "name='value'".
std::string quoted(std::string_view value) {
    std::string quoted = "'";
    for (const char c : value) {
        if (c == '\'' || c == '\\') quoted.push_back('\\');
        quoted.push_back(c);
    }
    return quoted + "'";
}

/// One text that says it all, for those who are given nothing but a connection's text.
std::string wholeText(const std::string& text, std::string_view user, std::string_view password) {
    if (user.empty() && password.empty()) return text;
    std::string whole;
    if (!user.empty()) whole += "user=" + quoted(user);
    if (!password.empty()) whole += " password=" + quoted(password);
    const Options options = parseText(text);
    for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
        if (option->val != nullptr) whole += fmt::format(" {}={}", option->keyword, quoted(option->val));
    }
    return whole;
}

void ignoreNotice(void* /*unused*/, const PGresult* /*notice*/) {}

PostgresHandle connect(const std::string& text) {
    parseText(text);
    // What comes later wins: the text over our defaults, the encoding over the text.
    const std::array<const char*, 6> names = {"fallback_application_name", "connect_timeout",
                                              "keepalives_idle",           "dbname",
                                              "client_encoding",           nullptr};
    const std::array<const char*, 6> values = {"torvex",     connectTimeout, keepalivesIdle,
                                               text.c_str(), "UTF8",         nullptr};
    PostgresHandle handle(PQconnectdbParams(names.data(), values.data(), 1));
    if (PQstatus(handle.get()) != CONNECTION_OK) {
        throw DatabaseError(firstLine(PQerrorMessage(handle.get())));
    }
    PQsetNoticeReceiver(handle.get(), ignoreNotice, nullptr);
    return handle;
}

[[noreturn]] void refuseWithin() {
    throw DatabaseError("a transaction can't be begun within another one");
}

class PostgresConnection final : public PooledConnection {
  public:
    PostgresConnection(PostgresHandle handle, std::string text)
        : handle_(std::move(handle)), text_(std::move(text)) {
        setUp();
    }

    Engine engine() const override { return Engine::PostgreSql; }
    const std::string& connectionText() const override { return text_; }
    Rows query(std::string_view statement, Parameters parameters) override;
    std::int64_t execute(std::string_view statement, Parameters parameters) override;
    void executeScript(const std::string& script) override {
        beginReadingNow();
        command(script.c_str());
    }
    void begin() override;
    void beginReading() override;
    ScopeMemory* memory() override { return reading_ ? &reading_->memory() : nullptr; }
    void record(ReadRecord& record) override;
    void commit() override;
    void rollback() override;
    bool makeReusable() noexcept override;

  private:
    void setUp();
    void reviveWhenDead();
    void reconnect();
    void beginWith(const char* statement);
    void settle();
    void endReading();
    void startReading(std::string_view statement, const PostgresQuestion& first);
    void beginReadingNow();
    PostgresResult ask(std::string_view statement, Parameters parameters);
    PostgresResult command(const char* statement);
    PostgresResult run(std::string_view statement, Parameters parameters);
    std::string nameOf(std::string_view statement, const PostgresParameters& parameters);
    PostgresResult runPrepared(const std::string& name, const PostgresParameters& parameters);
    bool isOutdatedPlan(const PGresult* result);
    void forgetStatements();

    PostgresHandle handle_;
    std::string text_;
    PostgresNames names_;
    PostgresForesight foresight_;
    std::optional<PostgresReading> reading_;  ///< while it only reads
    bool isEnding_ = false;                   ///< the end of a read scope is under way
    ReadRecord* record_ = nullptr;            ///< null: nobody wants to know
    bool rested_ = false;                     ///< it comes from the pool and hasn't been used since
    bool outdated_ = false;                   ///< prepared statements no longer fit the schema
};

void PostgresConnection::setUp() {
    command("set datestyle to iso");
    // Whoever waits longer for another's change than a visitor would is told.
    command("set lock_timeout to '30s'");
}

/// Nobody has waited for the end of what was only read.
void PostgresConnection::settle() {
    if (!std::exchange(isEnding_, false)) return;
    while (PostgresResult(PQgetResult(handle_.get()))) {
    }
}

/// To a connection at rest the server says nothing but its end, or that its settings have changed; a new
/// connection is right for both.
void PostgresConnection::reviveWhenDead() {
    settle();
    if (!rested_) return;
    rested_ = false;
    pollfd socket = {PQsocket(handle_.get()), POLLIN, 0};
    if (PQstatus(handle_.get()) != CONNECTION_OK || poll(&socket, 1, 0) != 0) reconnect();
}

void PostgresConnection::reconnect() {
    handle_ = connect(text_);
    names_.clear();
    foresight_.clear();
    setUp();
}

PostgresResult PostgresConnection::command(const char* statement) {
    reviveWhenDead();
    PostgresResult result(PQexec(handle_.get(), statement));
    if (!isFine(result.get())) fail(handle_.get(), result.get());
    return result;
}

void PostgresConnection::begin() {
    if (reading_) refuseWithin();
    beginWith("begin");
}

void PostgresConnection::beginWith(const char* statement) {
    const bool rested = rested_;
    settle();
    // The server would only warn, and the inner end would end the outer one.
    if (PQtransactionStatus(handle_.get()) == PQTRANS_INTRANS) refuseWithin();
    try {
        command(statement);
    } catch (const DatabaseError&) {
        // Nothing has been done on it yet, so a connection that died unseen can be replaced.
        if (!rested || PQstatus(handle_.get()) == CONNECTION_OK) throw;
        reconnect();
        command(statement);
    }
}

void PostgresConnection::beginReading() {
    settle();
    if (reading_ || PQtransactionStatus(handle_.get()) == PQTRANS_INTRANS) refuseWithin();
    reading_.emplace();
}

/// With the first question, which begins it.
void PostgresConnection::startReading(std::string_view statement, const PostgresQuestion& first) {
    const bool rested = rested_;
    reviveWhenDead();
    const PostgresNames::Name name = names_.find(statement, first.values->signature());
    const bool isBegun =
        name.prepared && reading_->begin(handle_.get(), {name.text, first.values}, foresight_);
    if (isBegun) return;
    rested_ = rested;
    beginReadingNow();
}

/// By itself.
void PostgresConnection::beginReadingNow() {
    if (!reading_ || reading_->isBegun()) return;
    beginWith(PostgresReading::beginning);
    reading_->noteBegun();
}

/// What is only read has nothing to be told of its end: whoever uses the connection next takes the answer.
void PostgresConnection::endReading() {
    const bool isBegun = reading_->isBegun();
    if (PQtransactionStatus(handle_.get()) == PQTRANS_INTRANS) reading_->teach(foresight_);
    reading_.reset();
    if (isBegun) isEnding_ = PQsendQuery(handle_.get(), "rollback") == 1;
}

PostgresResult PostgresConnection::ask(std::string_view statement, Parameters given) {
    PostgresQuestion question{{}, std::make_shared<const PostgresParameters>(given)};
    if (!reading_->isBegun()) startReading(statement, question);
    question.name = nameOf(statement, *question.values);
    PostgresResult result = reading_->take(question);
    if (!result) result = runPrepared(question.name, *question.values);
    isOutdatedPlan(result.get());
    if (!isFine(result.get())) fail(handle_.get(), result.get());
    reading_->note(std::move(question));
    return result;
}

/// All that is read was so when the states were looked at, or has been changed since and is told of.
void PostgresConnection::record(ReadRecord& record) {
    record_ = &record;
    record_->isWhole = true;
}

void PostgresConnection::commit() {
    if (reading_) return endReading();
    const PostgresResult result = command("commit");
    if (std::string_view(PQcmdStatus(result.get())) == "ROLLBACK") {
        throw DatabaseError("nothing was committed: a statement of the transaction had failed");
    }
}

void PostgresConnection::rollback() {
    if (reading_) return endReading();
    if (isEnding_) return;
    if (PQtransactionStatus(handle_.get()) != PQTRANS_IDLE) command("rollback");
}

std::string PostgresConnection::nameOf(std::string_view statement, const PostgresParameters& parameters) {
    const PostgresNames::Name name = names_.find(statement, parameters.signature());
    if (name.prepared) return name.text;
    const NumberedStatement numbered = numberParameters(statement);
    if (numbered.parameters != parameters.count()) {
        throw DatabaseError(fmt::format("the statement has {} parameters and was given {}",
                                        numbered.parameters, parameters.count()));
    }
    const PostgresResult result(PQprepare(handle_.get(), name.text.c_str(), numbered.text.c_str(),
                                          parameters.count(), parameters.types()));
    if (!isFine(result.get())) fail(handle_.get(), result.get());
    names_.keep(statement, parameters.signature(), name.text);
    return name.text;
}

PostgresResult PostgresConnection::runPrepared(const std::string& name,
                                               const PostgresParameters& parameters) {
    return PostgresResult(PQexecPrepared(handle_.get(), name.c_str(), parameters.count(), parameters.values(),
                                         nullptr, nullptr, 0));
}

PostgresResult PostgresConnection::run(std::string_view statement, Parameters given) {
    reviveWhenDead();
    const PostgresParameters parameters(given);
    PostgresResult result = runPrepared(nameOf(statement, parameters), parameters);
    if (isOutdatedPlan(result.get()) && PQtransactionStatus(handle_.get()) == PQTRANS_IDLE) {
        forgetStatements();
        result = runPrepared(nameOf(statement, parameters), parameters);
    }
    if (!isFine(result.get())) fail(handle_.get(), result.get());
    return result;
}

/// A column was added to a table that a "select *" reads: the server then refuses the plan it has. Within a
/// transaction that has failed by it, the statements can only be forgotten for the next one.
bool PostgresConnection::isOutdatedPlan(const PGresult* result) {
    if (isFine(result) || field(result, PG_DIAG_SQLSTATE) != "0A000") return false;
    const bool aboutPlan = field(result, PG_DIAG_MESSAGE_PRIMARY).find("cached plan") != std::string::npos;
    outdated_ = outdated_ || aboutPlan;
    return aboutPlan;
}

void PostgresConnection::forgetStatements() {
    command("deallocate all");
    names_.clear();
    foresight_.clear();
    outdated_ = false;
}

Rows PostgresConnection::query(std::string_view statement, Parameters parameters) {
    if (record_) record_->tables |= tablesNamedIn(statement);
    return Rows(openPostgresRows(reading_ ? ask(statement, parameters) : run(statement, parameters)));
}

std::int64_t PostgresConnection::execute(std::string_view statement, Parameters parameters) {
    if (record_) record_->isWhole = false;
    beginReadingNow();
    const PostgresResult result = run(statement, parameters);
    return static_cast<std::int64_t>(text::toNumber(PQcmdTuples(result.get())));
}

bool PostgresConnection::makeReusable() noexcept {
    record_ = nullptr;
    try {
        if (PQstatus(handle_.get()) != CONNECTION_OK) return false;
        rollback();
        if (outdated_ || names_.size() > mostNames) forgetStatements();
        rested_ = true;
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

PostgresHandle connectPostgres(std::string_view text, std::string_view user, std::string_view password) {
    return connect(wholeText(std::string(text), user, password));
}

std::unique_ptr<PooledConnection> openPostgres(std::string_view text, std::string_view user,
                                               std::string_view password) {
    std::string whole = wholeText(std::string(text), user, password);
    PostgresHandle handle = connect(whole);
    return std::make_unique<PostgresConnection>(std::move(handle), std::move(whole));
}

}  // namespace torvex::db
