#include "templates/Markers.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <vector>

#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex::markers {

namespace {

/// Markers are made for every place of every page.
std::string joined(std::string_view first, std::string_view second, std::string_view third) {
    std::string result;
    result.reserve(first.size() + second.size() + third.size());
    return result.append(first).append(second).append(third);
}

/// Where the next marker begins. Its "!" is far rarer in HTML than its "<".
std::size_t findOpening(std::string_view text, std::size_t from) {
    for (std::size_t at = text.find('!', from + 1); at != text::npos; at = text.find('!', at + 1)) {
        if (text.substr(at - 1).starts_with(opening)) return at - 1;
    }
    return text::npos;
}

/// The first character in which names of the family "torvex_" differ. By it most of the other markers are told from the
/// one that is looked for. It lies at the same place in all of them: no letter before it has a form beyond ASCII.
class Probe {
  public:
    explicit Probe(std::string_view marker) {
        constexpr std::string_view family = "<!--!torvex_";
        if (marker.size() <= family.size() || !text::startsWith(marker, family)) return;
        if (!utf8::isAscii(marker[family.size()])) return;
        offset_ = family.size();
        folded_ = utf8::foldedAscii(marker[offset_]);
    }
    /// A character beyond ASCII may be another form of the one that is looked for.
    bool mayMatch(std::string_view text, std::size_t at) const {
        if (offset_ == 0) return true;
        if (at + offset_ >= text.size()) return false;
        const char c = text[at + offset_];
        return !utf8::isAscii(c) || utf8::foldedAscii(c) == folded_;
    }

  private:
    std::size_t offset_ = 0;  ///< 0: there is none
    unsigned char folded_ = 0;
};

/// A start or end marker of a family of blocks.
struct FamilyMarker {
    int number;  ///< 0 for the blocks without a number
    bool isStart;
    std::size_t begin;
    std::size_t end;
};

/// The number at `at` with the "_" behind it, moving `at` past both; 0, without moving, when there is none in
/// plain form.
int takeNumber(std::string_view text, std::size_t& at) {
    int number = 0;
    const char* begin = text.data() + at;
    if (at >= text.size() || *begin < '1' || *begin > '9') return 0;
    const auto read = std::from_chars(begin, text.data() + text.size(), number);
    const auto end = static_cast<std::size_t>(read.ptr - text.data());
    if (read.ec != std::errc() || end >= text.size() || text[end] != '_') return 0;
    at = end + 1;
    return number;
}

std::optional<FamilyMarker> readFamilyMarker(std::string_view text, std::size_t begin, std::size_t nameEnd) {
    std::size_t at = nameEnd;
    const int number = takeNumber(text, at);
    if (const std::size_t length = text::matchLength(text, at, "start!-->")) {
        return FamilyMarker{number, true, begin, at + length};
    }
    if (const std::size_t length = text::matchLength(text, at, "end!-->")) {
        return FamilyMarker{number, false, begin, at + length};
    }
    return std::nullopt;
}

/// All markers of a family, by number and then by place.
std::vector<FamilyMarker> familyMarkers(std::string_view text, std::string_view name) {
    const std::string prefix = joined(opening, name, "_");
    std::vector<FamilyMarker> found;
    for (std::size_t at = find(text, prefix); at != text::npos; at = find(text, prefix, at + 1)) {
        const auto marker = readFamilyMarker(text, at, at + text::matchLength(text, at, prefix));
        if (marker) found.push_back(*marker);
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return a.number < b.number; });
    return found;
}

/// The stretches of a text that are replaced; they don't overlap, and a later one swallows those inside it.
class Replacements {
  public:
    bool empty() const { return ranges_.empty(); }
    bool contains(std::size_t at) const {
        const auto next = ranges_.upper_bound(at);
        return next != ranges_.begin() && at < std::prev(next)->second;
    }
    void add(std::size_t begin, std::size_t end) {
        ranges_.erase(ranges_.lower_bound(begin), ranges_.lower_bound(end));
        ranges_.emplace(begin, end);
    }
    std::string apply(std::string_view text, std::string_view replacement) const {
        std::string result;
        result.reserve(text.size());
        std::size_t kept = 0;
        for (const auto& [begin, end] : ranges_) {
            checkSize(result.size() + begin - kept, replacement.size());
            result.append(text, kept, begin - kept).append(replacement);
            kept = end;
        }
        return result.append(text, kept);
    }

  private:
    std::map<std::size_t, std::size_t> ranges_;  ///< begin and end
};

using MarkerIterator = std::vector<FamilyMarker>::const_iterator;

/// Takes the blocks of one number, whose markers are given; false when there is none.
bool addBlocks(MarkerIterator marker, MarkerIterator last, Replacements& replacements) {
    const FamilyMarker* start = nullptr;
    bool found = false;
    for (; marker != last; ++marker) {
        if (replacements.contains(marker->begin)) continue;
        if (start == nullptr && marker->isStart) {
            start = &*marker;
        } else if (start != nullptr && !marker->isStart) {
            replacements.add(start->begin, marker->end);
            start = nullptr;
            found = true;
        }
    }
    return found;
}

}  // namespace

void checkSize(std::size_t size, std::size_t piece, std::size_t count) {
    const bool fits = size <= largestPage && (piece == 0 || count <= (largestPage - size) / piece);
    if (!fits) throw Error("the page is larger than 32 MB");
}

std::string tag(std::string_view name) {
    return joined(opening, name, closing);
}

std::string blockStart(std::string_view name) {
    return joined(opening, name, "_start!-->");
}

std::string blockEnd(std::string_view name) {
    return joined(opening, name, "_end!-->");
}

std::size_t find(std::string_view text, std::string_view marker, std::size_t from) {
    if (!marker.starts_with(opening)) return text::find(text, marker, from);
    const Probe probe(marker);
    for (std::size_t at = findOpening(text, from); at != text::npos;
         at = findOpening(text, at + opening.size())) {
        if (probe.mayMatch(text, at) && text::matchLength(text, at, marker) > 0) return at;
    }
    return text::npos;
}

std::optional<Block> findBlock(std::string_view text, std::string_view startMarker,
                               std::string_view endMarker, std::size_t from) {
    const std::size_t begin = find(text, startMarker, from);
    if (begin == text::npos) return std::nullopt;
    const std::size_t innerEnd = find(text, endMarker, begin + 1);
    if (innerEnd == text::npos) return std::nullopt;
    const std::size_t innerBegin = begin + text::matchLength(text, begin, startMarker);
    // Names chosen so that one marker lies in the other leave nothing between them.
    return Block{begin, std::min(innerBegin, innerEnd), innerEnd,
                 innerEnd + text::matchLength(text, innerEnd, endMarker)};
}

void replaceBlocks(std::string& text, std::string_view name, std::string_view replacement) {
    const std::string start = blockStart(name);
    const std::string end = blockEnd(name);
    auto block = findBlock(text, start, end);
    if (!block) return;
    std::string result;
    std::size_t kept = 0;
    for (; block; block = findBlock(text, start, end, kept)) {
        checkSize(result.size() + block->begin - kept, replacement.size());
        result.append(text, kept, block->begin - kept).append(replacement);
        kept = block->end;
    }
    text = std::move(result.append(text, kept));
}

void replaceNumberedBlocks(std::string& text, std::string_view name, std::string_view replacement) {
    const std::vector<FamilyMarker> found = familyMarkers(text, name);
    Replacements replacements;
    auto marker = found.begin();
    for (int number = 0;; ++number) {
        const auto last =
            std::find_if(marker, found.end(), [number](const auto& other) { return other.number != number; });
        if (!addBlocks(marker, last, replacements) && number > 0) break;
        marker = last;
    }
    if (!replacements.empty()) text = replacements.apply(text, replacement);
}

std::string withoutMarkers(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    std::size_t kept = 0;
    for (;;) {
        const std::size_t begin = text::find(text, opening, kept);
        if (begin == text::npos) break;
        const std::size_t end = text::find(text, closing, begin + 1);
        if (end == text::npos) break;
        result.append(text, kept, begin - kept);
        kept = end + closing.size();
    }
    return result.append(text, kept);
}

}  // namespace torvex::markers
