#include "platform/db/SqliteStatement.h"

#include <cstddef>
#include <fmt/format.h>
#include <new>
#include <sqlite3.h>

#include "platform/db/Binding.h"
#include "platform/text/Text.h"

namespace torvex::db {

namespace {

/// Statements are constants, some hundreds of them; more than this means texts put together by their callers.
constexpr std::size_t mostTexts = 2000;
/// A longer buffer for bound texts is freed after its run.
constexpr std::size_t keptTextBytes = std::size_t{64} * 1024;

std::string fileName(sqlite3* database, const char* schema) {
    const char* name = sqlite3_db_filename(database, schema);
    return name == nullptr ? "" : name;
}

std::string lockedFile(sqlite3* database, unsigned written) {
    if ((written & AuditFile) != 0) return fileName(database, "audit");
    return fileName(database, (written & HitsFile) != 0 ? "hits" : "main");
}

std::string busyMessage(sqlite3* database, unsigned written) {
    if (sqlite3_extended_errcode(database) == SQLITE_BUSY_SNAPSHOT) {
        return "the state that this connection reads is no longer the newest, so it can't write: a query or "
               "a "
               "read scope is still open";
    }
    return fmt::format(
        "database is locked: another process holds the write lock of {} for more than {} seconds",
        lockedFile(database, written), lockWaitSeconds);
}

}  // namespace

void failSqlite(sqlite3* database, unsigned written) {
    const char* message = sqlite3_errmsg(database);
    const std::string file = fileName(database, "main");
    switch (sqlite3_errcode(database)) {
        case SQLITE_BUSY:
            throw DatabaseError(busyMessage(database, written));
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            throw DatabaseError(
                fmt::format("the database {} or a file beside it is damaged: {}", file, message));
        case SQLITE_FULL:
            throw DatabaseError(fmt::format("no room left on the disk of the database {}", file));
        case SQLITE_READONLY:
            throw DatabaseError(fmt::format("the database {} can't be written: {}", file, message));
        default:
            throw DatabaseError(message);
    }
}

SqliteStatement::SqliteStatement(sqlite3* database, std::string_view text) {
    sqlite3_stmt* handle = nullptr;
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v3(database, text.data(), static_cast<int>(text.size()),
                                        SQLITE_PREPARE_PERSISTENT, &handle, &rest);
    handle_.reset(handle);
    if (code != SQLITE_OK) failSqlite(database);
    if (handle == nullptr) throw DatabaseError("an empty statement");
    const std::string_view behind(rest, static_cast<std::size_t>(text.data() + text.size() - rest));
    if (behind.find_first_not_of(" \t\r\n;") != text::npos)
        throw DatabaseError("more than one statement in a text");
    readOnly_ = sqlite3_stmt_readonly(handle) != 0;
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

void SqliteStatement::gatherTexts(Parameters parameters) {
    texts_.clear();
    ends_.clear();
    for (const Parameter& parameter : parameters) {
        if (const auto* text = std::get_if<std::string_view>(&parameter)) {
            appendText(texts_, *text);
        } else if (const auto* moment = std::get_if<DateTime>(&parameter)) {
            appendMoment(texts_, *moment);
        } else {
            continue;
        }
        ends_.push_back(texts_.size());
    }
}

void SqliteStatement::bindOne(int index, const Parameter& parameter, std::size_t& textAt,
                              std::size_t& textNumber) {
    int code = SQLITE_OK;
    if (std::holds_alternative<std::string_view>(parameter) || std::holds_alternative<DateTime>(parameter)) {
        const std::size_t end = ends_[textNumber++];
        code = sqlite3_bind_text64(handle(), index, texts_.data() + textAt, end - textAt, SQLITE_STATIC,
                                   SQLITE_UTF8);
        textAt = end;
    } else if (const auto whole = wholeNumber(parameter)) {
        code = sqlite3_bind_int64(handle(), index, *whole);
    } else if (const auto* number = std::get_if<double>(&parameter)) {
        code = sqlite3_bind_double(handle(), index, *number);
    } else {
        code = sqlite3_bind_null(handle(), index);
    }
    if (code != SQLITE_OK) failSqlite(sqlite3_db_handle(handle()));
}

void SqliteStatement::bind(Parameters parameters) {
    const auto expected = static_cast<std::size_t>(sqlite3_bind_parameter_count(handle()));
    if (parameters.size() != expected) {
        throw DatabaseError(
            fmt::format("the statement has {} parameters and was given {}", expected, parameters.size()));
    }
    gatherTexts(parameters);
    int index = 0;
    std::size_t textAt = 0;
    std::size_t textNumber = 0;
    for (const Parameter& parameter : parameters) bindOne(++index, parameter, textAt, textNumber);
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(handle());
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    failSqlite(sqlite3_db_handle(handle()), use_.written);
}

void SqliteStatement::reset() noexcept {
    sqlite3_reset(handle());
    sqlite3_clear_bindings(handle());
    if (texts_.capacity() > keptTextBytes) texts_ = {};
}

const std::vector<std::string_view>& SqliteStatement::columnNames() {
    const int prepared = sqlite3_stmt_status(handle(), SQLITE_STMTSTATUS_REPREPARE, 0);
    if (prepared != preparedAgain_) readColumns();
    preparedAgain_ = prepared;
    return names_;
}

void SqliteStatement::readColumns() {
    names_.clear();
    moments_.clear();
    const int count = sqlite3_column_count(handle());
    for (int i = 0; i < count; ++i) {
        const char* type = sqlite3_column_decltype(handle(), i);
        names_.emplace_back(sqlite3_column_name(handle(), i));
        moments_.push_back(type != nullptr && text::equals(type, "timestamp"));
    }
}

SqliteStatementCache::Slots::value_type*& SqliteStatementCache::place(std::string_view text) {
    return places_[std::hash<const char*>{}(text.data()) / alignof(std::max_align_t) % places_.size()];
}

SqliteStatementCache::Slot& SqliteStatementCache::slot(std::string_view text) {
    Slots::value_type*& known = place(text);
    if (known != nullptr && known->first == text) return known->second;
    auto found = slots_.find(text);
    if (found == slots_.end()) {
        if (slots_.size() >= mostTexts) dropIdle();
        found = slots_.try_emplace(std::string(text)).first;
    }
    known = &*found;
    return found->second;
}

std::unique_ptr<SqliteStatement> SqliteStatementCache::take(Slot& slot) {
    if (slot.idle.empty()) return nullptr;
    auto statement = std::move(slot.idle.back());
    slot.idle.pop_back();
    ++slot.inUse;
    return statement;
}

void SqliteStatementCache::giveBack(Slot& slot, std::unique_ptr<SqliteStatement> statement) noexcept {
    --slot.inUse;
    statement->reset();
    try {
        slot.idle.push_back(std::move(statement));
    } catch (const std::bad_alloc&) {
        // It is prepared again at its next use.
    }
}

void SqliteStatementCache::clear() {
    slots_.clear();
    places_ = {};
}

void SqliteStatementCache::dropIdle() {
    std::erase_if(slots_, [](const auto& entry) { return entry.second.inUse == 0; });
    places_ = {};
}

SqliteRun::~SqliteRun() {
    if (statement_) SqliteStatementCache::giveBack(*slot_, std::move(statement_));
}

}  // namespace torvex::db
