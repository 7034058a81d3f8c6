#include "operations/calls/ValueJson.h"

#include <cmath>
#include <cstdint>

#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

namespace json = boost::json;

/// Beyond this a double no longer holds every whole number.
constexpr double largestWhole = 9007199254740992.0;

json::value numberJson(double number) {
    if (!std::isfinite(number)) return nullptr;
    if (std::trunc(number) == number && std::abs(number) <= largestWhole)
        return static_cast<std::int64_t>(number);
    return number;
}

}  // namespace

json::value textJson(std::string_view content) {
    return json::string(text::toValidUtf8(content));
}

json::value singleJson(const Value& value) {
    if (value.isEmpty()) return nullptr;
    if (value.isBoolean()) return value.boolean();
    if (value.isNumber()) return numberJson(value.number());
    return textJson(value.toText());
}

}  // namespace torvex::operations
