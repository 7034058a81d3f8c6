#include "search/catalogue/Terms.h"

#include <algorithm>
#include <cstdint>
#include <fmt/format.h>
#include <set>

#include "platform/text/Text.h"
#include "platform/workers/Packing.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

constexpr std::size_t longestTerm = 200;
/// Columns have values with numbers from here on, by their names' hash.
constexpr Xapian::valueno firstColumnSlot = 1000;
constexpr Xapian::valueno columnSlots = 1U << 20;

/// The same on every machine and in every build.
std::uint64_t hashOf(std::string_view text) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    // The last letters reach all bits.
    hash ^= hash >> 32;
    hash *= 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 29);
}

/// Even ones are traces, odd ones are sorted by.
Xapian::valueno columnSlot(std::string_view name, Xapian::valueno which) {
    return firstColumnSlot + 2 * static_cast<Xapian::valueno>(hashOf(name) % columnSlots) + which;
}

/// Adds the words of a text to a field.
class FieldWriter {
  public:
    FieldWriter(Xapian::Document& document, Field field) : document_(document), field_(std::move(field)) {}

    void add(std::string_view text) {
        if (!trace_.empty()) trace_.append(traceGap);
        Word before;
        for (WordReader reader(text); reader.next(); before = reader.word()) {
            addWord(reader.word(), before);
            trace_ += traceOf(reader.word().folded);
        }
    }
    void finish() {
        if (trace_.size() > traceSize) document_.add_value(field_.trace, trace_);
    }

    /// The one text of a field, whose frequent words are told.
    void addCoded(std::string_view text, const FrequentWords& frequent) {
        std::size_t count = 0;
        Word before;
        std::string codeBefore;
        for (WordReader reader(text); reader.next(); before = reader.word(), ++count) {
            const std::string& word = reader.word().folded;
            addWord(reader.word(), before);
            trace_ += codedTraceOf(word, frequent);
            const std::string& code = frequent.codeOf(word);
            if (!codeBefore.empty() && !code.empty()) {
                pairs_.push_back(FrequentWords::pairTerm(codeBefore, code));
            }
            codeBefore = code;
        }
        if (count > 1) document_.add_value(slot::codedTextTrace, trace_);
        addPairs();
    }

  private:
    void addWord(const Word& word, const Word& before) {
        document_.add_term(termOf(field_.prefix, word.folded));
        const bool isPair = word.isSign && before.isSign && before.end == word.begin;
        if (isPair) document_.add_term(termOf(field_.prefix, pairOf(before.folded, word.folded)));
    }
    /// Told apart from the words, as no word's weight is to depend on them.
    void addPairs() {
        std::sort(pairs_.begin(), pairs_.end());
        pairs_.erase(std::unique(pairs_.begin(), pairs_.end()), pairs_.end());
        for (const std::string& pair : pairs_) document_.add_boolean_term(pair);
    }

    Xapian::Document& document_;
    Field field_;
    std::string trace_;
    std::vector<std::string> pairs_;
};

void addText(Xapian::Document& document, const Field& field, std::string_view text) {
    FieldWriter writer(document, field);
    writer.add(text);
    writer.finish();
}

void addContents(Xapian::Document& document, std::string_view text, const FrequentWords& frequent) {
    if (frequent.areNone()) {
        addText(document, textField(), text);
        document.add_boolean_term(FrequentWords::untoldTerm());
    } else {
        FieldWriter(document, textField()).addCoded(text, frequent);
    }
}

void addColumns(Xapian::Document& document, const Columns& columns) {
    FieldWriter any(document, anyColumnField());
    for (const auto& [name, value] : columns) {
        addText(document, columnField(name), value);
        document.add_value(sortSlot(name), std::string(cut(folded(value), longestSortKey)));
        if (isDocumentColumn(name)) any.add(value);
    }
    any.finish();
}

void addFolders(Xapian::Document& document, std::string_view lowerPath) {
    const std::size_t end = lowerPath.rfind('/');
    const std::string_view folder = end == std::string_view::npos ? "" : lowerPath.substr(0, end);
    document.add_boolean_term(folderTerm(folder));
    for (std::string_view above = folder; !above.empty();) {
        document.add_boolean_term(deepFolderTerm(above));
        const std::size_t divider = above.rfind('/');
        above = divider == std::string_view::npos ? "" : above.substr(0, divider);
    }
    document.add_boolean_term(deepFolderTerm(""));
}

void addName(Xapian::Document& document, const Entry& entry) {
    const std::string name = text::lower(fileNameOf(entry.path));
    document.add_boolean_term(fileNameTerm(name));
    if (const auto ending = endingOf(name); !ending.empty()) document.add_boolean_term(endingTerm(ending));
    // Where a page stands in the tree matches patterns, but says nothing to a visitor.
    if (!isSnapshot(entry.path)) addText(document, columnField("filename"), fileNameOf(entry.path));
}

bool hasDigit(std::string_view word) {
    return std::any_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

Field textField() {
    return {"", slot::textTrace};
}
Field anyColumnField() {
    return {"A", slot::anyColumnTrace};
}
Field columnField(std::string_view name) {
    return {"X" + std::string(name) + ":", columnSlot(name, 0)};
}
Xapian::valueno sortSlot(std::string_view name) {
    return columnSlot(name, 1);
}

/// A file's name is kept with its path alone.
std::string sortKey(const Xapian::Document& document, Xapian::valueno slot) {
    static const Xapian::valueno fileName = sortSlot("filename");
    if (slot != fileName) return document.get_value(slot);
    return std::string(cut(folded(fileNameOf(document.get_value(slot::path))), longestSortKey));
}

std::string termOf(std::string_view prefix, std::string_view text) {
    std::string term;
    term.reserve(prefix.size() + text.size());
    term.append(prefix).append(text);
    if (term.size() <= longestTerm) return term;
    return fmt::format("{}~{:016x}", cut(term, longestTerm - 20), hashOf(term));
}

std::string pathTerm(std::string_view path) {
    return termOf("Q", path);
}
std::string deepFolderTerm(std::string_view folder) {
    return termOf("D", folder);
}
std::string folderTerm(std::string_view folder) {
    return termOf("H", folder);
}
std::string fileNameTerm(std::string_view lowerName) {
    return termOf("F", lowerName);
}
std::string endingTerm(std::string_view lowerEnding) {
    return termOf("E", lowerEnding);
}

std::string_view endingOf(std::string_view fileName) {
    const std::size_t point = fileName.rfind('.');
    return point == std::string_view::npos ? "" : fileName.substr(point + 1);
}

std::string traceOf(std::string_view word) {
    const std::uint64_t hash = hashOf(word);
    std::string trace{static_cast<char>(hash), static_cast<char>(hash >> 8), static_cast<char>(hash >> 16)};
    if (trace == traceGap) trace.back() = 1;
    return trace;
}

std::string codedTraceOf(const std::string& word, const FrequentWords& frequent) {
    const std::string& code = frequent.codeOf(word);
    if (!code.empty()) return code;
    std::string trace = traceOf(word);
    trace.front() = static_cast<char>(trace.front() & 0x7F);
    return trace;
}

std::string pairOf(std::string_view first, std::string_view second) {
    return std::string(first).append(second);
}

std::string stampValue(const FileStamp& stamp, std::string_view generation) {
    Packing packing;
    packing.number(stamp.size).number(static_cast<std::uint64_t>(stamp.modified)).text(generation);
    return packing.take();
}

Xapian::Document documentOf(const Entry& entry, std::string_view generation, const FrequentWords& frequent) {
    Xapian::Document document;
    document.add_boolean_term(pathTerm(entry.path));
    addFolders(document, text::lower(entry.path));
    addName(document, entry);
    addContents(document, entry.reading.text, frequent);
    addColumns(document, entry.reading.columns);
    document.add_value(slot::path, entry.path);
    document.add_value(slot::stamp, stampValue(entry.stamp, generation));
    document.set_data(packReading(entry));
    return document;
}

Entry entryOf(const Xapian::Document& document) {
    const std::string stamp = document.get_value(slot::stamp);
    Unpacking unpacking(stamp);
    Entry entry;
    entry.path = document.get_value(slot::path);
    entry.stamp.size = unpacking.number();
    entry.stamp.modified = static_cast<std::int64_t>(unpacking.number());
    entry.reading = unpackReading(document.get_data());
    return entry;
}

std::vector<std::string> spellingsOf(const Entry& entry) {
    constexpr std::size_t shortest = 3;
    constexpr std::size_t longest = 32;
    std::set<std::string> words;
    const auto add = [&](std::string_view text) {
        for (WordReader reader(text); reader.next();) {
            const Word& word = reader.word();
            if (word.isSign || word.end - word.begin < shortest || word.end - word.begin > longest) continue;
            if (!hasDigit(word.folded))
                words.insert(text::lower(text.substr(word.begin, word.end - word.begin)));
        }
    };
    add(entry.reading.text);
    for (const auto& [name, value] : entry.reading.columns) {
        if (isDocumentColumn(name)) add(value);
    }
    return {words.begin(), words.end()};
}

}  // namespace torvex::catalogue
