#include <sqlite3.h>

#include "platform/db/Binding.h"
#include "platform/db/SqliteStatement.h"
#include "platform/text/Text.h"

namespace torvex::db {

namespace {

/// One value of the row that a statement stands on, or a value copied from one.
class Cell {
  public:
    Cell(sqlite3_value* value, bool moment) : value_(value), moment_(moment) {}

    bool isNull() const { return sqlite3_value_type(value_) == SQLITE_NULL; }
    std::string_view view() const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value_));
        return {bytes == nullptr ? "" : bytes, static_cast<std::size_t>(sqlite3_value_bytes(value_))};
    }
    std::string text() const {
        if (sqlite3_value_type(value_) == SQLITE_FLOAT) return text::fromNumber(sqlite3_value_double(value_));
        return std::string(view());
    }
    double number(double ifNull) const {
        switch (sqlite3_value_type(value_)) {
            case SQLITE_INTEGER:
            case SQLITE_FLOAT:
                return sqlite3_value_double(value_);
            case SQLITE_NULL:
                return ifNull;
            default:
                return numberOf(view());
        }
    }
    Value value() const {
        switch (sqlite3_value_type(value_)) {
            case SQLITE_INTEGER:
            case SQLITE_FLOAT:
                return sqlite3_value_double(value_);
            case SQLITE_NULL:
                return {};
            default:
                return moment_ ? momentOrText(view()) : Value(view());
        }
    }

  private:
    sqlite3_value* value_;
    bool moment_;
};

/// What both kinds of rows share: reading a cell that the kind finds.
template <typename Kind>
class CellSource : public Rows::Source {
  public:
    bool isNull(std::size_t index) const override { return cell(index).isNull(); }
    std::string text(std::size_t index) const override { return cell(index).text(); }
    std::string_view view(std::size_t index) const override { return cell(index).view(); }
    double number(std::size_t index, double ifNull) const override { return cell(index).number(ifNull); }
    Value value(std::size_t index) const override { return cell(index).value(); }

  private:
    Cell cell(std::size_t index) const { return static_cast<const Kind*>(this)->find(index); }
};

class SteppedRows final : public CellSource<SteppedRows> {
  public:
    explicit SteppedRows(SqliteRun run) : run_(std::move(run)), more_(run_->step()) {
        names_ = &run_->columnNames();
    }

    bool next() override {
        if (started_ && more_) more_ = run_->step();
        started_ = true;
        return more_;
    }
    std::size_t columns() const override { return names_->size(); }
    std::string_view columnName(std::size_t index) const override { return (*names_)[index]; }
    Cell find(std::size_t index) const {
        // On a connection without a mutex a column's value is as good as a protected one.
        return {sqlite3_column_value(run_->handle(), static_cast<int>(index)), run_->holdsMoments(index)};
    }

  private:
    SqliteRun run_;
    bool more_;
    bool started_ = false;
    const std::vector<std::string_view>* names_;
};

struct FreeValue {
    void operator()(sqlite3_value* value) const noexcept { sqlite3_value_free(value); }
};

/// Rows of a statement that has come to its end.
class GatheredRows final : public CellSource<GatheredRows> {
  public:
    explicit GatheredRows(SqliteRun run) {
        bool more = run->step();
        for (const std::string_view name : run->columnNames()) names_.emplace_back(name);
        for (std::size_t i = 0; i < names_.size(); ++i) moments_.push_back(run->holdsMoments(i));
        for (; more; more = run->step()) gatherRow(run->handle());
    }

    bool next() override {
        position_ += started_ ? names_.size() : 0;
        started_ = true;
        return position_ < cells_.size();
    }
    std::size_t columns() const override { return names_.size(); }
    std::string_view columnName(std::size_t index) const override { return names_[index]; }
    Cell find(std::size_t index) const { return {cells_.at(position_ + index).get(), moments_[index]}; }

  private:
    void gatherRow(sqlite3_stmt* statement) {
        for (std::size_t i = 0; i < names_.size(); ++i) {
            sqlite3_value* copy = sqlite3_value_dup(sqlite3_column_value(statement, static_cast<int>(i)));
            if (copy == nullptr) throw std::bad_alloc();
            cells_.emplace_back(copy);
        }
    }

    std::vector<std::string> names_;
    std::vector<bool> moments_;
    std::vector<std::unique_ptr<sqlite3_value, FreeValue>> cells_;
    std::size_t position_ = 0;
    bool started_ = false;
};

}  // namespace

std::unique_ptr<Rows::Source> openSqliteRows(SqliteRun run) {
    if (run->isReadOnly()) return std::make_unique<SteppedRows>(std::move(run));
    return std::make_unique<GatheredRows>(std::move(run));
}

}  // namespace torvex::db
