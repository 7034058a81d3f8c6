#include "search/catalogue/Sources.h"

#include <algorithm>

#include "platform/text/Utf8.h"
#include "search/catalogue/Terms.h"

namespace torvex::catalogue {

void ValueSource::init(const Xapian::Database& database) {
    database_ = database;
    most_ = database.get_value_freq(slot_);
    hasBegun_ = false;
}

void ValueSource::goOn() {
    while (!at_end() && !holds(*at_)) ++at_;
}

void ValueSource::next(double /*least*/) {
    if (hasBegun_) {
        ++at_;
    } else {
        at_ = database_.valuestream_begin(slot_);
        hasBegun_ = true;
    }
    goOn();
}

void ValueSource::skip_to(Xapian::docid id, double /*least*/) {
    if (!hasBegun_) {
        at_ = database_.valuestream_begin(slot_);
        hasBegun_ = true;
        if (at_end()) return;
    }
    at_.skip_to(id);
    goOn();
}

bool ValueSource::check(Xapian::docid id, double /*least*/) {
    if (!hasBegun_) {
        at_ = database_.valuestream_begin(slot_);
        hasBegun_ = true;
        if (at_end()) return true;
    }
    if (!at_.check(id)) return false;
    return at_end() || (at_.get_docid() == id && holds(*at_));
}

bool PhraseSource::holds(const std::string& value) const {
    for (std::size_t at = value.find(phrase_); at != std::string::npos; at = value.find(phrase_, at + 1)) {
        if (at % traceSize == 0) return true;
    }
    return false;
}

FileNameSource::FileNameSource(std::vector<std::string> patterns)
    : ValueSource(slot::fileName), patterns_(std::move(patterns)) {}

bool FileNameSource::holds(const std::string& value) const {
    return std::any_of(patterns_.begin(), patterns_.end(),
                       [&](const std::string& pattern) { return matchesPattern(value, pattern); });
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
