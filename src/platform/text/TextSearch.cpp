#include <cstring>
#include <limits>

#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex::text {

namespace {

/// The bytes, in one place of the needle, by which a place in the text is taken into consideration. A byte
/// that is rare in HTML is best: the search for it is what a search costs.
struct Anchor {
    std::size_t offset = 0;  ///< bytes from the start of a match
    std::array<char, 3> bytes{};
    std::size_t count = 0;  ///< of the bytes
};

constexpr unsigned char lowestCost = 1;

/// Some measure of how often each byte occurs in HTML. Letters cost more, as both cases are searched for.
constexpr std::array<unsigned char, 256> costs = [] {
    std::array<unsigned char, 256> table{};
    const auto set = [&table](std::string_view bytes, unsigned char cost) {
        for (const char c : bytes) table[static_cast<unsigned char>(c)] = cost;
    };
    for (auto& cost : table) cost = lowestCost;
    set("<>/=\"-. \r\n'0123456789:;", 2);
    set("jqzJQZ", 3);
    set("bgkmpuvwxyBGKMPUVWXY", 5);
    set("acdefhilnorstACDEFHILNORST", 8);
    return table;
}();

unsigned char costOf(char c) {
    return costs[static_cast<unsigned char>(c)];
}

bool hasFormBeyondAscii(char c) {
    const unsigned char lower = utf8::foldedAscii(c);
    return lower == 'k' || lower == 's';
}

/// Where the cheapest anchor of a needle lies that begins with ASCII. Behind "k", "s" and what is not ASCII
/// offsets are no longer fixed.
std::size_t bestOffset(std::string_view needle) {
    constexpr std::size_t farEnough = 16;
    std::size_t best = 0;
    for (std::size_t i = 0; i < std::min(needle.size(), farEnough); ++i) {
        if (!utf8::isAscii(needle[i]) || hasFormBeyondAscii(needle[i])) break;
        if (costOf(needle[i]) < costOf(needle[best])) best = i;
        if (costOf(needle[best]) == lowestCost) break;
    }
    return best;
}

Anchor chooseAnchor(std::string_view needle) {
    const std::size_t offset = bestOffset(needle);
    const char lower = static_cast<char>(utf8::foldedAscii(needle[offset]));
    Anchor anchor{offset, {lower}, 1};
    if (lower < 'a' || lower > 'z') return anchor;
    anchor.bytes[anchor.count++] = static_cast<char>(lower - 32);
    // Two letters of ASCII have a third form beyond it: the Kelvin sign and the long s, by their first bytes.
    if (lower == 'k') anchor.bytes[anchor.count++] = '\xE2';
    if (lower == 's') anchor.bytes[anchor.count++] = '\xC5';
    return anchor;
}

/// Finds the next of up to three bytes. It looks for each of them only a stretch ahead: otherwise a caller
/// that finds one byte again and again would pay each time for the other ones, which may be far away.
class ByteScanner {
  public:
    ByteScanner(std::string_view text, std::size_t from, const Anchor& anchor)
        : text_(text), at_(from), anchor_(anchor), windowEnd_(from) {}

    std::size_t next() {
        if (anchor_.count == 1) return nextOfOne();
        for (;;) {
            const std::size_t found = std::min({next_[0], next_[1], next_[2]});
            if (found != npos) return take(found);
            if (windowEnd_ >= text_.size()) return npos;
            openWindow();
        }
    }

  private:
    static constexpr std::size_t windowSize = 512;

    std::size_t findByte(char byte, std::size_t from, std::size_t end) const {
        const void* found = std::memchr(text_.data() + from, byte, end - from);
        return found == nullptr ? npos
                                : static_cast<std::size_t>(static_cast<const char*>(found) - text_.data());
    }

    std::size_t nextOfOne() {
        if (at_ >= text_.size()) return npos;
        const std::size_t found = findByte(anchor_.bytes[0], at_, text_.size());
        at_ = found == npos ? text_.size() : found + 1;
        return found;
    }

    std::size_t take(std::size_t found) {
        for (std::size_t i = 0; i < anchor_.count; ++i) {
            if (next_[i] == found) next_[i] = findByte(anchor_.bytes[i], found + 1, windowEnd_);
        }
        return found;
    }

    void openWindow() {
        const std::size_t begin = windowEnd_;
        windowEnd_ = std::min(begin + windowSize, text_.size());
        for (std::size_t i = 0; i < anchor_.count; ++i) {
            next_[i] = findByte(anchor_.bytes[i], begin, windowEnd_);
        }
    }

    std::string_view text_;
    std::size_t at_;
    const Anchor& anchor_;
    std::size_t windowEnd_;
    std::array<std::size_t, 3> next_{npos, npos, npos};
};

std::size_t findAnchored(std::string_view text, std::string_view needle, std::size_t from) {
    const Anchor anchor = chooseAnchor(needle);
    const unsigned char first = utf8::foldedAscii(needle.front());
    ByteScanner scanner(text, std::min(from + anchor.offset, text.size()), anchor);
    for (std::size_t hit = scanner.next(); hit != npos; hit = scanner.next()) {
        const std::size_t at = hit - anchor.offset;
        // Most hits are told by one look at the first character.
        if (utf8::isAscii(text[at]) && utf8::foldedAscii(text[at]) != first) continue;
        if (matchLength(text, at, needle) > 0) return at;
    }
    return npos;
}

/// For needles that begin beyond ASCII: only characters beyond it can match the first one.
std::size_t findByUnits(std::string_view text, std::string_view needle, std::size_t from) {
    for (std::size_t at = from; at < text.size();) {
        at += utf8::asciiRun(text, at);
        if (at == text.size()) break;
        if (matchLength(text, at, needle) > 0) return at;
        at += utf8::unitAt(text, at).length;
    }
    return npos;
}

/// A needle whose first character is the long form of an ASCII letter, in that letter.
std::string inAscii(std::string_view needle, std::uint32_t firstFolded) {
    std::string result(1, static_cast<char>(firstFolded));
    return result.append(needle.substr(utf8::unitAt(needle, 0).length));
}

}  // namespace

std::size_t matchLength(std::string_view text, std::size_t at, std::string_view needle) {
    if (at > text.size()) return 0;
    std::string_view rest = text.substr(at);
    for (;;) {
        const std::size_t same = utf8::sameAsciiRun(rest, needle);
        rest.remove_prefix(same);
        needle.remove_prefix(same);
        if (needle.empty()) return text.size() - rest.size() - at;
        if (rest.empty() || (utf8::isAscii(rest.front()) && utf8::isAscii(needle.front()))) return 0;
        const utf8::Unit ours = utf8::unitAt(rest, 0);
        const utf8::Unit theirs = utf8::unitAt(needle, 0);
        if (ours.value != theirs.value && utf8::folded(ours.value) != utf8::folded(theirs.value)) return 0;
        rest.remove_prefix(ours.length);
        needle.remove_prefix(theirs.length);
    }
}

std::size_t find(std::string_view text, std::string_view needle, std::size_t from) {
    if (from > text.size()) return npos;
    if (needle.empty()) return from;
    if (utf8::isAscii(needle.front())) return findAnchored(text, needle, from);
    const std::uint32_t firstFolded = utf8::folded(utf8::unitAt(needle, 0).value);
    if (firstFolded < 0x80) return findAnchored(text, inAscii(needle, firstFolded), from);
    return findByUnits(text, needle, from);
}

bool contains(std::string_view text, std::string_view needle) {
    return find(text, needle) != npos;
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to, int count) {
    std::string result;
    std::size_t kept = 0;
    if (!from.empty()) {
        for (; count != 0; count -= count > 0 ? 1 : 0) {
            const std::size_t at = find(text, from, kept);
            if (at == npos) break;
            if (kept == 0) result.reserve(text.size() + to.size());
            result.append(text, kept, at - kept).append(to);
            kept = at + matchLength(text, at, from);
        }
    }
    return result.append(text, kept);
}

}  // namespace torvex::text
