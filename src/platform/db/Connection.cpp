#include "platform/db/Connection.h"

#include <functional>

#include "platform/db/RowSource.h"
#include "platform/text/Text.h"

namespace torvex::db {

Rows::Rows(std::unique_ptr<Source> source) : source_(std::move(source)) {}
Rows::Rows(Rows&&) noexcept = default;
Rows& Rows::operator=(Rows&&) noexcept = default;
Rows::~Rows() = default;

bool Rows::next() {
    return source_->next();
}

std::size_t Rows::indexOf(std::string_view column) const {
    const std::size_t count = source_->columns();
    const auto findFrom = [&](std::size_t index, std::size_t end, auto isAlike) {
        while (index < end && !isAlike(source_->columnName(index), column)) ++index;
        return index < end ? index : count;
    };
    // Most callers spell a name as the statement does, and read in its order.
    std::size_t index = findFrom(hint_, count, std::equal_to<>());
    if (index == count) index = findFrom(0, hint_, std::equal_to<>());
    if (index == count) index = findFrom(0, count, text::equals);
    if (index == count) throw DatabaseError("the result has no column \"" + std::string(column) + "\"");
    hint_ = index + 1;
    return index;
}

bool Rows::isNull(std::string_view column) const {
    return source_->isNull(indexOf(column));
}

std::string Rows::text(std::string_view column) const {
    return source_->text(indexOf(column));
}

std::string_view Rows::view(std::string_view column) const {
    return source_->view(indexOf(column));
}

double Rows::number(std::string_view column, double ifNull) const {
    return source_->number(indexOf(column), ifNull);
}

Value Rows::value(std::string_view column) const {
    return value(indexOf(column));
}

std::size_t Rows::columns() const {
    return source_->columns();
}

std::string_view Rows::columnName(std::size_t index) const {
    return source_->columnName(index);
}

Value Rows::value(std::size_t index) const {
    return source_->value(index);
}

Transaction::~Transaction() {
    if (!open_) return;
    try {
        connection_.rollback();
    } catch (const std::exception&) {
        // The connection is broken; the engine has rolled back, and whoever reports is already on the way.
    }
}

void Transaction::commit() {
    connection_.commit();
    open_ = false;
}

ReadScope::~ReadScope() {
    try {
        connection_.rollback();
    } catch (const std::exception&) {
        // Nothing was written, so nothing is lost.
    }
}

}  // namespace torvex::db
