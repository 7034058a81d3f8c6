#include "platform/db/Binding.h"

#include <cmath>
#include <fmt/format.h>
#include <iterator>

#include "platform/text/Text.h"

namespace torvex::db {

namespace {

/// The first double beyond the range of a 64-bit integer.
constexpr double beyondInt64 = 9223372036854775808.0;
constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

/// ASCII without a NUL: what nearly every key is. Written without an early exit, so that it is vectorised.
bool isPlain(std::string_view text) {
    unsigned char found = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        found |= static_cast<unsigned char>((byte & 0x80U) | (byte == 0 ? 1U : 0U));
    }
    return found == 0;
}

void appendReplacingNul(std::string& buffer, std::string_view text) {
    for (const char c : text) {
        if (c == '\0') {
            buffer.append(replacementCharacter);
        } else {
            buffer.push_back(c);
        }
    }
}

struct Whole {
    std::optional<std::int64_t> operator()(bool flag) const { return flag ? 1 : 0; }
    std::optional<std::int64_t> operator()(int number) const { return number; }
    std::optional<std::int64_t> operator()(std::int64_t number) const { return number; }
    std::optional<std::int64_t> operator()(double number) const {
        if (!(std::abs(number) < beyondInt64) || std::trunc(number) != number) return std::nullopt;
        return static_cast<std::int64_t>(number);
    }
    template <typename Other>
    std::optional<std::int64_t> operator()(const Other&) const {
        return std::nullopt;
    }
};

}  // namespace

std::optional<std::int64_t> wholeNumber(const Parameter& parameter) {
    return std::visit(Whole{}, parameter);
}

void appendText(std::string& buffer, std::string_view text) {
    if (isPlain(text)) {
        buffer.append(text);
    } else if (text::isValidUtf8(text)) {
        appendReplacingNul(buffer, text);
    } else {
        appendReplacingNul(buffer, text::toValidUtf8(text));
    }
}

void appendMoment(std::string& buffer, const DateTime& moment) {
    fmt::format_to(std::back_inserter(buffer), "{:04}-{:02}-{:02} {:02}:{:02}:{:02}", moment.year,
                   moment.month, moment.day, moment.hour, moment.minute, moment.second);
}

double numberOf(std::string_view text) {
    if (!text::isNumeric(text)) throw DatabaseError("a column that is read as a number holds a text");
    return text::toNumber(text);
}

Value momentOrText(std::string_view stored) {
    DateTime moment;
    std::string text(stored);
    if (parseIso(text, moment)) return moment;
    return text;
}

}  // namespace torvex::db
