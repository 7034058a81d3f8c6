#include "platform/Value.h"

#include <stdexcept>

#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex {

bool Value::isTrue() const {
    if (isBoolean()) return boolean();
    if (isNumber()) return number() != 0;
    if (!isText()) return false;
    return text::equals(text(), "true") || (text::isNumeric(text()) && text::toNumber(text()) != 0);
}

double Value::toNumber() const {
    if (isEmpty()) return 0;
    if (isBoolean()) return boolean() ? 1 : 0;
    if (isNumber()) return number();
    if (isText() && text::isNumeric(text())) return text::toNumber(text());
    throw Error("Type mismatch: a number is needed" + (isText() ? ", not \"" + text() + "\"" : ""));
}

std::string Value::toText() const {
    if (isEmpty()) return {};
    if (isBoolean()) return boolean() ? "True" : "False";
    if (isNumber()) return text::fromNumber(number());
    if (isText()) return text();
    if (isDate()) return isoText(date());
    throw Error("Type mismatch: a text is needed, not a grid");
}

void ResultGrid::add(std::vector<Value> cells) {
    if (cells.size() > columns_) throw std::logic_error("a row has more cells than its grid has columns");
    cells.resize(columns_);
    rows_.push_back(std::move(cells));
}

Value gridOrEmpty(ResultGrid grid) {
    if (grid.rows() == 0) return {};
    return Value(std::make_shared<const ResultGrid>(std::move(grid)));
}

}  // namespace torvex
