#include "search/catalogue/Translation.h"

#include <algorithm>
#include <utility>

#include "platform/text/Text.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Sources.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

using Kind = QueryNode::Kind;
/// Not to be taken for what is asked of a catalogue.
using Terms = Xapian::Query;

std::vector<Field> fieldsOf(const std::string& property) {
    if (property == "contents") return {textField()};
    if (property == "all") return {textField(), anyColumnField()};
    return {columnField(property)};
}

/// Without a say in the rank.
Terms filter(const Terms& query) {
    return {Terms::OP_SCALE_WEIGHT, query, 0.0};
}

Terms termsOf(Terms::op how, const std::vector<std::string>& terms) {
    return {how, terms.begin(), terms.end()};
}

bool isWild(const std::string& pattern) {
    return pattern.find_first_of("*?") != std::string::npos;
}

bool endsIn(const std::string& pattern, std::string& ending) {
    if (!pattern.starts_with("*.")) return false;
    ending = pattern.substr(2);
    return !isWild(ending) && ending.find('.') == std::string::npos;
}

}  // namespace

Xapian::Stem stemmerOf(std::string_view language) try {
    return language.size() == 2 ? Xapian::Stem(text::lower(language)) : Xapian::Stem();
} catch (const Xapian::InvalidArgumentError&) {
    return {};
}

Translation::Translation(const Xapian::Database& database, const std::string& language,
                         const TranslationLimits& limits)
    : database_(database), stem_(stemmerOf(language)), limits_(limits) {}

Terms Translation::of(const QueryNode& query) {
    return partOf(query).value_or(Terms::MatchNothing);
}

Translation::Part Translation::partOf(const QueryNode& node) {
    switch (node.kind) {
        case Kind::Nothing:
            return std::nullopt;
        case Kind::And:
            return andOf(node);
        case Kind::Or:
            return orOf(node);
        case Kind::Not:
            return notOf(node);
        case Kind::FileName:
            return fileNames({node.text});
        default:
            return wordsOf(node);
    }
}

Translation::Part Translation::andOf(const QueryNode& node) {
    std::vector<Terms> wanted;
    std::vector<Terms> unwanted;
    for (const QueryNode& part : node.parts) {
        const bool isNot = part.kind == Kind::Not;
        if (const Part query = isNot ? negated(part.parts.front()) : partOf(part)) {
            (isNot ? unwanted : wanted).push_back(*query);
        }
    }
    if (wanted.empty() && unwanted.empty()) return std::nullopt;
    const Terms all = wanted.empty() ? Terms::MatchAll : Terms(Terms::OP_AND, wanted.begin(), wanted.end());
    if (unwanted.empty()) return all;
    return Terms(Terms::OP_AND_NOT, all, Terms(Terms::OP_OR, unwanted.begin(), unwanted.end()));
}

Translation::Part Translation::orOf(const QueryNode& node) {
    std::vector<Terms> parts;
    std::vector<std::string> patterns;
    for (const QueryNode& part : node.parts) {
        if (part.kind == Kind::FileName) {
            patterns.push_back(part.text);
        } else if (const Part query = partOf(part)) {
            parts.push_back(*query);
        }
    }
    if (!patterns.empty()) parts.push_back(fileNames(patterns));
    if (parts.empty()) return std::nullopt;
    return Terms(Terms::OP_OR, parts.begin(), parts.end());
}

Translation::Part Translation::negated(const QueryNode& node) {
    const bool before = std::exchange(isNegated_, !isNegated_);
    Part part = partOf(node);
    isNegated_ = before;
    return part;
}

Translation::Part Translation::notOf(const QueryNode& node) {
    const Part part = negated(node.parts.front());
    if (!part) return std::nullopt;
    return Terms(Terms::OP_AND_NOT, Terms::MatchAll, *part);
}

Terms Translation::wordsOf(const QueryNode& node) {
    std::vector<Terms> queries;
    for (const Field& field : fieldsOf(node.property)) queries.push_back(inField(node, field));
    return {Terms::OP_OR, queries.begin(), queries.end()};
}

Terms Translation::inField(const QueryNode& node, const Field& field) {
    switch (node.kind) {
        case Kind::Prefix:
            return beginning(node.text, field);
        case Kind::Forms:
            return formsOf(node.text, field);
        default:
            return phraseOf(node.text, field);
    }
}

void Translation::note(const std::string& word) {
    if (!isNegated_) found_.words.insert(word);
}

Terms Translation::phraseOf(const std::string& text, const Field& field) {
    std::vector<std::string> words;
    std::vector<bool> joins;  // whether a word is a sign that follows one at once
    Word before;
    for (WordReader reader(text); reader.next(); before = reader.word()) {
        const Word& word = reader.word();
        joins.push_back(word.isSign && before.isSign && before.end == word.begin);
        words.push_back(word.folded);
        note(word.folded);
    }
    return phrase(words, joins, field);
}

/// The terms leave few entries; whether the words stand in their order there is told by their traces. Two
/// signs are a term together.
Terms Translation::phrase(const std::vector<std::string>& words, const std::vector<bool>& joins,
                          const Field& field) {
    std::set<std::string> terms;
    bool areSigns = true;
    for (std::size_t n = 0; n < words.size(); ++n) {
        if (n > 0) areSigns = areSigns && joins[n];
        const bool isInPair = joins[n] || (n + 1 < words.size() && joins[n + 1]);
        if (!isInPair) terms.insert(termOf(field.prefix, words[n]));
        if (joins[n]) terms.insert(termOf(field.prefix, pairOf(words[n - 1], words[n])));
    }
    const Terms all(Terms::OP_AND, terms.begin(), terms.end());
    if (words.size() == 1 || (words.size() == 2 && areSigns)) return all;
    const std::vector<PhraseTrace> phrase = phraseTraces(words, field);
    const auto traced = [&] { return Terms((new PhraseSource(phrase))->release()); };
    const std::vector<std::string> pairs = frequentPairs(words, field);
    if (pairs.empty()) return {Terms::OP_FILTER, all, traced()};
    const Terms told = termsOf(Terms::OP_AND, pairs);
    const Terms untold(Terms::OP_AND, Terms(FrequentWords::untoldTerm()), traced());
    const Terms there = words.size() == 2 ? told : Terms(Terms::OP_AND, told, traced());
    return {Terms::OP_FILTER, all, Terms(Terms::OP_OR, there, untold)};
}

const FrequentWords& Translation::frequent() {
    if (!frequent_) frequent_ = FrequentWords::in(database_);
    return *frequent_;
}

std::vector<PhraseTrace> Translation::phraseTraces(const std::vector<std::string>& words,
                                                   const Field& field) {
    std::string plain;
    for (const std::string& word : words) plain += traceOf(word);
    std::vector<PhraseTrace> traces{{field.trace, plain, false}};
    if (field.trace != slot::textTrace || frequent().areNone()) return traces;
    std::string coded;
    for (const std::string& word : words) coded += codedTraceOf(word, frequent());
    traces.insert(traces.begin(), {slot::codedTextTrace, coded, true});
    return traces;
}

/// Entries with them are fewer still, and hold a phrase of two for certain.
std::vector<std::string> Translation::frequentPairs(const std::vector<std::string>& words,
                                                    const Field& field) {
    if (field.trace != slot::textTrace) return {};
    std::vector<std::string> terms;
    for (std::size_t n = 1; n < words.size(); ++n) {
        const std::string& first = frequent().codeOf(words[n - 1]);
        const std::string& second = frequent().codeOf(words[n]);
        if (!first.empty() && !second.empty()) terms.push_back(FrequentWords::pairTerm(first, second));
    }
    return terms;
}

/// What stands before the last word, as in "e-mai*", has to be there as well.
Terms Translation::beginning(const std::string& text, const Field& field) {
    std::vector<Word> words = catalogue::wordsOf(text);
    const std::string last = words.back().folded;
    words.pop_back();
    if (!isNegated_) found_.beginnings.insert(last);
    std::vector<std::string> terms;
    const std::string prefix = termOf(field.prefix, last);
    for (auto at = database_.allterms_begin(prefix); at != database_.allterms_end(prefix); ++at) {
        if (++beginnings_ > limits_.beginnings) {
            throw TooManyError("too many words begin with \"" + last + "\"");
        }
        terms.push_back(*at);
    }
    Terms query = terms.empty() ? Terms::MatchNothing : termsOf(Terms::OP_SYNONYM, terms);
    for (const Word& word : words) {
        note(word.folded);
        query = Terms(Terms::OP_AND, query, Terms(termOf(field.prefix, word.folded)));
    }
    return query;
}

/// All words that there are with the same stem. The stem's last letter may differ from the word's (city,
/// cities: citi).
Terms Translation::formsOf(const std::string& text, const Field& field) {
    const std::string word = catalogue::wordsOf(text).front().folded;
    const std::set<std::string> stems{folded(stem_(word)), folded(stem_(text::lower(text)))};
    std::set<std::string> terms{termOf(field.prefix, word)};
    note(word);
    constexpr std::size_t longestEnding = 8;
    std::size_t read = 0;
    for (const std::string& stem : stems) {
        if (stem_.is_none() || stem.empty()) break;
        const std::string begin(cut(stem, std::max<std::size_t>(stem.size() - 1, 2)));
        const std::string prefix = field.prefix + begin;
        for (auto at = database_.allterms_begin(prefix); at != database_.allterms_end(prefix); ++at) {
            if (++read > limits_.formsRead || terms.size() >= limits_.forms) break;
            const std::string form = (*at).substr(field.prefix.size());
            if (form.size() > word.size() + longestEnding || !hasStem(form, stems)) continue;
            terms.insert(*at);
            note(form);
        }
    }
    if (terms.size() == 1) return Terms(*terms.begin());
    return {Terms::OP_SYNONYM, terms.begin(), terms.end()};
}

bool Translation::hasStem(const std::string& form, const std::set<std::string>& stems) {
    const auto [known, isNew] = stems_.try_emplace(form);
    if (isNew) known->second = folded(stem_(form));
    return stems.contains(known->second);
}

/// The names in place of a pattern when they are few.
std::optional<std::vector<std::string>> Translation::namesLike(const std::string& pattern) const {
    constexpr std::size_t mostRead = 2'000;
    // Terms of longer names don't tell them whole.
    constexpr std::size_t longestTold = 150;
    const std::size_t wild = pattern.find_first_of("*?");
    if (wild > longestTold) return std::nullopt;
    const std::string begin = fileNameTerm(pattern.substr(0, wild));
    std::vector<std::string> terms;
    std::size_t read = 0;
    for (auto at = database_.allterms_begin(begin); at != database_.allterms_end(begin); ++at) {
        if (++read > mostRead || terms.size() > limits_.fileNames) return std::nullopt;
        const std::string term = *at;
        if (term.size() > longestTold) return std::nullopt;
        if (matchesPattern(std::string_view(term).substr(1), pattern)) terms.push_back(term);
    }
    return terms;
}

Terms Translation::fileNames(const std::vector<std::string>& patterns) {
    std::vector<std::string> terms;
    std::vector<std::string> wide;
    std::string ending;
    for (const std::string& pattern : patterns) {
        const auto stars = static_cast<std::size_t>(std::count(pattern.begin(), pattern.end(), '*'));
        if (stars > limits_.patternStars) throw TooManyError("a file name's pattern has too many wild cards");
        if (!isWild(pattern)) {
            terms.push_back(fileNameTerm(pattern));
        } else if (endsIn(pattern, ending)) {
            terms.push_back(endingTerm(ending));
        } else if (const auto names = namesLike(pattern)) {
            terms.insert(terms.end(), names->begin(), names->end());
        } else {
            wide.push_back(pattern);
        }
    }
    std::vector<Terms> queries;
    if (!terms.empty()) queries.push_back(termsOf(Terms::OP_OR, terms));
    if (!wide.empty()) queries.emplace_back((new FileNameSource(wide))->release());
    if (queries.empty()) return Terms::MatchNothing;
    return filter(Terms(Terms::OP_OR, queries.begin(), queries.end()));
}

}  // namespace torvex::catalogue
