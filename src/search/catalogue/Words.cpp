#include "search/catalogue/Words.h"

#include <array>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include "platform/Errors.h"
#include "platform/text/Utf8.h"

namespace torvex::catalogue {

namespace {

using utf8::Unit;

enum class Kind { Other, Letter, Mark, Sign };

constexpr bool isWordAscii(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isUndivided(UScriptCode script) {
    switch (script) {
        case USCRIPT_HAN:
        case USCRIPT_HIRAGANA:
        case USCRIPT_KATAKANA:
        case USCRIPT_HANGUL:
        case USCRIPT_BOPOMOFO:
        case USCRIPT_THAI:
        case USCRIPT_LAO:
        case USCRIPT_KHMER:
        case USCRIPT_MYANMAR:
            return true;
        default:
            return false;
    }
}

UScriptCode scriptOf(UChar32 c) {
    UErrorCode error = U_ZERO_ERROR;
    return uscript_getScript(c, &error);
}

Kind kindOf(std::uint32_t value) {
    if (value >= utf8::brokenByte) return Kind::Other;
    const auto c = static_cast<UChar32>(value);
    const auto type = u_charType(c);
    const bool isMark =
        type == U_NON_SPACING_MARK || type == U_COMBINING_SPACING_MARK || type == U_ENCLOSING_MARK;
    if (!isMark && u_isalnum(c) == 0) return Kind::Other;
    if (value >= 0xE00 && isUndivided(scriptOf(c))) return Kind::Sign;
    return isMark ? Kind::Mark : Kind::Letter;
}

/// Marks that change how a letter is spoken, not which one it is. Those of Indian writings are vowels.
bool isAccent(UChar32 c) {
    if (u_charType(c) != U_NON_SPACING_MARK) return false;
    const UScriptCode script = scriptOf(c);
    return script == USCRIPT_INHERITED || script == USCRIPT_COMMON || script == USCRIPT_HEBREW ||
           script == USCRIPT_ARABIC;
}

/// Letters that Unicode doesn't take apart, although readers do without their strokes.
const char* plainLetter(UChar32 c) {
    switch (c) {
        case 0xE6:
            return "ae";
        case 0x153:
            return "oe";
        case 0xF8:
            return "o";
        case 0x111:
        case 0xF0:
            return "d";
        case 0xFE:
            return "th";
        case 0x127:
            return "h";
        case 0x131:
            return "i";
        case 0x142:
            return "l";
        case 0x167:
            return "t";
        default:
            return nullptr;
    }
}

const icu::Normalizer2& compatible(bool composed) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2* form = composed ? icu::Normalizer2::getNFKCCasefoldInstance(error)
                                            : icu::Normalizer2::getNFKDInstance(error);
    if (U_FAILURE(error)) throw Error("the tables of letters can't be read");
    return *form;
}

icu::UnicodeString normal(const icu::UnicodeString& text, bool composed) {
    UErrorCode error = U_ZERO_ERROR;
    return compatible(composed).normalize(text, error);
}

std::string withoutAccents(UChar32 c) {
    icu::UnicodeString apart = normal(normal(icu::UnicodeString(c), true), false);
    std::string plain;
    for (std::int32_t at = 0; at < apart.length(); at = apart.moveIndex32(at, 1)) {
        const UChar32 part = apart.char32At(at);
        if (isAccent(part)) continue;
        if (const char* letters = plainLetter(part)) {
            plain += letters;
        } else {
            icu::UnicodeString(part).toUTF8String(plain);
        }
    }
    return plain;
}

std::string foldedCharacter(UChar32 c, Kind kind) {
    // Signs are put together of parts that mean nothing alone.
    if (kind != Kind::Sign) return withoutAccents(c);
    std::string whole;
    normal(icu::UnicodeString(c), true).toUTF8String(whole);
    return whole;
}

/// Those of the languages around are looked up, not made each time.
constexpr UChar32 firstKept = 0x80;
constexpr UChar32 endKept = 0x530;

const std::string& keptFold(UChar32 c) {
    static const auto folds = [] {
        std::array<std::string, endKept - firstKept> made;
        for (UChar32 each = firstKept; each < endKept; ++each)
            made[static_cast<std::size_t>(each - firstKept)] = withoutAccents(each);
        return made;
    }();
    return folds[static_cast<std::size_t>(c - firstKept)];
}

void appendFolded(std::string& to, std::uint32_t value, Kind kind) {
    const auto c = static_cast<UChar32>(value);
    if (c >= firstKept && c < endKept) {
        to += keptFold(c);
    } else {
        to += foldedCharacter(c, kind);
    }
}

}  // namespace

std::string_view cut(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text;
    while (most > 0 && utf8::isContinuation(text[most])) --most;
    return text.substr(0, most);
}

bool WordReader::skipToWord() {
    while (at_ < text_.size()) {
        if (utf8::isAscii(text_[at_])) {
            if (isWordAscii(text_[at_])) return true;
            ++at_;
            continue;
        }
        const Unit unit = utf8::unitAt(text_, at_);
        const Kind kind = kindOf(unit.value);
        if (kind == Kind::Letter || kind == Kind::Sign) return true;
        at_ += unit.length;
    }
    return false;
}

void WordReader::readAscii() {
    while (at_ < text_.size() && isWordAscii(text_[at_])) {
        word_.folded += static_cast<char>(utf8::foldedAscii(text_[at_]));
        ++at_;
    }
}

bool WordReader::next() {
    do {
        if (!skipToWord()) return false;
        word_.folded.clear();
        word_.isSign = false;
        word_.begin = at_;
        for (;;) {
            readAscii();
            if (at_ == text_.size() || utf8::isAscii(text_[at_])) break;
            const Unit unit = utf8::unitAt(text_, at_);
            const Kind kind = kindOf(unit.value);
            if (kind == Kind::Other) break;
            const bool isFirst = at_ == word_.begin;
            if (kind == Kind::Sign && !isFirst) break;
            appendFolded(word_.folded, unit.value, kind);
            at_ += unit.length;
            if (kind == Kind::Sign) {
                word_.isSign = true;
                break;
            }
        }
        word_.end = at_;
        if (word_.folded.size() > longestWord) word_.folded.resize(cut(word_.folded, longestWord).size());
    } while (word_.folded.empty());
    return true;
}

std::vector<Word> wordsOf(std::string_view text) {
    std::vector<Word> words;
    for (WordReader reader(text); reader.next();) words.push_back(reader.word());
    return words;
}

std::string folded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Unit unit = utf8::unitAt(text, at);
        if (unit.value < 0x80) {
            result += static_cast<char>(utf8::foldedAscii(text[at]));
        } else if (unit.value < utf8::brokenByte) {
            appendFolded(result, unit.value, kindOf(unit.value));
        }
        at += unit.length;
    }
    return result;
}

}  // namespace torvex::catalogue
