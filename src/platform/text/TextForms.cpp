#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <limits>

#include "platform/text/Text.h"

namespace torvex::text {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isAlphanumeric(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isSign(char c) {
    return c == '+' || c == '-';
}

/// The value of "digits", "digits.", ".digits" or "digits.digits".
double unsignedNumber(std::string_view number) {
    double value = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    if (read.ec != std::errc::result_out_of_range) return value;
    const bool huge = number.substr(0, number.find('.')).find_first_not_of('0') != npos;
    return huge ? std::numeric_limits<double>::max() : 0;
}

/// The digits of precision that a number is written with: more would show how it is stored.
constexpr int significantDigits = 15;

std::string withoutTrailingZeros(std::string number) {
    if (number.find('.') == std::string::npos) return number;
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') number.pop_back();
    return number == "-0" ? "0" : number;
}

/// "" for a character that stands for itself.
std::string_view entityOf(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        default:
            return {};
    }
}

/// -1 when it is no hexadecimal digit.
int hexadecimalValue(char c) {
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

/// The byte that the escape at `at` stands for; -1 when there is no whole escape.
int escapedByte(std::string_view text, std::size_t at) {
    if (text[at] != '%' || at + 2 >= text.size()) return -1;
    const int high = hexadecimalValue(text[at + 1]);
    const int low = hexadecimalValue(text[at + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

}  // namespace

bool isNumeric(std::string_view text) {
    text = trim(text);
    if (!text.empty() && isSign(text.front())) text.remove_prefix(1);
    bool digit = false;
    bool point = false;
    for (const char c : text) {
        if (!isDigit(c) && (c != '.' || point)) return false;
        (c == '.' ? point : digit) = true;
    }
    return digit;
}

double toNumber(std::string_view text) {
    if (!isNumeric(text)) return 0;
    text = trim(text);
    const bool negative = text.front() == '-';
    if (isSign(text.front())) text.remove_prefix(1);
    const double value = unsignedNumber(text);
    return negative ? -value : value;
}

std::string fromNumber(double number) {
    constexpr double largestPlain = 1e15;
    const double magnitude = std::abs(number);
    if (!(magnitude < largestPlain)) return fmt::format("{:.{}G}", number, significantDigits);
    if (std::trunc(number) == number) return fmt::format("{}", static_cast<long long>(number));
    const int digitsBeforePoint = static_cast<int>(std::floor(std::log10(magnitude))) + 1;
    return withoutTrailingZeros(fmt::format("{:.{}f}", number, significantDigits - digitsBeforePoint));
}

std::string htmlEncode(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 4);
    std::size_t kept = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view entity = entityOf(text[at]);
        if (entity.empty()) continue;
        result.append(text, kept, at - kept).append(entity);
        kept = at + 1;
    }
    return result.append(text, kept);
}

std::string urlEncode(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (isAlphanumeric(c)) {
            result += c;
        } else if (c == ' ') {
            result += '+';
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result.append({'%', digits[byte >> 4U], digits[byte & 15U]});
        }
    }
    return result;
}

std::string urlDecode(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int byte = escapedByte(text, at);
        if (byte >= 0) {
            result += static_cast<char>(byte);
            at += 2;
        } else {
            result += text[at] == '+' ? ' ' : text[at];
        }
    }
    return result;
}

}  // namespace torvex::text
