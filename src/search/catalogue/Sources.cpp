#include "search/catalogue/Sources.h"

#include <algorithm>

#include "platform/text/Text.h"
#include "platform/text/Utf8.h"
#include "search/catalogue/Terms.h"

namespace torvex::catalogue {

namespace {

bool holdsPlain(const std::string& value, const std::string& trace) {
    for (std::size_t at = value.find(trace); at != std::string::npos; at = value.find(trace, at + 1)) {
        if (at % traceSize == 0) return true;
    }
    return false;
}

std::size_t codedSize(char begin) {
    return FrequentWords::beginsCode(begin) ? FrequentWords::codeSize(begin) : traceSize;
}

/// Words have one, two or three bytes there: where one begins is told from the beginning on.
bool holdsCoded(const std::string& value, const std::string& trace) {
    std::size_t word = 0;
    for (std::size_t at = value.find(trace); at != std::string::npos; at = value.find(trace, at + 1)) {
        while (word < at) word += codedSize(value[word]);
        if (word == at) return true;
    }
    return false;
}

std::vector<Xapian::valueno> slotsOf(const std::vector<PhraseTrace>& traces) {
    std::vector<Xapian::valueno> slots;
    for (const PhraseTrace& phrase : traces) slots.push_back(phrase.slot);
    return slots;
}

bool isOver(const Xapian::ValueIterator& values) {
    return values == Xapian::ValueIterator();
}

}  // namespace

void ValueSource::init(const Xapian::Database& database) {
    values_.clear();
    most_ = 0;
    at_ = 0;
    isAtEnd_ = false;
    for (const Xapian::valueno slot : slots_) {
        values_.push_back(database.valuestream_begin(slot));
        most_ += database.get_value_freq(slot);
    }
    most_ = std::min(most_, database.get_doccount());
}

void ValueSource::next(double least) {
    skip_to(at_ + 1, least);
}

void ValueSource::skip_to(Xapian::docid id, double /*least*/) {
    for (;; id = at_ + 1) {
        std::size_t first = values_.size();
        for (std::size_t n = 0; n < values_.size(); ++n) {
            if (!isOver(values_[n])) values_[n].skip_to(id);
            if (isOver(values_[n])) continue;
            if (first == values_.size() || values_[n].get_docid() < values_[first].get_docid()) first = n;
        }
        isAtEnd_ = first == values_.size();
        if (isAtEnd_) return;
        at_ = values_[first].get_docid();
        if (holds(first, *values_[first])) return;
    }
}

bool ValueSource::check(Xapian::docid id, double /*least*/) {
    at_ = id;
    for (std::size_t n = 0; n < values_.size(); ++n) {
        if (isOver(values_[n]) || !values_[n].check(id) || isOver(values_[n])) continue;
        if (values_[n].get_docid() == id && holds(n, *values_[n])) return true;
    }
    return false;
}

PhraseSource::PhraseSource(std::vector<PhraseTrace> traces)
    : ValueSource(slotsOf(traces)), traces_(std::move(traces)) {}

bool PhraseSource::holds(std::size_t place, const std::string& value) const {
    const PhraseTrace& phrase = traces_[place];
    return phrase.isCoded ? holdsCoded(value, phrase.trace) : holdsPlain(value, phrase.trace);
}

FileNameSource::FileNameSource(std::vector<std::string> patterns)
    : ValueSource({slot::path}), patterns_(std::move(patterns)) {}

bool FileNameSource::holds(std::size_t /*place*/, const std::string& value) const {
    const std::string name = text::lower(fileNameOf(value));
    return std::any_of(patterns_.begin(), patterns_.end(),
                       [&](const std::string& pattern) { return matchesPattern(name, pattern); });
}

bool matchesPattern(std::string_view name, std::string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;  // the last one, and from where on it takes no more
    std::size_t taken = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && pattern[p] == '?') {
            n += utf8::unitAt(name, n).length;
            ++p;
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++n;
            ++p;
        } else if (star != std::string_view::npos) {
            taken += utf8::unitAt(name, taken).length;
            n = taken;
            p = star + 1;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

}  // namespace torvex::catalogue
