#include "platform/db/Connection.h"

#include "platform/Text.h"
#include "platform/db/RowSource.h"

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
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t index = (hint_ + step) % count;
        if (!text::equals(source_->columnName(index), column)) continue;
        hint_ = index + 1;
        return index;
    }
    throw DatabaseError("the result has no column \"" + std::string(column) + "\"");
}

bool Rows::isNull(std::string_view column) const {
    return source_->isNull(indexOf(column));
}

std::string Rows::text(std::string_view column) const {
    const std::size_t index = indexOf(column);
    return source_->isNull(index) ? std::string() : source_->text(index);
}

std::string_view Rows::view(std::string_view column) const {
    const std::size_t index = indexOf(column);
    return source_->isNull(index) ? std::string_view() : source_->view(index);
}

double Rows::number(std::string_view column, double ifNull) const {
    const std::size_t index = indexOf(column);
    return source_->isNull(index) ? ifNull : source_->number(index);
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
    return source_->isNull(index) ? Value() : source_->value(index);
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
