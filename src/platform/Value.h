#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/DateTime.h"

namespace torvex {

class ResultGrid;

/// What a store key, an argument or a result can hold: nothing, a boolean, a number, a text, a moment or a
/// grid. Values are copied freely; a grid is shared and never changes once it is in a value.
class Value {
  public:
    using Grid = std::shared_ptr<const ResultGrid>;

    Value() = default;
    Value(bool flag) : held_(flag) {}
    Value(int number) : held_(static_cast<double>(number)) {}
    Value(double number) : held_(number) {}
    Value(std::string text) : held_(std::move(text)) {}
    Value(std::string_view text) : held_(std::string(text)) {}
    Value(const char* text) : held_(std::string(text)) {}
    Value(const DateTime& moment) : held_(moment) {}
    Value(Grid grid) : held_(std::move(grid)) {}

    bool isEmpty() const { return std::holds_alternative<std::monostate>(held_); }
    bool isBoolean() const { return std::holds_alternative<bool>(held_); }
    bool isNumber() const { return std::holds_alternative<double>(held_); }
    bool isText() const { return std::holds_alternative<std::string>(held_); }
    bool isDate() const { return std::holds_alternative<DateTime>(held_); }
    bool isGrid() const { return std::holds_alternative<Grid>(held_); }

    /// A true boolean, a number other than 0, or a text that reads as one of these. Anything else is false.
    bool isTrue() const;
    /// The number; empty is 0 and a true boolean is 1. A text must read as a plain decimal number; otherwise,
    /// and for moments and grids, throws `Error`.
    double toNumber() const;
    /// The text; empty is "", numbers are written without a needless fraction, booleans as "True" and
    /// "False", moments as `isoText`. Throws `Error` for a grid.
    std::string toText() const;

    /// The held alternative itself; throws `std::bad_variant_access` when it is another one.
    bool boolean() const { return std::get<bool>(held_); }
    double number() const { return std::get<double>(held_); }
    const std::string& text() const { return std::get<std::string>(held_); }
    const DateTime& date() const { return std::get<DateTime>(held_); }
    const ResultGrid& grid() const { return *std::get<Grid>(held_); }

    bool operator==(const Value&) const = default;

  private:
    std::variant<std::monostate, bool, double, std::string, DateTime, Grid> held_;
};

/// The rows that a list operation returns: cells are addressed by column and then row, both from 0. The
/// number of columns is fixed at creation and may exceed the columns that are ever filled.
class ResultGrid {
  public:
    explicit ResultGrid(std::size_t columns) : columns_(columns) {}

    std::size_t columns() const { return columns_; }
    std::size_t rows() const { return rows_.size(); }

    /// Adds a row; fewer cells than columns leave the rest empty. More are a programming error (throws).
    void add(std::vector<Value> cells);
    const Value& at(std::size_t column, std::size_t row) const { return rows_.at(row).at(column); }
    void set(std::size_t column, std::size_t row, Value value) {
        rows_.at(row).at(column) = std::move(value);
    }

  private:
    std::size_t columns_;
    std::vector<std::vector<Value>> rows_;
};

/// The grid as a value, or an empty value when it has no rows: the form in which lists are returned.
Value gridOrEmpty(ResultGrid grid);

}  // namespace torvex
