#pragma once

#include "platform/db/Connection.h"

namespace torvex::db {

/// The rows of one running statement, by column index: what each engine's adapter implements. A null reads as
/// an empty text or value, and as the number that stands for it.
class Rows::Source {
  public:
    virtual ~Source() = default;

    virtual bool next() = 0;
    virtual std::size_t columns() const = 0;
    virtual std::string_view columnName(std::size_t index) const = 0;
    virtual bool isNull(std::size_t index) const = 0;
    virtual std::string text(std::size_t index) const = 0;
    virtual std::string_view view(std::size_t index) const = 0;
    virtual double number(std::size_t index, double ifNull) const = 0;
    virtual Value value(std::size_t index) const = 0;
};

}  // namespace torvex::db
