#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

/// How the text functions walk over UTF-8: in units. A unit is a well-formed character, or one byte that is
/// part of none. A lead byte always begins a unit, so walking back and walking on meet the same units.
namespace torvex::utf8 {

/// The value of a unit: its code point, or this and the byte for a byte that is part of no character.
inline constexpr std::uint32_t brokenByte = 0x110000;

struct Unit {
    std::uint32_t value;
    std::size_t length;  ///< bytes
};

inline bool isAscii(char c) {
    return static_cast<signed char>(c) >= 0;
}
inline bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The unit at `at`, which lies inside the text.
inline Unit unitAt(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) return {lead, 1};
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data()) + at;
    const auto available = static_cast<std::int32_t>(std::min<std::size_t>(text.size() - at, 4));
    std::int32_t length = 0;
    UChar32 value = 0;
    U8_NEXT(bytes, length, available, value);
    if (value < 0) return {brokenByte + lead, 1};
    return {static_cast<std::uint32_t>(value), static_cast<std::size_t>(length)};
}

/// The unit that ends just before `end`, which isn't 0.
inline Unit unitBefore(std::string_view text, std::size_t end) {
    for (std::size_t length = 1; length <= std::min<std::size_t>(end, 4); ++length) {
        if (isContinuation(text[end - length])) continue;
        const Unit unit = unitAt(text, end - length);
        if (unit.length == length) return unit;
        break;
    }
    return {brokenByte + static_cast<unsigned char>(text[end - 1]), 1};
}

/// How many bytes from `at` on are ASCII.
inline std::size_t asciiRun(std::string_view text, std::size_t at) {
    std::size_t end = at;
    for (std::uint64_t word = 0; end + sizeof word <= text.size(); end += sizeof word) {
        std::memcpy(&word, text.data() + end, sizeof word);
        if ((word & 0x8080808080808080U) != 0) break;
    }
    while (end < text.size() && isAscii(text[end])) ++end;
    return end - at;
}

inline constexpr std::array<unsigned char, 128> asciiFolds = [] {
    std::array<unsigned char, 128> folds{};
    for (unsigned c = 0; c < 128; ++c) {
        folds[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    }
    return folds;
}();

/// The case-folded form of an ASCII character.
inline unsigned char foldedAscii(char c) {
    return asciiFolds[static_cast<unsigned char>(c)];
}

/// Eight characters of ASCII, case-folded at once. Bytes beyond ASCII stay.
inline std::uint64_t foldedWord(std::uint64_t word) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    const std::uint64_t low = word & (0x7F * ones);
    // The highest bit of each byte tells whether the byte lies in the range; no sum carries into the next
    // one.
    const std::uint64_t fromA = low + (0x80 - 'A') * ones;
    const std::uint64_t behindZ = low + (0x80 - 'Z' - 1) * ones;
    const std::uint64_t upper = fromA & ~behindZ & ~word & (0x80 * ones);
    return word | (upper >> 2U);
}

/// How many leading bytes of both texts are ASCII and the same but for their case.
inline std::size_t sameAsciiRun(std::string_view a, std::string_view b) {
    constexpr std::uint64_t beyondAscii = 0x8080808080808080U;
    const std::size_t size = std::min(a.size(), b.size());
    std::size_t at = 0;
    for (std::uint64_t ours = 0, theirs = 0; at + sizeof ours <= size; at += sizeof ours) {
        std::memcpy(&ours, a.data() + at, sizeof ours);
        std::memcpy(&theirs, b.data() + at, sizeof theirs);
        std::uint64_t unlike = (ours | theirs) & beyondAscii;
        if (ours != theirs) unlike |= foldedWord(ours) ^ foldedWord(theirs);
        if (unlike == 0) continue;
        constexpr bool firstIsLowest = std::endian::native == std::endian::little;
        const int bits = firstIsLowest ? std::countr_zero(unlike) : std::countl_zero(unlike);
        return at + static_cast<std::size_t>(bits) / 8;
    }
    while (at < size && isAscii(a[at]) && isAscii(b[at]) && foldedAscii(a[at]) == foldedAscii(b[at])) ++at;
    return at;
}

/// The case-folded form of a unit's value.
inline std::uint32_t folded(std::uint32_t value) {
    if (value < 0x80) return asciiFolds[value];
    if (value >= brokenByte) return value;
    return static_cast<std::uint32_t>(u_foldCase(static_cast<UChar32>(value), U_FOLD_CASE_DEFAULT));
}

}  // namespace torvex::utf8
