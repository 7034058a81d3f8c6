#include "search/catalogue/Abstract.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <map>

#include "platform/text/Text.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

constexpr std::size_t wholeLength = 300;   ///< characters
constexpr std::size_t windowLength = 220;  ///< bytes in which words count as close together
constexpr std::size_t leadLength = 60;     ///< bytes in front of the first of them
constexpr std::size_t mostRead = 200'000;  ///< bytes; what stands later is no better
constexpr std::string_view dots = "\xE2\x80\xA6";

bool isBlank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

bool isFound(const std::string& word, const FoundWords& found) {
    if (found.words.contains(word)) return true;
    return std::any_of(found.beginnings.begin(), found.beginnings.end(),
                       [&](const std::string& begin) { return word.starts_with(begin); });
}

struct Occurrence {
    std::string word;
    std::size_t begin;
};

/// No window has more different words.
std::size_t allOf(const FoundWords& found) {
    return found.beginnings.empty() ? found.words.size() : std::numeric_limits<std::size_t>::max();
}

/// Where the window with the most different words begins; `npos` without any.
std::size_t bestPlace(std::string_view text, const FoundWords& found) {
    std::deque<Occurrence> window;
    std::map<std::string, std::size_t> counts;
    std::size_t best = std::string_view::npos;
    std::size_t most = 0;
    for (WordReader reader(text); reader.next();) {
        const Word& word = reader.word();
        if (!isFound(word.folded, found)) continue;
        window.push_back({word.folded, word.begin});
        ++counts[word.folded];
        while (word.end - window.front().begin > windowLength && window.size() > 1) {
            const auto count = counts.find(window.front().word);
            if (--count->second == 0) counts.erase(count);
            window.pop_front();
        }
        if (counts.size() > most) {
            most = counts.size();
            best = window.front().begin;
            if (most >= allOf(found)) break;
        }
    }
    return best;
}

/// The beginning of a word at or shortly behind `at`.
std::size_t wordBegin(std::string_view text, std::size_t at, std::size_t end) {
    if (at == 0) return 0;
    for (std::size_t n = at; n < end; ++n) {
        if (isBlank(text[n])) return n + 1;
    }
    return end;
}

std::string oneLine(std::string_view text, std::size_t most) {
    std::string line;
    for (const char c : text) {
        if (!isBlank(c)) {
            line += c;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
        if (line.size() > most) break;
    }
    return line;
}

/// So many characters, less a word that would be cut in two.
std::string_view shortened(std::string_view line) {
    const std::string_view first = text::first(line, wholeLength);
    if (first.size() == line.size()) return line;
    const std::size_t blank = first.rfind(' ');
    return blank == std::string_view::npos || blank + 40 < first.size() ? first : first.substr(0, blank);
}

}  // namespace

std::string abstractOf(std::string_view whole, const FoundWords& found) {
    const std::string_view text = cut(whole, mostRead);
    const std::size_t place = bestPlace(text, found);
    std::size_t begin = 0;
    if (place != std::string_view::npos && place > leadLength) {
        begin = wordBegin(text, place - leadLength, place);
    }
    constexpr std::size_t longestCharacter = 4;
    const std::string line = oneLine(whole.substr(begin), (wholeLength + 1) * longestCharacter);
    const std::string_view part = text::trim(shortened(line));
    std::string abstract;
    if (begin > 0) abstract += dots;
    abstract += part;
    if (part.size() < text::trim(line).size()) abstract += dots;
    return abstract;
}

}  // namespace torvex::catalogue
