#include "search/extraction/RtfText.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <optional>
#include <string>
#include <unicode/utf8.h>
#include <vector>

#include "platform/text/Charset.h"
#include "search/extraction/OneOf.h"
#include "search/extraction/TextBuilder.h"
#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

namespace {

/// Groups that hold no text of the document.
constexpr std::string_view hiddenGroups[] = {
    "fonttbl",      "colortbl", "stylesheet", "pict",      "object",    "listtable", "listoverridetable",
    "revtbl",       "rsidtbl",  "themedata",  "datastore", "generator", "filetbl",   "xmlnstbl",
    "latentstyles", "fldinst",  "bkmkstart",  "bkmkend",   "info",
};

struct InfoGroup {
    std::string_view word;
    std::string_view column;
};
constexpr InfoGroup infoGroups[] = {
    {"title", column::title},       {"author", column::author},    {"subject", column::subject},
    {"keywords", column::keywords}, {"doccomm", column::comments}, {"company", column::company},
};

/// Each ends a word.
constexpr std::string_view gaps[] = {"par", "line", "tab", "cell", "row", "page", "sect", "column"};

constexpr struct {
    std::string_view word;
    std::string_view text;
} signs[] = {
    {"emdash", "\xE2\x80\x94"}, {"endash", "\xE2\x80\x93"},    {"lquote", "\xE2\x80\x98"},
    {"rquote", "\xE2\x80\x99"}, {"ldblquote", "\xE2\x80\x9C"}, {"rdblquote", "\xE2\x80\x9D"},
    {"bullet", "\xE2\x80\xA2"},
};

/// What holds within a group and ends with it.
struct State {
    bool isHidden = false;
    std::string_view column;  ///< "" for the text itself
    int skippedBehindUnicode = 1;
};

class RtfReader {
  public:
    explicit RtfReader(std::string_view bytes) : rest_(bytes) {}

    Reading read() {
        while (!rest_.empty() && !text_.isFull()) readNext();
        flushBytes();
        reading_.text = text_.take();
        return std::move(reading_);
    }

  private:
    void readNext() {
        const char c = take();
        switch (c) {
            case '{':
                open();
                break;
            case '}':
                close();
                break;
            case '\\':
                readControl();
                break;
            case '\r':
            case '\n':
                break;
            default:
                addByte(c);
        }
    }

    char take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    void open() {
        constexpr std::size_t deepest = 10'000;
        flushBytes();
        if (states_.size() > deepest) throw ExtractionError("it is nested too deeply");
        states_.push_back(state_);
        skipped_ = 0;
    }

    void close() {
        flushBytes();
        if (states_.empty()) return;
        if (!state_.column.empty() && states_.back().column != state_.column) keepColumn();
        state_ = states_.back();
        states_.pop_back();
        skipped_ = 0;
    }

    void keepColumn() {
        std::string value = oneLine(column_);
        if (!value.empty()) reading_.columns.emplace(state_.column, std::move(value));
        column_.clear();
    }

    void readControl() {
        if (rest_.empty()) return;
        if (rest_.front() == '\'') return readHexadecimal();
        const std::string_view word = readWord();
        if (word.empty()) return readSymbol();
        const std::optional<int> number = readNumber();
        if (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
        obey(word, number);
    }

    std::string_view readWord() {
        std::size_t size = 0;
        while (size < rest_.size() && rest_[size] >= 'a' && rest_[size] <= 'z') ++size;
        // Words of the format are in small letters; a few of later writers aren't, and say nothing here.
        if (size == 0 && rest_[0] >= 'A' && rest_[0] <= 'Z') size = 1;
        const std::string_view word = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return word;
    }

    std::optional<int> readNumber() {
        int number = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        const auto size = static_cast<std::size_t>(end - rest_.data());
        if (error == std::errc::invalid_argument) return std::nullopt;
        rest_.remove_prefix(size);
        return number;
    }

    void readSymbol() {
        const char c = take();
        if (c == '*') {
            state_.isHidden = true;
        } else if (c == '\\' || c == '{' || c == '}') {
            addByte(c);
        } else if (c == '~') {
            addText(" ");
        } else if (c == '_') {
            addText("-");
        } else if (c == '\r' || c == '\n') {
            gap();
        }
    }

    void readHexadecimal() {
        rest_.remove_prefix(1);
        unsigned value = 0;
        const std::size_t size = std::min<std::size_t>(2, rest_.size());
        std::from_chars(rest_.data(), rest_.data() + size, value, 16);
        rest_.remove_prefix(size);
        addByte(static_cast<char>(value));
    }

    void obey(std::string_view word, std::optional<int> number) {
        if (word == "u") return addCodeUnit(number.value_or(0));
        if (word == "bin") return skipBinary(number.value_or(0));
        flushBytes();
        if (word == "uc") state_.skippedBehindUnicode = std::clamp(number.value_or(1), 0, 10);
        if (word == "ansicpg") codePage_ = fmt::format("windows-{}", number.value_or(1252));
        if (isOneOf(word, hiddenGroups)) state_.isHidden = true;
        if (isOneOf(word, gaps)) gap();
        for (const auto& group : infoGroups) {
            if (word != group.word) continue;
            state_.column = group.column;
            state_.isHidden = false;
        }
        for (const auto& sign : signs) {
            if (word == sign.word) addText(sign.text);
        }
    }

    void skipBinary(int size) {
        rest_.remove_prefix(std::min(static_cast<std::size_t>(std::max(size, 0)), rest_.size()));
    }

    /// What stands for it where Unicode isn't known follows, and is passed over.
    void addCodeUnit(int value) {
        flushBytes();
        const auto unit = static_cast<std::uint16_t>(value);
        skipped_ = state_.skippedBehindUnicode;
        std::uint32_t c = unit;
        if ((unit & 0xFC00U) == 0xD800U) {
            high_ = unit;
            return;
        }
        if ((unit & 0xFC00U) == 0xDC00U && high_ != 0)
            c = 0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00);
        high_ = 0;
        std::uint8_t bytes[U8_MAX_LENGTH]{};
        std::int32_t length = 0;
        UBool failed = 0;
        U8_APPEND(bytes, length, U8_MAX_LENGTH, c, failed);
        if (failed == 0) put({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)});
    }

    void addByte(char c) {
        if (skipped_ > 0) {
            --skipped_;
            return;
        }
        if (!state_.isHidden) bytes_ += c;
    }

    void addText(std::string_view text) {
        flushBytes();
        if (!state_.isHidden) put(text);
    }

    /// Bytes are decoded together: a character may be made of two.
    void flushBytes() {
        if (bytes_.empty()) return;
        put(charset::decode(bytes_, codePage_));
        bytes_.clear();
    }

    void put(std::string_view text) {
        if (state_.isHidden) return;
        if (state_.column.empty()) {
            text_.add(text);
        } else if (column_.size() < longestColumn) {
            column_.append(text);
        }
    }

    void gap() {
        if (state_.column.empty() && !state_.isHidden) text_.gap();
    }

    std::string_view rest_;
    std::vector<State> states_;
    State state_;
    int skipped_ = 0;
    std::uint32_t high_ = 0;
    std::string codePage_ = "windows-1252";
    std::string bytes_;
    std::string column_;
    TextBuilder text_;
    Reading reading_;
};

}  // namespace

Reading readRtf(std::string_view bytes) {
    if (!bytes.starts_with("{\\rtf")) throw ExtractionError("it is no document of its kind");
    return RtfReader(bytes).read();
}

}  // namespace torvex::catalogue
