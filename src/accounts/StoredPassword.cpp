#include "accounts/StoredPassword.h"

#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex {

namespace {

constexpr std::size_t usedCharacters = 20;
constexpr std::size_t mostDigits = 20;

int digit(char c) {
    return c - '0';
}

struct CharacterCodes {
    double sum = 0;
    std::string digits;  ///< the codes one after the other
};

CharacterCodes codesOf(std::string_view text) {
    CharacterCodes codes;
    std::size_t at = 0;
    while (at < text.size()) {
        const utf8::Unit unit = utf8::unitAt(text, at);
        codes.sum += unit.value;
        codes.digits += std::to_string(unit.value);
        at += unit.length;
    }
    return codes;
}

int lastTwoDigits(double number) {
    return static_cast<int>(text::toNumber(text::last(text::fromNumber(number), 2)));
}

/// Each digit times a factor that grows by one from place to place.
std::string spread(std::string_view digits, int offset) {
    std::string result;
    int factor = offset;
    for (const char c : digits) result += std::to_string(digit(c) * ++factor);
    return result;
}

/// Neighbours added up, pair by pair; an odd last digit is dropped.
std::string addPairs(std::string_view digits) {
    std::string result;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
        result += std::to_string(digit(digits[at]) + digit(digits[at + 1]));
    }
    return result;
}

}  // namespace

std::string encodePassword(std::string_view password) {
    const std::string upper = text::upper(password);
    const CharacterCodes codes = codesOf(text::first(text::trim(upper), usedCharacters));
    if (codes.digits.empty()) return "";
    std::string result = spread(codes.digits, lastTwoDigits(codes.sum));
    while (result.size() > mostDigits) result = addPairs(result);
    return result;
}

}  // namespace torvex
